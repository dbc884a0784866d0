"""The section VERTICAL DRAIN: the water in the drains, and when it is pumped out.

A second line "Flow type" is the kind of schedule; the rows of a detailed one stand behind it.
"""

import itertools
from enum import IntEnum

from sembra.local.worker.consolidation.drains import DrainWater
from sembra.local.worker.errors import NotCoveredError
from sembra.local.worker.input.options import Labelled
from sembra.local.worker.input.sections import Cursor, Section

_SCHEDULE = ": Flow type"


class DrainType(IntEnum):
    """The type of drain, by its code in the file."""

    STRIP = 0
    COLUMN = 1
    SAND_WALL = 2


class _Schedule(IntEnum):
    OFF = 0
    SIMPLE = 1
    DETAILED = 2


class WaterReader:
    """Reads the water in drains of a type.

    Args:
        section: the section of the drains.
        kind: the type of drain.
        water_unit_weight: in kN/m³.
    """

    def __init__(self, section: Section, kind: DrainType, water_unit_weight: float) -> None:
        self._section = section
        self._lines = Labelled(section)
        self._kind = kind
        self._water_unit_weight = water_unit_weight

    def read(self) -> tuple[DrainWater, ...]:
        """The water in the drains from the start of drainage on, in the order of time.

        Raises:
            InputFileError: the section is malformed, or a value is out of range.
            NotCoveredError: the drains are dewatered in a way that the worker doesn't calculate.
        """
        cursor = self._schedule()
        code = cursor.integer("the kind of schedule")
        if code not in list(_Schedule):
            raise cursor.error(f"the kind {code} of schedule is unknown")
        if code == _Schedule.DETAILED:
            return self._detailed(cursor)
        idle = DrainWater(
            self._not_negative("Start of drainage"), self._lines.number("Phreatic level in drain")
        )
        return self._simple(idle) if code == _Schedule.SIMPLE else (idle,)

    def _simple(self, idle: DrainWater) -> tuple[DrainWater, ...]:
        """Dewatering from one time to another, as far as that is after the start of drainage."""
        begin, end = self._not_negative("Begin time"), self._not_negative("End time")
        if end < begin:
            raise self._lines.error("End time", "dewatering ends before it begins")
        begin = max(begin, idle.time)
        if end <= begin:
            return (idle,)
        of_kind = "sand wall" if self._kind is DrainType.SAND_WALL else "strips and columns"
        dewatered = self._dewatered(
            begin,
            self._not_negative(f"Under pressure for {of_kind}"),
            self._lines.number("Water head during dewatering"),
            self._lines.number("Tube pressure during dewatering"),
        )
        before = (idle,) if begin > idle.time else ()
        return (*before, dewatered, DrainWater(end, idle.level))

    def _detailed(self, cursor: Cursor) -> tuple[DrainWater, ...]:
        """Dewatering in stages, each until the next; drainage starts with the first."""
        water: list[DrainWater] = []
        for _ in range(cursor.count("the number of times")):
            time, underpressure, head, tube_pressure = cursor.numbers(
                "time, underpressure, water level and tube pressure", 4
            )
            if time < 0 or underpressure < 0:
                raise cursor.error("neither a time nor an underpressure should be negative")
            water.append(self._dewatered(time, underpressure, head, tube_pressure))
            if any(a.time >= b.time for a, b in itertools.pairwise(water[-2:])):
                raise cursor.error("the times of the schedule should ascend")
        if not water:
            raise NotCoveredError.of("drains with a detailed schedule that has no times")
        return tuple(water)

    def _dewatered(
        self, time: float, underpressure: float, head: float, tube_pressure: float
    ) -> DrainWater:
        """In a sand wall, water stands as high above the drain pipe as its pressure carries it."""
        if self._kind is not DrainType.SAND_WALL:
            return DrainWater(time, head, underpressure)
        if underpressure > 0:
            raise NotCoveredError.of("an underpressure in sand walls")
        if tube_pressure < 0:
            raise NotCoveredError.of("a tube pressure below zero in sand walls")
        pipe = self._lines.number("Position of the drain pipe")
        return DrainWater(time, pipe + tube_pressure / self._water_unit_weight)

    def _not_negative(self, label: str) -> float:
        value = self._lines.number(label)
        if value < 0:
            raise self._lines.error(label, f"{label} should not be negative and is {value:g}")
        return value

    def _schedule(self) -> Cursor:
        """A cursor at the kind of schedule."""
        section = self._section
        found = [i for i, line in enumerate(section.lines) if _SCHEDULE in line.text]
        if len(found) < 2:
            raise section.error("the kind of schedule is missing")
        return Section(section.name, section.number, section.lines[found[1] :]).cursor()
