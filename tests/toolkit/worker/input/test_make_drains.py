"""Reading where drains stand and how water flows to them."""

import pytest
from sembra.local.worker.consolidation.drains.equal_drains import Drains
from sembra.local.worker.consolidation.drains.flow import PlaneFlow, RadialFlow, strip_diameter
from sembra.local.worker.input import read_project

from tests.toolkit.worker.drain_section import COLUMN, SAND_WALL, SECTION, with_drains
from tests.toolkit.worker.input_file import input_text, refused


def read(*changes: tuple[str, str]) -> Drains:
    drains = read_project(with_drains(input_text(), *changes)).drains
    assert drains
    return drains


def test_drains_that_are_off_are_not_read() -> None:
    unread = SECTION.replace("0 = Grid", "nothing")
    text = input_text().replace("[END OF INPUT DATA]", f"{unread}[END OF INPUT DATA]")
    assert read_project(text).drains is None
    assert read_project(input_text()).drains is None


def test_missing_section() -> None:
    text = with_drains(input_text()).replace("[VERTICAL DRAIN]", "[SOMETHING]")
    assert "there is no section [VERTICAL DRAIN]" in refused(text)


def test_where_the_drains_are() -> None:
    drains = read()
    assert (drains.left, drains.right, drains.bottom, drains.start) == (-10, 10, -3, 1)


def test_a_single_row_of_drains() -> None:
    drains = read(("     -10.000 = Position of the l", "      10.000 = Position of the l"))
    assert drains.left == drains.right == 10


@pytest.mark.parametrize(("grid", "factor"), [(0, 1.05), (1, 1.13), (2, 1.0)])
def test_grids(grid: int, factor: float) -> None:
    change = ("0 = Grid", f"{grid} = Grid")
    assert read(change).flow == RadialFlow(1.0, factor, strip_diameter(0.1, 0.005))
    assert read(COLUMN, change).flow == RadialFlow(1.0, factor, 0.2)


def test_a_strip_counts_by_its_width_and_thickness_alone() -> None:
    wide = read(("0.200 = Diameter", "0.900 = Diameter"))
    assert wide.flow == read().flow
    assert read(("0.100 = Width", "0.200 = Width")).flow != wide.flow


def test_a_column_counts_by_its_diameter_alone() -> None:
    flat = read(COLUMN, ("0.100 = Width", "0.000 = Width"), ("0.005 = Thi", "0.000 = Thi"))
    assert flat.flow == read(COLUMN).flow


def test_a_sand_wall_counts_by_its_diameter_and_has_no_grid() -> None:
    walls = read(SAND_WALL, ("0 = Grid", "7 = Grid"), ("0.100 = Width", "0.900 = Width"))
    assert walls.flow == PlaneFlow(1.0, 0.2)


def test_the_code_decides_and_not_the_word_behind_it() -> None:
    plane = read(("0 : Flow type = Radial", "0 : Flow type = Plane"))
    assert plane.flow == read().flow


@pytest.mark.parametrize(
    ("changes", "problem"),
    [
        ([("0 : Flow type = R", "3 : Flow type = R")], "the type 3 of drain is unknown"),
        ([("0 : Flow type = R", "0.5 : Flow type = R")], "should be a whole number and is 0.5"),
        ([("0 = Grid", "3 = Grid")], "the grid 3 is unknown"),
        ([("0 = Grid", "x = Grid")], 'Grid should be a number and is "x"'),
        ([("1.000 = Center", "nan = Center")], "should be a finite number and is nan"),
        ([("-3.000 = Bot", "low = Bot")], 'Bottom position should be a number and is "low"'),
        ([("-3.000 = Bottom", "-3.000 = Other")], '"Bottom position" is missing'),
        (
            [("-10.000 = Position", "-10.000 = Place")],
            '"Position of the leftmost drain" is missing',
        ),
    ],
)
def test_malformed_drains(changes: list[tuple[str, str]], problem: str) -> None:
    message = refused(with_drains(input_text(), *changes))
    assert message.startswith("The input file is not readable in section [VERTICAL DRAIN], line ")
    assert problem in message


@pytest.mark.parametrize(
    ("changes", "problem"),
    [
        (
            [("     -10.000 = Pos", "      10.001 = Pos")],
            "The drains begin at x = 10.001 m, right of where they end at x = 10 m.",
        ),
        ([("1.000 = Center", "0.000 = Center")], "Center to center distance of the drains is 0 m."),
        ([("1.000 = Center", "1001 = Center")], "distance of the drains is 1001 m. It should be"),
        ([SAND_WALL, ("0.200 = Dia", "0.000 = Dia")], "Diameter of the drains is 0 m. It should"),
        ([("0.100 = Wid", "0.000 = Wid")], "Width of the drains is 0 m. It should be 0.001 to"),
        ([("0.005 = Thi", "0.000 = Thi")], "Thickness of the drains is 0 m. It should be 0.001"),
        ([COLUMN, ("0.200 = Dia", "0.000 = Dia")], "Diameter of the drains is 0 m. It should be"),
        (
            [("1.000 = Center", "0.060 = Center")],
            "Drains that are 0.0668 m wide and stand 0.06 m apart leave no soil between them.",
        ),
        ([COLUMN, ("1.000 = Center", "0.190 = Center")], "are 0.2 m wide and stand 0.19 m apart"),
        ([SAND_WALL, ("0.200 = Dia", "1.000 = Dia")], "are 1 m wide and stand 1 m apart"),
    ],
)
def test_drains_that_cannot_be_are_told_in_plain_words(
    changes: list[tuple[str, str]], problem: str
) -> None:
    message = refused(with_drains(input_text(), *changes))
    assert problem in message
    assert "not readable" not in message


def test_all_that_is_wrong_with_drains_is_told_at_once() -> None:
    message = refused(
        with_drains(
            input_text(loads=[("Fill", -2, 20, 1, 0)]),
            ("     -10.000 = Pos", "      10.001 = Pos"),
            ("0.100 = Wid", "0.000 = Wid"),
            ("1.000 = Center", "0.001 = Center"),
        )
    )
    assert [part in message for part in ("begin at", "Width", "apart", 'load "Fill"')] == [True] * 4


def test_an_error_names_its_line() -> None:
    text = with_drains(input_text(), ("0 = Grid", "3 = Grid"))
    line = text[: text.index("3 = Grid")].count("\n") + 1
    assert f"in section [VERTICAL DRAIN], line {line}: the grid 3" in refused(text)
