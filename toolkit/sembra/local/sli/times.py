"""Times for which results are wanted."""

from dataclasses import dataclass

from sembra.local.sli.sections import Section


@dataclass(frozen=True)
class StatedTime:
    """A time in days, and its line of the file."""

    line: int
    days: float


def read_residual_times(whole: Section) -> tuple[StatedTime, ...]:
    """Return the times for which residual settlements are wanted, in the order of the file.

    Raises:
        InputFileError: The section is malformed.
    """
    cursor = whole.section("RESIDUAL TIMES").cursor()
    times = []
    for _ in range(cursor.count("the number of times")):
        days = cursor.number("a time")
        times.append(StatedTime(cursor.line_number, days))
    return tuple(times)
