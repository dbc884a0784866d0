"""The sections of loads."""

from __future__ import annotations

from ..errors import NotCoveredError
from ..model import UniformLoad
from ..sections import Cursor, Section

_UNIFORM = 3
_KINDS = {0: "trapeziform", 1: "circular", 2: "rectangular", 4: "tank"}
_INITIAL_TIME = -1


def read_uniform_loads(whole: Section) -> tuple[UniformLoad, ...]:
    """The uniform loads of the file, in its order.

    Raises:
        InputFileError: the section is malformed.
        NotCoveredError: there is a load of another kind.
    """
    cursor = whole.section("OTHER LOADS").cursor()
    count = cursor.count("the number of loads")
    return tuple(_read_load(cursor, number) for number in range(1, count + 1))


def count_loads(whole: Section, section: str) -> int:
    """The number that a section of loads starts with."""
    return whole.section(section).cursor().count("the number of loads")


def _read_load(cursor: Cursor, number: int) -> UniformLoad:
    name = cursor.text(f"the name of load {number}")
    kind = cursor.integer(f"the kind of load {number}")
    if kind != _UNIFORM:
        raise NotCoveredError.of(f'{_KINDS.get(kind, "other")} loads (load "{name}")')
    time, unit_weight, height, level = cursor.numbers(
        f"time, unit weight, height and level of load {number}", 4
    )
    if time < 0 and time != _INITIAL_TIME:
        raise cursor.error(f'the time of load "{name}" is {time:g}, which is neither -1 nor later')
    return UniformLoad(name, time, unit_weight, height, level)
