"""Preconsolidation pressure by type and option."""

from itertools import pairwise
from math import log

import pytest

from tests.toolkit.worker.input_file import calculated, input_text
from tests.toolkit.worker.result_file import verticals

OPTION = "Precon. pressure within a layer"
INITIAL = ("weight", -1, 10.0, 1.0, 0.0)


def pressures(option: int, **soil: float) -> tuple[list[float], list[float]]:
    """Preconsolidation pressure and initial effective stress of the elements."""
    text = input_text(loads=[INITIAL], soils={"Clay": soil}, options={OPTION: option})
    stresses = verticals(calculated(text))[0]["stresses"]
    initial = [(a + b) / 2 for a, b in pairwise(stresses["Initial total stress"])]
    return stresses["Final pre consolidation stress"][:-1], initial


@pytest.mark.parametrize("option", range(6))
def test_ratio_to_the_initial_stress(option: int) -> None:
    found, initial = pressures(option, SoilPreconKoppejanType=0, SoilOCR=1.3)
    assert found == pytest.approx([1.3 * stress for stress in initial], abs=1e-6)


@pytest.mark.parametrize("option", range(6))
def test_margin_on_the_initial_stress(option: int) -> None:
    found, initial = pressures(option, SoilPreconKoppejanType=2, SoilPOP=7.5)
    assert found == pytest.approx([7.5 + stress for stress in initial], abs=1e-6)


@pytest.mark.parametrize("option", range(3))
def test_pressure_of_a_whole_layer(option: int) -> None:
    found, initial = pressures(option, SoilPc=50.0)
    assert found == pytest.approx([max(50.0, stress) for stress in initial], abs=1e-6)
    assert found[-1] > 50.0


@pytest.mark.parametrize("option", range(3, 6))
def test_pressure_parallel_to_the_effective_stress(option: int) -> None:
    found, initial = pressures(option, SoilPc=50.0)
    in_middle = 10.0 + 2 * 15.0
    assert found == pytest.approx([50.0 + stress - in_middle for stress in initial], abs=1e-6)


def reloaded(option: int) -> float:
    """Settlement by a load that comes for the second time, without its secular part."""
    loads = [
        INITIAL,
        ("on", 0, 50.0, 1.0, 0.0),
        ("off", 1, -50.0, 1.0, 0.0),
        ("on again", 2, 50.0, 1.0, 0.0),
    ]
    constants = {"SoilCs": 1e12, "SoilCs1": 1e12, "SoilAsec": 1e12, "SoilPc": 0.0}
    text = input_text(
        loads=loads, soils={"Clay": constants}, options={OPTION: option}, bottom=-0.1, end=3
    )
    per_load = verticals(calculated(text))[0]["per_load"]
    return float(per_load[3][-1] - per_load[2][-1])


def test_correction_at_every_step_remembers_the_highest_stress() -> None:
    middle = 10.0 + 0.05 * 15.0
    first, again = reloaded(0), reloaded(2)
    assert first == pytest.approx(0.1 * log((middle + 50) / middle) / 12.5, rel=1e-3)
    assert again == pytest.approx(0.1 * log((middle + 50) / middle) / 50, rel=1e-3)
    assert reloaded(5) == again
