"""The section VERTICAL DRAIN.

A second line "Flow type" is the kind of schedule; the rows of a detailed one stand behind it,
whether it is used or not.
"""

from dataclasses import dataclass

from sembra.local.sli.sections import Section

_SCHEDULE = ": Flow type"


@dataclass(frozen=True)
class Row:
    """A row of a detailed schedule.

    Args:
        line: Line of the file.
        time: In days.
        underpressure: In kPa.
        water_level: In the drains, in metres.
        tube_pressure: In the drain pipe of a sand wall, in kPa.
    """

    line: int
    time: float
    underpressure: float
    water_level: float
    tube_pressure: float


@dataclass(frozen=True)
class StatedSchedule:
    """When water is pumped out of the drains.

    Args:
        line: Line of the file where the kind stands.
        code: The kind of schedule: 0 for none, 1 for a simple one, 2 for a detailed one.
        rows: Those of the detailed one.
    """

    line: int
    code: int
    rows: tuple[Row, ...]


def read_schedule(section: Section) -> StatedSchedule:
    """Return the schedule of the drains.

    Args:
        section: The section of the drains.

    Raises:
        InputFileError: The section is malformed.
    """
    found = [i for i, line in enumerate(section.lines) if _SCHEDULE in line.text]
    if len(found) < 2:
        raise section.error("the kind of schedule is missing")
    cursor = Section(section.name, section.number, section.lines[found[1] :]).cursor()
    code = cursor.integer("the kind of schedule")
    line = cursor.line_number
    rows = []
    for _ in range(cursor.count("the number of times")):
        values = cursor.numbers("time, underpressure, water level and tube pressure", 4)
        rows.append(Row(cursor.line_number, *values))
    return StatedSchedule(line, code, tuple(rows))
