"""The water in drains, and when it changes."""

from dataclasses import dataclass
from enum import IntEnum
from typing import Protocol

import numpy as np

from sembra.local.worker.arrays import Floats


class DrainWater(Protocol):
    """What stands in the drains."""

    def pressure(self, levels: Floats, water_unit_weight: float) -> Floats:
        """Return the pressure in the drains at some levels, in kPa."""


@dataclass(frozen=True)
class StandingWater:
    """Water up to a level in metres, below a pump that takes an underpressure in kPa away."""

    level: float
    underpressure: float = 0.0

    def pressure(self, levels: Floats, water_unit_weight: float) -> Floats:
        """Return the pressure in the drains at some levels, in kPa."""
        standing: Floats = np.maximum((self.level - levels) * water_unit_weight, 0.0)
        return standing - self.underpressure


@dataclass(frozen=True)
class PipeWater:
    """Water in a sand wall with a drain pipe, by the pressure in the pipe.

    Args:
        pipe: Level of the pipe, in metres.
        pipe_pressure: Pressure in it, in kPa.
        underpressure: The least pressure is the negative of this, in kPa.
    """

    pipe: float
    pipe_pressure: float
    underpressure: float = 0.0

    def pressure(self, levels: Floats, water_unit_weight: float) -> Floats:
        """Return the pressure in the drains at some levels, in kPa."""
        return np.maximum(
            self.pipe_pressure + (self.pipe - levels) * water_unit_weight, -self.underpressure
        )


class ScheduleKind(IntEnum):
    """How an input file tells when the drains are pumped, by its code."""

    OFF = 0
    SIMPLE = 1
    DETAILED = 2


@dataclass(frozen=True)
class Stage:
    """The water in the drains from a time in days on."""

    time: float
    water: DrainWater


@dataclass(frozen=True)
class Schedule:
    """The water in the drains in the course of time.

    Args:
        kind: How the file tells it.
        stages: In the order of time, at least one.
    """

    kind: ScheduleKind
    stages: tuple[Stage, ...]

    @property
    def start(self) -> float:
        """Start of drainage, in days."""
        return self.stages[0].time

    def water(self, time: float) -> DrainWater:
        """Return the water at a time in days; before the start that of the first stage."""
        past = [stage for stage in self.stages if stage.time <= time]
        return (past or self.stages)[-1 if past else 0].water
