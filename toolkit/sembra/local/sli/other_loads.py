"""The section OTHER LOADS.

A load takes a line with its name, one with its kind, one with its time and pressure (or unit
weight and height), and but for uniform loads one with its place and size.
"""

import itertools
import re
from dataclasses import dataclass
from enum import IntEnum

from sembra.local.sli.sections import Cursor, Section

_KIND = re.compile(r"\s*(\d+) : (\w+)")


class KindOfLoad(IntEnum):
    """The kind of a load, by its code in the file."""

    TRAPEZIFORM = 0
    CIRCULAR = 1
    RECTANGULAR = 2
    UNIFORM = 3


@dataclass(frozen=True)
class OtherLoad:
    """A load that is described by numbers alone.

    Args:
        line: Line of the file where its kind stands.
        name: Its name.
        kind: Its kind.
        time: When it comes, in days; -1 for an initial load.
        weight: Of a trapeziform or uniform load, the unit weight in kN/m³ and the height in metres;
            of a circular or rectangular one, the pressure in kPa and the shape factor alpha.
        place: The place and size as in the file, in metres: xl, xm, xr, Xp and Yp of a trapeziform
            load; Xcp, Ycp, Zcp and the radius of a circular one; Xcp, Ycp, Zcp, xwidth and zwidth
            of a rectangular one; the level of application of a uniform one.
    """

    line: int
    name: str
    kind: KindOfLoad
    time: float
    weight: tuple[float, float]
    place: tuple[float, ...]


@dataclass(frozen=True)
class UnknownLoad:
    """A load of a kind that isn't known, such as a tank.

    Args:
        line: Line of the file where its kind stands.
        name: Its name.
        code: The code of its kind.
        word: What the file calls its kind.
    """

    line: int
    name: str
    code: int
    word: str


_WEIGHT = {
    KindOfLoad.TRAPEZIFORM: "time, unit weight and height",
    KindOfLoad.CIRCULAR: "time, weight and alpha",
    KindOfLoad.RECTANGULAR: "time, weight and alpha",
}
_PLACE = {
    KindOfLoad.TRAPEZIFORM: ("lengths and place", 5),
    KindOfLoad.CIRCULAR: ("centre and radius", 4),
    KindOfLoad.RECTANGULAR: ("centre and widths", 5),
}


def read_other_loads(whole: Section) -> tuple[OtherLoad, ...]:
    """Return the loads of the section, in its order.

    Raises:
        InputFileError: The section is malformed, or there is a load of a kind that isn't known.
    """
    cursor = whole.section("OTHER LOADS").cursor()
    count = cursor.count("the number of loads")
    return tuple(_read_load(cursor, number) for number in range(1, count + 1))


def find_unknown_loads(whole: Section) -> tuple[UnknownLoad, ...]:
    """Return the loads of kinds that aren't known.

    Where there is one, nobody knows where the next load begins: none of the section can be read.

    Raises:
        InputFileError: There is no such section.
    """
    found = (
        UnknownLoad(line.number, name.text.strip(), int(kind[1]), kind[2])
        for name, line in itertools.pairwise(whole.section("OTHER LOADS").lines)
        if (kind := _KIND.match(line.text))
    )
    return tuple(load for load in found if load.code not in list(KindOfLoad))


def _read_load(cursor: Cursor, number: int) -> OtherLoad:
    name = cursor.name(f"the name of load {number}")
    code = cursor.integer(f"the kind of load {number}")
    if code not in list(KindOfLoad):
        raise cursor.error(f"the kind {code} of load {number} is unknown")
    line, kind = cursor.line_number, KindOfLoad(code)
    if kind is KindOfLoad.UNIFORM:
        time, unit_weight, height, *place = cursor.numbers(
            f'time, unit weight, height and level of load "{name}"', 4
        )
        return OtherLoad(line, name, kind, time, (unit_weight, height), tuple(place))
    time, first, second = cursor.numbers(f'{_WEIGHT[kind]} of load "{name}"', 3)
    what, count = _PLACE[kind]
    place = cursor.numbers(f'{what} of load "{name}"', count)
    return OtherLoad(line, name, kind, time, (first, second), tuple(place))
