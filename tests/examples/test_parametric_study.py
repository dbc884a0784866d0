"""The parametric study."""

from itertools import pairwise

import pytest

from examples import parametric_study as study

from .conftest import Run


@pytest.fixture(scope="module")
def rows(run_example: Run) -> list[list[float]]:
    """The printed table: height of sand, final settlement, rise, residual settlements."""
    _, _, *lines = run_example("examples/parametric_study.py").splitlines()
    return [[float(field) for field in line.split()] for line in lines]


def test_it_prints_a_row_per_height(rows: list[list[float]]) -> None:
    assert [row[0] for row in rows] == list(study.HEIGHTS)
    assert all(len(row) == 3 + len(study.OPENINGS) for row in rows)


def test_more_sand_settles_further_and_still_raises_the_surface(rows: list[list[float]]) -> None:
    for lower, higher in pairwise(rows):
        assert lower[1] < higher[1]
        assert lower[2] < higher[2]


def test_the_rise_is_what_the_settlement_leaves_of_the_height(rows: list[list[float]]) -> None:
    for height, final, rise, *_ in rows:
        assert rise == pytest.approx(height - final, abs=0.0011)


def test_a_longer_wait_leaves_less_settlement(rows: list[list[float]]) -> None:
    for row in rows:
        assert all(early > late > 0 for early, late in pairwise(row[3:]))
