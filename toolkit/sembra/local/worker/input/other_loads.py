"""The section OTHER LOADS.

A load takes a line with its name, one with its kind, one with its time and pressure (or unit
weight and height), and but for uniform loads one with its place and size.
"""

import itertools
import re
from collections.abc import Callable, Mapping

from sembra.local.input_file.sections import Cursor, Section
from sembra.local.worker.errors import NotCoveredError
from sembra.local.worker.input.loads import check_time
from sembra.local.worker.input.options import read_spreading
from sembra.local.worker.loads.circular import CircularLoad
from sembra.local.worker.loads.load import Load
from sembra.local.worker.loads.rectangular import RectangularLoad
from sembra.local.worker.loads.trapeziform import TrapeziformLoad, Trapezium
from sembra.local.worker.loads.uniform import UniformLoad

_KIND = re.compile(r"\s*(\d+) : \w")
_UNCOVERED = {4: "tank"}


def read_other_loads(whole: Section) -> tuple[Load, ...]:
    """The loads of the section, in its order.

    Raises:
        InputFileError: the section is malformed.
        NotCoveredError: there is a load of a kind that the worker doesn't calculate.
    """
    section = whole.section("OTHER LOADS")
    _check_kinds(section)
    cursor = section.cursor()
    count = cursor.count("the number of loads")
    return tuple(_read_load(cursor, number, whole) for number in range(1, count + 1))


def _check_kinds(section: Section) -> None:
    """Refuse all loads of kinds that aren't known, since nobody knows where the next one begins."""
    kinds = (
        (name.text.strip(), int(found[1]))
        for name, line in itertools.pairwise(section.lines)
        if (found := _KIND.match(line.text))
    )
    gaps = [
        f'{_UNCOVERED.get(kind, "other")} loads (load "{name}")'
        for name, kind in kinds
        if kind not in _READERS
    ]
    if gaps:
        raise NotCoveredError(*gaps)


def _read_load(cursor: Cursor, number: int, whole: Section) -> Load:
    name = cursor.name(f"the name of load {number}")
    kind = cursor.integer(f"the kind of load {number}")
    if kind not in _READERS:
        raise cursor.error(f"the kind {kind} of load {number} is unknown")
    return _READERS[kind](cursor, name, whole)


def _read_trapeziform(cursor: Cursor, name: str, whole: Section) -> Load:
    time, unit_weight, height = _numbers(cursor, name, "time, unit weight and height", 3)
    shape = _numbers(cursor, name, "lengths and place", 5)
    spreading = read_spreading(whole)
    return TrapeziformLoad(
        name,
        time,
        unit_weight * height,
        Trapezium(*shape),
        spreading.trapeziform_width,
        spreading.distribution,
    )


def _read_circular(cursor: Cursor, name: str, _whole: Section) -> Load:
    time, pressure, alpha = _numbers(cursor, name, "time, weight and alpha", 3)
    return CircularLoad(
        name, time, pressure, alpha, *_numbers(cursor, name, "centre and radius", 4)
    )


def _read_rectangular(cursor: Cursor, name: str, _whole: Section) -> Load:
    time, pressure, alpha = _numbers(cursor, name, "time, weight and alpha", 3)
    return RectangularLoad(
        name, time, pressure, alpha, *_numbers(cursor, name, "centre and widths", 5)
    )


def _read_uniform(cursor: Cursor, name: str, _whole: Section) -> Load:
    return UniformLoad(name, *_numbers(cursor, name, "time, unit weight, height and level", 4))


def _numbers(cursor: Cursor, name: str, what: str, count: int) -> list[float]:
    """The numbers of a line; a line that tells a time begins with it."""
    numbers = cursor.numbers(f'{what} of load "{name}"', count)
    if what.startswith("time"):
        check_time(cursor, name, numbers[0])
    return numbers


_READERS: Mapping[int, Callable[[Cursor, str, Section], Load]] = {
    0: _read_trapeziform,
    1: _read_circular,
    2: _read_rectangular,
    3: _read_uniform,
}
