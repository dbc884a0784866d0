"""The section NON-UNIFORM LOADS.

A load takes a line with its name, one with its time, unit weights, a mark for a temporary load and
the time of its removal, and its outline.
"""

from dataclasses import dataclass

from sembra.local.sli.geometry_2d import Point
from sembra.local.sli.sections import Cursor, Section


@dataclass(frozen=True)
class NonUniformLoad:
    """A load by the weight of soil below an outline.

    Args:
        line: Line of the file where its times stand.
        name: Its name.
        time: When it comes, in days; -1 for an initial load.
        unit_weight_dry: Above the phreatic level, in kN/m³.
        unit_weight_wet: Below it, in kN/m³.
        temporary: Whether it is removed again.
        end_time: When a temporary one is removed, in days.
        outline: x and level of each point in metres.
    """

    line: int
    name: str
    time: float
    unit_weight_dry: float
    unit_weight_wet: float
    temporary: bool
    end_time: float
    outline: tuple[Point, ...]


def read_non_uniform_loads(whole: Section) -> tuple[NonUniformLoad, ...]:
    """Return the non-uniform loads of the file, in its order.

    Raises:
        InputFileError: The section is malformed.
    """
    cursor = whole.section("NON-UNIFORM LOADS").cursor()
    count = cursor.count("the number of loads")
    return tuple(_read_load(cursor, number) for number in range(1, count + 1))


def _read_load(cursor: Cursor, number: int) -> NonUniformLoad:
    name = cursor.name(f"the name of load {number}")
    time, dry, wet, temporary, end = cursor.numbers(
        f"time, unit weights, temporary and end time of load {number}", 5
    )
    line = cursor.line_number
    if temporary not in (0, 1):
        raise cursor.error(f'"temporary" of load "{name}" should be 0 or 1 and is {temporary:g}')
    points = []
    for _ in range(cursor.count("the number of co-ordinates")):
        x, y = cursor.numbers("X and Y of a load", 2)
        points.append((x, y))
    return NonUniformLoad(line, name, time, dry, wet, temporary == 1, end, tuple(points))
