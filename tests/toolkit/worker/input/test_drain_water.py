"""Reading the water in drains: schedules off, simple and detailed."""

import pytest
from sembra.local.worker.consolidation.drains.water import (
    DrainWater,
    PipeWater,
    Schedule,
    ScheduleKind,
    Stage,
    StandingWater,
)
from sembra.local.worker.input import read_project

from tests.toolkit.worker.drain_section import COLUMN, DETAILED, SAND_WALL, SIMPLE, with_drains
from tests.toolkit.worker.input_file import input_text, refused

IDLE = StandingWater(-0.5)
PUMPED = StandingWater(-1.5, 35.0)
IN_PIPE = PipeWater(-2.0, 5.0)


def schedule(*changes: tuple[str, str]) -> Schedule:
    drains = read_project(with_drains(input_text(), *changes)).drains
    assert drains
    return drains.schedule


def stages(*pairs: tuple[float, DrainWater]) -> tuple[Stage, ...]:
    return tuple(Stage(time, water) for time, water in pairs)


@pytest.mark.parametrize("kind", [(), (COLUMN,), (SAND_WALL,)])
def test_off(kind: tuple[tuple[str, str], ...]) -> None:
    assert schedule(*kind) == Schedule(ScheduleKind.OFF, stages((1, IDLE)))


@pytest.mark.parametrize("kind", [(), (COLUMN,)])
def test_simple(kind: tuple[tuple[str, str], ...]) -> None:
    expected = stages((1, IDLE), (10, PUMPED), (90, IDLE))
    assert schedule(*kind, SIMPLE) == Schedule(ScheduleKind.SIMPLE, expected)


def test_simple_in_sand_walls() -> None:
    expected = stages((1, IDLE), (10, IN_PIPE), (90, IDLE))
    assert schedule(SAND_WALL, SIMPLE).stages == expected
    under = ("0.000 = Under pressure for s", "12.000 = Under pressure for s")
    pressed = schedule(SAND_WALL, SIMPLE, under).stages[1]
    assert pressed == Stage(10, PipeWater(-2.0, 5.0, 12.0))
    suction = schedule(SAND_WALL, SIMPLE, (" 5.00 = Tube", "-5.00 = Tube")).stages[1]
    assert suction == Stage(10, PipeWater(-2.0, -5.0))


def test_underpressures_of_other_drains_do_not_count() -> None:
    strips = ("35.000 = Under pressure for st", "99.000 = Under pressure for st")
    assert schedule(SAND_WALL, SIMPLE, strips) == schedule(SAND_WALL, SIMPLE)
    walls = (" 0.000 = Under pressure for sa", "99.000 = Under pressure for sa")
    assert schedule(SIMPLE, walls) == schedule(SIMPLE)


@pytest.mark.parametrize("start", [10.0, 30.0])
def test_dewatering_does_not_begin_before_drainage(start: float) -> None:
    change = ("       1.000 = Start", f"{start:12.3f} = Start")
    assert schedule(SIMPLE, change).stages == stages((start, PUMPED), (90, IDLE))


@pytest.mark.parametrize("start", [90.0, 95.0])
def test_dewatering_before_drainage_never_happens(start: float) -> None:
    change = ("       1.000 = Start", f"{start:12.3f} = Start")
    assert schedule(SIMPLE, change).stages == stages((start, IDLE))


def test_dewatering_that_ends_as_it_begins() -> None:
    assert schedule(SIMPLE, ("90.000 = End", "10.000 = End")).stages == stages((1, IDLE))


def test_detailed() -> None:
    found = schedule(DETAILED)
    expected = stages((0, StandingWater(0.5, 10.0)), (7, StandingWater(-0.5, 0.0)))
    assert found == Schedule(ScheduleKind.DETAILED, expected)
    # Drainage starts with the first row, whatever the start of drainage says.
    assert found.start == 0


def test_detailed_in_sand_walls() -> None:
    expected = stages((0, PipeWater(-2.0, 1.0, 10.0)), (7, PipeWater(-2.0, 2.0, 0.0)))
    assert schedule(SAND_WALL, DETAILED).stages == expected


ROW = "     7.000        0.000     -0.500      2.00"


@pytest.mark.parametrize(
    ("changes", "problem"),
    [
        ([("0 : Flow type = O", "3 : Flow type = O")], "the kind 3 of schedule is unknown"),
        ([("0 : Flow type = O", "x : Flow type = O")], "the kind of schedule should be"),
        ([("0 : Flow type = O", "0 : Nothing")], "the kind of schedule is missing"),
        ([("-0.500 = Phreatic", "wet = Phreatic")], "in drain should be a number and is"),
        ([SIMPLE, ("-1.500 = Water", "-1.500 = Other")], '"Water head during dewatering" is miss'),
        ([SAND_WALL, SIMPLE, (" 5.00 = T", "x = T")], "Tube pressure during dewatering should be"),
        ([SAND_WALL, SIMPLE, ("-2.000 = Pos", "x = Pos")], "Position of the drain pipe should be"),
        ([DETAILED, (ROW, "7 0")], 'should be a number and is "="'),
        ([DETAILED, ("2 = number", "3 = number")], "water level and tube pressure is missing"),
        ([DETAILED, ("2 = number", "-2 = number")], "the number of times should"),
    ],
)
def test_malformed_water(changes: list[tuple[str, str]], problem: str) -> None:
    message = refused(with_drains(input_text(), *changes))
    assert message.startswith("The input file is not readable in section [VERTICAL DRAIN], line ")
    assert problem in message


@pytest.mark.parametrize(
    ("changes", "problem"),
    [
        (
            [(" 1.000 = Start", "-1.000 = Start")],
            "Start of drainage of the drains is -1. It should not be negative.",
        ),
        (
            [SIMPLE, ("90.000 = End", "9.000 = End")],
            "Dewatering by drains ends at 9 days, before it begins at 10 days.",
        ),
        ([SIMPLE, (" 10.000 = Begin", "-10.000 = Begin")], "Begin time of the drains is -10."),
        ([SIMPLE, (" 35.000 = Und", "-35.000 = Und")], "of the drains is -35. It should not be"),
        (
            [DETAILED, (ROW, ROW.replace("7.0", "0.0"))],
            "Row 2 of the schedule of dewatering begins at 0 days, no later than the row before, "
            "at 0 days.",
        ),
        (
            [DETAILED, (ROW, ROW.replace(" 7.0", "-7.0"))],
            "Row 2 of the schedule of dewatering begins at -7 days, before the calculation.",
        ),
        (
            [DETAILED, (ROW, ROW.replace("  0.0", " -1.0"))],
            "Row 2 of the schedule of dewatering has a negative underpressure, -1.",
        ),
    ],
)
def test_water_that_cannot_be_is_told_in_plain_words(
    changes: list[tuple[str, str]], problem: str
) -> None:
    message = refused(with_drains(input_text(), *changes))
    assert problem in message
    assert "not readable" not in message


def test_a_detailed_schedule_without_times_is_not_covered() -> None:
    message = refused(with_drains(input_text(), DETAILED, ("2 = number", "0 = number")))
    what = "drains with a detailed schedule that has no times"
    assert message == f"The worker does not cover {what}."
