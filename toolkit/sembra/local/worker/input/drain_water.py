"""The section VERTICAL DRAIN: the water in the drains, and when it is pumped out.

A second line "Flow type" is the kind of schedule; the rows of a detailed one stand behind it.
"""

import itertools
from enum import IntEnum

from sembra.local.input_file.labelled import Labelled
from sembra.local.input_file.sections import Cursor, Section
from sembra.local.worker.consolidation.drains.water import (
    DrainWater,
    PipeWater,
    Schedule,
    ScheduleKind,
    Stage,
    StandingWater,
)
from sembra.local.worker.errors import NotCoveredError

_SCHEDULE = ": Flow type"


class DrainType(IntEnum):
    """The type of drain, by its code in the file."""

    STRIP = 0
    COLUMN = 1
    SAND_WALL = 2


class WaterReader:
    """Reads the water in drains of a type.

    Args:
        section: the section of the drains.
        kind: the type of drain.
    """

    def __init__(self, section: Section, kind: DrainType) -> None:
        self._section = section
        self._lines = Labelled(section)
        self._kind = kind

    def read(self) -> Schedule:
        """Return the water in the drains from the start of drainage on.

        Raises:
            InputFileError: the section is malformed, or a value is out of range.
            NotCoveredError: a detailed schedule has no times.
        """
        cursor = self._schedule()
        code = cursor.integer("the kind of schedule")
        if code not in list(ScheduleKind):
            raise cursor.error(f"the kind {code} of schedule is unknown")
        kind = ScheduleKind(code)
        return Schedule(
            kind, self._detailed(cursor) if kind is ScheduleKind.DETAILED else self._plain(kind)
        )

    def _plain(self, kind: ScheduleKind) -> tuple[Stage, ...]:
        """Water at rest, and dewatering from one time to another after the start of drainage."""
        start = self._not_negative("Start of drainage")
        idle = StandingWater(self._lines.number("Phreatic level in drain"))
        at_rest = Stage(start, idle)
        if kind is ScheduleKind.OFF:
            return (at_rest,)
        begin, end = self._not_negative("Begin time"), self._not_negative("End time")
        if end < begin:
            raise self._lines.error("End time", "dewatering ends before it begins")
        begin = max(begin, start)
        if end <= begin:
            return (at_rest,)
        of_kind = "sand wall" if self._kind is DrainType.SAND_WALL else "strips and columns"
        pumped = self._pumped(
            self._not_negative(f"Under pressure for {of_kind}"),
            self._lines.number("Water head during dewatering"),
            self._lines.number("Tube pressure during dewatering"),
        )
        before = (at_rest,) if begin > start else ()
        return (*before, Stage(begin, pumped), Stage(end, idle))

    def _detailed(self, cursor: Cursor) -> tuple[Stage, ...]:
        """Dewatering in stages, each until the next; drainage starts with the first."""
        stages: list[Stage] = []
        for _ in range(cursor.count("the number of times")):
            time, underpressure, head, pipe_pressure = cursor.numbers(
                "time, underpressure, water level and tube pressure", 4
            )
            if time < 0 or underpressure < 0:
                raise cursor.error("neither a time nor an underpressure should be negative")
            stages.append(Stage(time, self._pumped(underpressure, head, pipe_pressure)))
            if any(a.time >= b.time for a, b in itertools.pairwise(stages[-2:])):
                raise cursor.error("the times of the schedule should ascend")
        if not stages:
            raise NotCoveredError("drains with a detailed schedule that has no times")
        return tuple(stages)

    def _pumped(self, underpressure: float, head: float, pipe_pressure: float) -> DrainWater:
        if self._kind is not DrainType.SAND_WALL:
            return StandingWater(head, underpressure)
        pipe = self._lines.number("Position of the drain pipe")
        return PipeWater(pipe, pipe_pressure, underpressure)

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
