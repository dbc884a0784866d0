"""Times of loads, and times for which results are wanted."""

from dataclasses import dataclass

from sembra.local.sli.sections import Cursor, Section

INITIAL = -1
"""Stands for the time of loads that are there before the calculation begins."""


@dataclass(frozen=True)
class StatedTime:
    """A time in days, and its line of the file."""

    line: int
    days: float


def read_residual_times(whole: Section) -> tuple[StatedTime, ...]:
    """The times for which residual settlements are wanted, in the order of the file.

    Raises:
        InputFileError: the section is malformed.
    """
    cursor = whole.section("RESIDUAL TIMES").cursor()
    times = []
    for _ in range(cursor.count("the number of times")):
        days = cursor.number("a time")
        times.append(StatedTime(cursor.line_number, days))
    return tuple(times)


def check_time(cursor: Cursor, name: str, time: float) -> None:
    """Refuse the time of a load that is negative and not that of initial loads.

    Raises:
        InputFileError: it is.
    """
    if time < 0 and time != INITIAL:
        raise cursor.error(f'the time of load "{name}" is {time:g}, which is neither -1 nor later')
