"""Reading the section of the drains."""

import pytest
from sembra.local.worker.consolidation.drains import DrainWater
from sembra.local.worker.consolidation.horizontal_flow import PlaneFlow, RadialFlow, strip_diameter
from sembra.local.worker.input import read_project
from sembra.local.worker.project import Project

from tests.toolkit.worker.drain_section import SECTION, with_drains
from tests.toolkit.worker.input_file import input_text, refused

COLUMN = ("0 : Flow type = Radial", "1 : Flow type = Plane")
SAND_WALL = ("0 : Flow type = Radial", "2 : Flow type = Sand wall")
SIMPLE = ("0 : Flow type = Off", "1 : Flow type = Simple input")
DETAILED = ("0 : Flow type = Off", "2 : Flow type = Detailed input")


def read(*changes: tuple[str, str]) -> Project:
    return read_project(with_drains(input_text(), *changes))


def water(*changes: tuple[str, str]) -> tuple[DrainWater, ...]:
    drains = read(*changes).drains
    assert drains
    return drains.water


def test_drains_that_are_off_are_not_read() -> None:
    text = input_text().replace("[END OF INPUT DATA]", f"{SECTION}[END OF INPUT DATA]")
    assert read_project(text).drains is None
    assert read_project(input_text()).drains is None


def test_where_the_drains_are() -> None:
    project = read()
    drains = project.drains
    assert drains
    assert (drains.left, drains.right, drains.bottom, drains.start) == (-10, 10, -3, 1)
    assert project.drains_around(project.columns[0]) is drains
    assert [drains.surround(x) for x in (-10.1, -10, 10, 10.1)] == [False, True, True, False]


@pytest.mark.parametrize(("grid", "diameter"), [(0, 1.05), (1, 1.13), (2, 1.0)])
def test_grids(grid: int, diameter: float) -> None:
    change = ("0 = Grid", f"{grid} = Grid")
    for kind, drain_diameter in ((None, strip_diameter(0.1, 0.005)), (COLUMN, 0.2)):
        drains = read(*([kind] if kind else []), change).drains
        assert drains
        assert drains.flow == RadialFlow(diameter, drain_diameter)


def test_sand_walls_need_no_grid() -> None:
    drains = read(SAND_WALL, ("0 = Grid", "7 = Grid")).drains
    assert drains
    assert drains.flow == PlaneFlow(0.9)


def test_water_without_dewatering() -> None:
    assert water() == (DrainWater(1.0, -0.5),)


def test_water_with_dewatering() -> None:
    idle, dewatered = DrainWater(1.0, -0.5), DrainWater(10.0, -1.5, 35.0)
    after = DrainWater(90.0, -0.5)
    assert water(SIMPLE) == (idle, dewatered, after)
    assert water(COLUMN, SIMPLE) == (idle, dewatered, after)
    wall = DrainWater(10.0, -2.0 + 5.0 / 10.0)
    assert water(SAND_WALL, SIMPLE) == (idle, wall, after)


@pytest.mark.parametrize("start", [10.0, 30.0])
def test_dewatering_does_not_begin_before_drainage(start: float) -> None:
    change = ("       1.000 = Start", f"{start:12.3f} = Start")
    assert water(SIMPLE, change) == (DrainWater(start, -1.5, 35.0), DrainWater(90.0, -0.5))


@pytest.mark.parametrize("start", [90.0, 95.0])
def test_dewatering_before_drainage_never_happens(start: float) -> None:
    change = ("       1.000 = Start", f"{start:12.3f} = Start")
    assert water(SIMPLE, change) == (DrainWater(start, -0.5),)


def test_detailed_schedule() -> None:
    assert water(DETAILED) == (DrainWater(0.0, 0.5, 10.0), DrainWater(7.0, -0.5, 0.0))
    row = ("     0.000       10.000", "     0.000        0.000")
    assert water(SAND_WALL, DETAILED, row) == (DrainWater(0.0, -1.9), DrainWater(7.0, -1.8))


ROW = "     7.000        0.000     -0.500      2.00"


@pytest.mark.parametrize(
    ("changes", "problem"),
    [
        ([("0 : Flow type = R", "3 : Flow type = R")], "the type 3 of drain is unknown"),
        ([("0 : Flow type = O", "3 : Flow type = O")], "the kind 3 of schedule is unknown"),
        ([("0 : Flow type = O", "0 : Nothing")], "the kind of schedule is missing"),
        ([("0 = Grid", "3 = Grid")], "the grid 3 is unknown"),
        ([("     -10.000 = Pos", "      10.001 = Pos")], "the leftmost drain stands right of"),
        ([("1.000 = Center", "0.000 = Center")], "distance should be 0.001 to 1000 and is 0"),
        ([("1.000 = Center", "0.060 = Center")], "the drains leave no soil between them"),
        ([COLUMN, ("1.000 = Center", "0.190 = Center")], "the drains leave no soil between them"),
        ([SAND_WALL, ("0.100 = Wid", "1.000 = Wid")], "the drains leave no soil between them"),
        ([("0.100 = Wid", "0.000 = Wid")], "Width should be 0.001 to 1000 and is 0"),
        ([("0.005 = Thi", "0.000 = Thi")], "Thickness should be 0.001 to 1000 and is 0"),
        ([COLUMN, ("0.200 = Dia", "0.000 = Dia")], "Diameter should be 0.001 to 1000"),
        ([("-3.000 = Bot", "low = Bot")], 'Bottom position should be a number and is "low"'),
        ([("-3.000 = Bottom", "-3.000 = Other")], '"Bottom position" is missing'),
        ([(" 1.000 = Start", "-1.000 = Start")], "Start of drainage should not be negative"),
        ([SIMPLE, ("90.000 = End", "9.000 = End")], "dewatering ends before it begins"),
        ([SIMPLE, (" 35.000 = Und", "-35.000 = Und")], "should not be negative and is -35"),
        ([DETAILED, (ROW, ROW.replace("7.0", "0.0"))], "times of the schedule should ascend"),
        ([DETAILED, (ROW, ROW.replace(" 7.0", "-7.0"))], "neither a time nor an underpressure"),
        ([DETAILED, (ROW, "7 0")], 'should be a number and is "="'),
        ([DETAILED, ("2 = number", "3 = number")], "water level and tube pressure is missing"),
    ],
)
def test_malformed_drains(changes: list[tuple[str, str]], problem: str) -> None:
    message = refused(with_drains(input_text(), *changes))
    assert message.startswith("The input file is not readable in section [VERTICAL DRAIN], line ")
    assert problem in message


@pytest.mark.parametrize(
    ("changes", "what"),
    [
        ([DETAILED, ("2 = number", "0 = number")], "drains with a detailed schedule that has no"),
        ([SAND_WALL, SIMPLE, ("0.000 = Und", "1.000 = Und")], "an underpressure in sand walls"),
        ([SAND_WALL, DETAILED], "an underpressure in sand walls"),
        ([SAND_WALL, SIMPLE, (" 5.00 = T", "-5.00 = T")], "a tube pressure below zero in sand"),
    ],
)
def test_dewatering_that_is_not_covered(changes: list[tuple[str, str]], what: str) -> None:
    message = refused(with_drains(input_text(), *changes))
    assert message.startswith(f"The worker does not cover {what}")


def test_missing_section() -> None:
    text = with_drains(input_text()).replace("[VERTICAL DRAIN]", "[SOMETHING]")
    assert "there is no section [VERTICAL DRAIN]" in refused(text)
