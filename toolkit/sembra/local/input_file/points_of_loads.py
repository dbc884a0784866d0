"""Points where loads begin and end.

In a model a load begins and ends at a point of a boundary or of an earlier load. In a file it may
do so anywhere on their lines, which then get a point there and stay the lines that they are.
"""

from collections.abc import Sequence
from dataclasses import replace
from itertools import pairwise

from sembra.local.sli.geometry_2d import Point
from sembra.local.sli.non_uniform_loads import NonUniformLoad

Line = tuple[Point, ...]

TOLERANCE = 1e-3
"""How far from a line a point may lie that is taken to be on it [m]: a file tells millimetres."""


def with_points_of_loads(
    boundaries: Sequence[Line], loads: Sequence[NonUniformLoad]
) -> tuple[list[Line], list[NonUniformLoad]]:
    """Return boundaries and loads with a point where a load begins or ends on them.

    Args:
        boundaries: The boundaries, the surface first, which loads are likely to lie on.
        loads: The loads in the order in which they are made.
    """
    lines = list(boundaries)
    outlines: list[Line] = []
    for load in loads:
        for end in dict.fromkeys((*load.outline[:1], *load.outline[-1:])):
            if not any(end in line for line in (*lines, *outlines)):
                _insert(end, lines) or _insert(end, outlines)
        outlines.append(load.outline)
    return lines, [
        replace(load, outline=outline) for load, outline in zip(loads, outlines, strict=True)
    ]


def _insert(point: Point, lines: list[Line]) -> bool:
    """Put a point into the first of some lines that it lies on, if there is one."""
    for number, line in enumerate(lines):
        for place, (begin, end) in enumerate(pairwise(line), 1):
            if _lies_between(point, begin, end):
                lines[number] = (*line[:place], point, *line[place:])
                return True
    return False


def _lies_between(point: Point, begin: Point, end: Point) -> bool:
    (x, y), (x1, y1), (x2, y2) = point, begin, end
    if x1 == x2:
        return x == x1 and min(y1, y2) < y < max(y1, y2)
    return x1 < x < x2 and abs(y1 + (y2 - y1) * (x - x1) / (x2 - x1) - y) <= TOLERANCE
