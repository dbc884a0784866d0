"""The section WATER LOADS: other phreatic and piezometric levels from a time on.

A water load takes a line with its name, its time, the number of the phreatic line, the number of
layers, and for each of them, the lowest first, those of the lines at its top and bottom.
"""

from collections.abc import Collection
from dataclasses import dataclass

from sembra.local.sli.geometry_2d import (
    INTERPOLATED,
    NO_PL_LINE,
    check_pl_line,
    read_pl_line,
)
from sembra.local.sli.sections import Cursor, Section


@dataclass(frozen=True)
class WaterLoad:
    """Water levels from a time on.

    Args:
        line: Line of the file where its time stands.
        name: Its name.
        time: In days.
        phreatic_line: Number of the pl-line that is the phreatic line.
        pl_lines: Those at top and bottom of each layer, the lowest layer first.
    """

    line: int
    name: str
    time: float
    phreatic_line: int
    pl_lines: tuple[tuple[int, int], ...]


def count_water_loads(whole: Section) -> int:
    """Return how many water loads the file has.

    Raises:
        InputFileError: The section doesn't say so.
    """
    return whole.section("WATER LOADS").cursor().count("the number of loads")


def read_water_loads(
    whole: Section, layers: int, pl_lines: Collection[int]
) -> tuple[WaterLoad, ...]:
    """Return the water loads of the file, in its order.

    Args:
        whole: The whole file.
        layers: How many layers the cross-section has.
        pl_lines: The numbers of its pl-lines.

    Raises:
        InputFileError: The section is malformed, or it refers to what doesn't exist.
    """
    cursor = whole.section("WATER LOADS").cursor()
    count = cursor.count("the number of loads")
    return tuple(_read_load(cursor, number, layers, pl_lines) for number in range(1, count + 1))


def _read_load(cursor: Cursor, number: int, layers: int, pl_lines: Collection[int]) -> WaterLoad:
    name = cursor.name(f"the name of water load {number}")
    time = cursor.number(f'the time of water load "{name}"')
    line = cursor.line_number
    phreatic_line = read_pl_line(cursor, pl_lines)
    if cursor.count("the number of layers") != layers:
        raise cursor.error(f'the water load "{name}" is not for {layers} layers')
    known = {*pl_lines, NO_PL_LINE, INTERPOLATED}
    sides = []
    for _ in range(layers):
        top, bottom = cursor.integers(f'the pl-lines of water load "{name}"', 2)
        for side in (top, bottom):
            check_pl_line(cursor, side, known)
        sides.append((top, bottom))
    return WaterLoad(line, name, time, phreatic_line, tuple(sides))
