"""The section VERTICAL DRAIN: the water in the drains, and when it is pumped out."""

from collections.abc import Sequence
from enum import IntEnum

from sembra.local.sli.labelled import Labelled
from sembra.local.sli.sections import Section
from sembra.local.sli.vertical_drain import Row, read_schedule
from sembra.local.worker.consolidation.drains.water import (
    DrainWater,
    PipeWater,
    Schedule,
    ScheduleKind,
    Stage,
    StandingWater,
)
from sembra.local.worker.failures import NotCoveredError, Problems


class DrainType(IntEnum):
    """The type of drain, by its code in the file."""

    STRIP = 0
    COLUMN = 1
    SAND_WALL = 2


class WaterReader:
    """Reads the water in drains of a type.

    Args:
        section: The section of the drains.
        kind: The type of drain.
        problems: Gathers what can't be calculated with.
    """

    def __init__(self, section: Section, kind: DrainType, problems: Problems) -> None:
        self._section = section
        self._problems = problems
        self._lines = Labelled(section)
        self._kind = kind

    def read(self) -> Schedule:
        """Return the water in the drains from the start of drainage on.

        Raises:
            InputFileError: The section is malformed, or holds an unknown code.
            NotCoveredError: A detailed schedule has no times.
        """
        stated = read_schedule(self._section)
        if stated.code not in list(ScheduleKind):
            raise self._section.error(f"the kind {stated.code} of schedule is unknown", stated.line)
        kind = ScheduleKind(stated.code)
        stages = self._detailed(stated.rows) if kind is ScheduleKind.DETAILED else self._plain(kind)
        return Schedule(kind, stages)

    def _plain(self, kind: ScheduleKind) -> tuple[Stage, ...]:
        """Return the stages: water at rest, and dewatering from one time to another."""
        start = self._not_negative("Start of drainage")
        idle = StandingWater(self._lines.number("Phreatic level in drain"))
        at_rest = Stage(start, idle)
        if kind is ScheduleKind.OFF:
            return (at_rest,)
        begin, end = self._not_negative("Begin time"), self._not_negative("End time")
        if end < begin:
            self._problems.add(
                f"Dewatering by drains ends at {end:g} days, before it begins at {begin:g} days."
            )
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

    def _detailed(self, rows: Sequence[Row]) -> tuple[Stage, ...]:
        """Return dewatering in stages, each until the next; drainage starts with the first."""
        stages: list[Stage] = []
        for number, row in enumerate(rows, 1):
            which = f"Row {number} of the schedule of dewatering"
            if row.time < 0:
                self._problems.add(f"{which} begins at {row.time:g} days, before the calculation.")
            if row.underpressure < 0:
                self._problems.add(f"{which} has a negative underpressure, {row.underpressure:g}.")
            if stages and stages[-1].time >= row.time:
                self._problems.add(
                    f"{which} begins at {row.time:g} days, no later than the row before, at "
                    f"{stages[-1].time:g} days."
                )
            pumped = self._pumped(row.underpressure, row.water_level, row.tube_pressure)
            stages.append(Stage(row.time, pumped))
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
            self._problems.add(f"{label} of the drains is {value:g}. It should not be negative.")
        return value
