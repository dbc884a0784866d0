"""Columns that consolidate by Terzaghi's theory, by hand from the input file to the results."""

from itertools import pairwise
from math import exp, log, log10, pi
from typing import Any

import pytest

from tests.toolkit.worker.drain_section import SIMPLE, with_drains
from tests.toolkit.worker.input_file import calculated, input_text
from tests.toolkit.worker.result_file import verticals

ISOTACHE = {"Model": 2.0}
ABC = {
    "SoilPriCompIndex": 0.01,
    "SoilSecCompIndex": 0.1,
    "SoilSecCompRate": 0.005,
    "SoilPreconIsotacheType": 0,
    "SoilOCR": 1.2,
}
CLAY = {"SoilDrained": 0, "SoilCv": 1e-8}


def result(text: str) -> dict[str, Any]:
    (vertical,) = verticals(calculated(text))
    return vertical


def elements(vertical: dict[str, Any]) -> list[tuple[float, float]]:
    """Height of each element, and its effective stress by its own weight of 15 kN/m³.

    At the topmost node, 1e-5 m deep, that is raised to the least stress of 0.001 kPa.
    """
    nodes = [(level, max(-15 * level, 0.001)) for level in vertical["depths"]]
    return [(top - bottom, (upper + s) / 2) for (top, upper), (bottom, s) in pairwise(nodes)]


def mean_degree(factor: float) -> float:
    """The textbook's series, up to the first term below 1e-5."""
    excess, wave, term = 0.0, 1, 1.0
    while term >= 1e-5:
        term = 8 / (wave * pi) ** 2 * exp(-((wave * pi) ** 2) * factor)
        excess += term
        wave += 2
    return 1 - excess


@pytest.mark.parametrize("reference_time", [1.0, 4.0])
def test_koppejan_by_hand(reference_time: float) -> None:
    vertical = result(
        input_text(
            loads=[("Fill", 10, 20.0, 1.5, 0.0)],
            soils={"Clay": CLAY | {"SoilPc": 0.0}},
            reference_time=reference_time,
        )
    )
    virgin = sum(height * log((s + 30) / s) for height, s in elements(vertical))
    times, own_weight, load = vertical["per_load"]
    assert own_weight == [0] * len(times)
    assert len(times) > 20
    for time, settlement in zip(times, load, strict=True):
        if time <= 10:
            assert settlement == 0
            continue
        since = (time - 10) / reference_time
        degree = mean_degree(since * 1e-8 * 86400 / (4 - 1e-5) ** 2)
        expected = virgin * (degree / 12.5 + log10(1 + since) / 75)
        assert settlement == pytest.approx(expected, abs=2e-7)


def test_isotaches_by_hand_and_creep_of_own_weight_with_the_first_load() -> None:
    loads = [("Fill", 100, 20.0, 1.5, 0.0)]
    vertical = result(input_text(model=ISOTACHE, loads=loads, soils={"Clay": ABC}))
    times, own_weight, load = vertical["per_load"]
    assert own_weight == [0] * len(times)
    intrinsic = 1.2**18
    crept = 0.005 * log(1 + 100 / intrinsic)
    for time, settlement in zip(times, load, strict=True):
        if time <= 100:
            assert settlement == 0
            continue
        expected = 0.0
        for height, stress in elements(vertical):
            loaded = (intrinsic + 100) * (stress / (stress + 30)) ** 18
            creep = crept + 0.005 * log(1 + (time - 100) / loaded)
            expected += height * (0.01 * log((stress + 30) / stress) + creep)
        assert settlement == pytest.approx(expected, abs=2e-7)


def test_creep_is_held_back_with_the_rest() -> None:
    loads = [("Fill", 0, 20.0, 1.5, 0.0)]
    drained, undrained = (
        result(input_text(model=ISOTACHE, loads=loads, soils={"Clay": ABC | soil}))["per_load"]
        for soil in ({}, CLAY)
    )
    assert drained[0] == undrained[0]
    for time, whole, part in zip(drained[0][1:], drained[2][1:], undrained[2][1:], strict=True):
        degree = mean_degree(time * 1e-8 * 86400 / (4 - 1e-5) ** 2)
        assert part == pytest.approx(degree * whole, abs=2e-7)


