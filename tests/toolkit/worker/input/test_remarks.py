"""Remarks on what is hardly meant as it stands."""

import pytest
from sembra.local.worker.input import read_project
from sembra.local.worker.job import run_job
from sembra.local.worker.remark import sentences

from tests.toolkit.worker.input_file import calculated, input_text, job

DARCY, TERZAGHI = 0, 1
COEFFICIENT, PERMEABILITY = 0, 1
FAST = (
    "The material Clay consolidates almost at once: the coefficient of consolidation is 3 m²/s, "
    "and that of clay some 1e-8 to 1e-6 m²/s. See whether it is stated, and in m²/s, or mark the "
    "soil as drained."
)
FLOATS = (
    "The material Clay weighs less than water and would float: 9.5 kN/m³ below the phreatic "
    "level, where water has 10 kN/m³."
)


def remarks(
    *, consolidation: int = TERZAGHI, phreatic_level: float = -2.0, **clay: float
) -> list[str]:
    """Remarks on a file with four metres of clay."""
    text = input_text(
        model={"Calculation type": consolidation},
        soils={"Clay": {f"Soil{key}": value for key, value in clay.items()}},
        phreatic_level=phreatic_level,
    )
    return sentences(read_project(text).remarks)


def test_a_coefficient_in_another_unit_is_told() -> None:
    assert remarks(Drained=0, Cv=3.0) == [FAST]
    assert remarks(Drained=0, Cv=1e-3) == []
    assert remarks(Drained=1, Cv=3.0) == []


@pytest.mark.parametrize(("kind", "found"), [(COEFFICIENT, [FAST]), (PERMEABILITY, [])])
def test_by_darcy_it_counts_where_the_material_states_it(kind: int, found: list[str]) -> None:
    assert remarks(consolidation=DARCY, Drained=0, Cv=3.0, StorageType=kind) == found


@pytest.mark.parametrize(
    ("unit_weight", "phreatic_level", "found"),
    [(9.5, -2.0, [FLOATS]), (9.5, -4.0, []), (10.0, -2.0, [])],
)
def test_soil_that_floats_is_told_where_it_is_under_water(
    unit_weight: float, phreatic_level: float, found: list[str]
) -> None:
    assert remarks(GamWet=unit_weight, phreatic_level=phreatic_level) == found


def test_each_remark_stands_once_in_the_result_file_and_with_the_result() -> None:
    text = input_text(
        soils={"Clay": {"SoilGamWet": 9.5, "SoilDrained": 0, "SoilCv": 3.0}},
        layers=[(0.0, "Clay"), (-1.0, "Clay")],
        phreatic_level=-2.0,
        loads=[("Fill", 0, 20.0, 1.0, 0.0), ("Late", 10_000, 20.0, 1.0, 0.0)],
    )
    late = (
        'The load "Late" comes when the calculation has ended, after 10000 days, and so '
        "without effect."
    )
    expected = [late, FAST, FLOATS]
    assert run_job(job(text))["remarks"] == expected
    lines = [f"{3:7d}     number of warnings", *expected, "[End of Warnings]"]
    assert "\n".join(["[Warnings]", *lines]) in calculated(text)


def test_a_residual_settlement_after_the_end_is_left_away() -> None:
    project = read_project(input_text(times=[100.0, 10_000.0, 10_001.0, 10_002.0]))
    assert project.residual_times == (100.0, 10_000.0)
    assert project.remarks == (
        "There is no residual settlement after 10001 and 10002 days: the calculation ends after "
        "10000 days.",
    )
