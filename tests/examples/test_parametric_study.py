"""The parametric study, with some of its variants."""

import csv
from itertools import pairwise
from pathlib import Path

import pytest

from examples import parametric_study as study
from tests.examples.conftest import Run


@pytest.fixture(scope="module")
def run(run_example: Run, tmp_path_factory: pytest.TempPathFactory) -> tuple[str, Path]:
    """What the study printed, and its table."""
    table = tmp_path_factory.mktemp("study") / "study.csv"
    return run_example("-m", "examples.parametric_study", "--quick", "--table", str(table)), table


@pytest.fixture(scope="module")
def rows(run: tuple[str, Path]) -> dict[study.Variant, list[float]]:
    """The values of each variant in the table."""
    with run[1].open(encoding="utf-8-sig", newline="") as file:
        lines = list(csv.DictReader(file))
    assert all(line["error"] == "" for line in lines)
    return {
        study.Variant(*(float(line[name]) for name in study.Variant._fields)): [
            float(line[column]) for column in study.COLUMNS
        ]
        for line in lines
    }


def test_the_whole_study_has_five_hundred_variants() -> None:
    assert len(set(study.variants())) == 500


def test_the_table_has_a_row_per_variant(rows: dict[study.Variant, list[float]]) -> None:
    assert set(rows) == set(study.variants(quick=True))


def test_wider_spacing_leaves_more_settlement(rows: dict[study.Variant, list[float]]) -> None:
    for stiffness, height, _ in rows:
        column = sorted(v for v in rows if (v.stiffness, v.height) == (stiffness, height))
        for narrow, wide in pairwise(column):
            assert rows[narrow][1] > rows[wide][1]
            assert rows[narrow][2] < rows[wide][2]


def test_stiffer_ground_and_less_sand_settle_less(rows: dict[study.Variant, list[float]]) -> None:
    for variant, values in rows.items():
        softer = [v for v in rows if v[1:] == variant[1:] and v.stiffness < variant.stiffness]
        higher = [v for v in rows if v[::2] == variant[::2] and v.height > variant.height]
        assert all(rows[other][0] > values[0] for other in softer + higher)


def test_residual_settlement_is_what_follows_the_opening(
    rows: dict[study.Variant, list[float]],
) -> None:
    for final, at_opening, residual in rows.values():
        assert residual == pytest.approx(final - at_opening, abs=1e-6)


def test_it_prints_the_spread_and_the_widest_spacing(
    run: tuple[str, Path], rows: dict[study.Variant, list[float]]
) -> None:
    first, _, head, *lines = run[0].splitlines()
    assert first == f"{len(rows)} variants in {run[1]}"
    heights = sorted({variant.height for variant in rows})
    assert [float(line.split()[0]) for line in lines] == heights
    assert head.count("drains") == len({variant.spacing for variant in rows})
    for line in lines:
        height, *bands, widest, _ = line.replace("none", "none m").split()
        for band, spacing in zip(bands, sorted({v.spacing for v in rows}), strict=True):
            values = [r[2] for v, r in rows.items() if v[1:] == (float(height), spacing)]
            assert band == f"{min(values):.2f}-{max(values):.2f}"
        fitting = [
            spacing
            for spacing in {v.spacing for v in rows}
            if all(
                r[2] <= study.ALLOWED for v, r in rows.items() if v[1:] == (float(height), spacing)
            )
        ]
        assert widest == (f"{max(fitting):.1f}" if fitting else "none")