@pytest.mark.parametrize(("model", "strain"), [(0, 0), (0, 1), (2, 0), (2, 1)])
def test_each_column_is_a_calculation_without_the_later_loads(model: int, strain: int) -> None:
    loads = [("a", 0, 20.0, 1.0, 0.0), ("b", 50, 20.0, 0.5, 0.0), ("c", 400, -20.0, 0.7, 0.0)]
    columns, *fewer = (
        result(
            input_text(
                model={"Model": model, "Strain type": strain},
                loads=loads[:count],
                soils={"Clay": CLAY | ABC},
                end=1500,
            )
        )["per_load"][1:]
        for count in (3, 1, 2)
    )
    assert [column[-1] for column in columns[:3]] == pytest.approx(
        [0.0, fewer[0][-1][-1], fewer[1][-1][-1]], abs=1e-7
    )
    assert columns[3][-1] < columns[2][-1]


def test_loads_of_one_time_are_one_step() -> None:
    apart = [("a", 5, 20.0, 1.0, 0.0), ("b", 5, 20.0, 0.5, 0.0)]
    one = [("Fill", 5, 20.0, 1.5, 0.0)]
    found, expected = (result(input_text(loads=loads))["per_load"] for loads in (apart, one))
    assert len(found) == 3
    assert found == expected


def test_an_initial_load_takes_the_place_of_the_own_weight() -> None:
    loads = [("before", -1, 20.0, 1.0, 0.0), ("Fill", 0, 20.0, 1.5, 0.0)]
    assert len(result(input_text(loads=loads))["per_load"]) == 2
    assert len(result(input_text(loads=loads[1:]))["per_load"]) == 3


DEWATERING = (
    SIMPLE,
    ("1.000 = Start", "0.000 = Start"),
    ("-3.000 = Bottom", "-4.000 = Bottom"),
    ("10.000 = Begin", " 7.000 = Begin"),
)


def pumped(load_time: float, *changes: tuple[str, str]) -> list[list[float]]:
    """Times, and settlements by column, of clay full of water that drains are pumped in."""
    text = input_text(
        loads=[("Fill", load_time, 20.0, 1.5, 0.0)],
        soils={"Clay": CLAY},
        phreatic_level=-0.5,
        end=1000,
    )
    columns: list[list[float]] = result(with_drains(text, *DEWATERING, *changes))["per_load"]
    return columns


def test_dewatering_is_a_load_step_and_its_end_another() -> None:
    # Own weight, load, begin and end.
    times, *columns = pumped(3)
    assert len(columns) == 4
    begin, end = (times.index(time) for time in (7.0, 90.0))
    _, load, lowered, both = columns
    assert lowered[: begin + 1] == load[: begin + 1]
    assert lowered[begin + 1] > load[begin + 1]
    assert both[: end + 1] == lowered[: end + 1]
    assert both[end + 1] < lowered[end + 1]


def test_dewatering_at_the_time_of_a_load_is_one_step_with_it() -> None:
    times, *columns = pumped(7)
    assert len(columns) == 3
    assert columns[1][times.index(7.0)] == 0
    assert columns[1][-1] > pumped(7, ("35.000 = Under", " 0.000 = Under"))[2][-1]


@pytest.mark.parametrize("time", ["1000.000", "2000.000"])
def test_dewatering_that_ends_with_the_calculation_or_later_has_no_end(time: str) -> None:
    assert len(pumped(3, ("90.000 = End", f"{time} = End"))) == 4


def test_dewatering_after_the_end_of_the_calculation_never_happens() -> None:
    late = (("7.000 = Begin", "5000.0 = Begin"), ("90.000 = End", "6000.0 = End"))
    columns = pumped(3, *late)
    assert len(columns) == 3
