"""Uniform loads: the same weight everywhere."""

from dataclasses import dataclass

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.loads.load import PressureLoad
from sembra.local.worker.tolerances import LENGTH


@dataclass(frozen=True)
class UniformLoad(PressureLoad):
    """A load of the same weight everywhere, from `level` downwards."""

    unit_weight: float
    height: float
    level: float

    @property
    def pressure(self) -> float:
        """Vertical stress below the load."""
        return self.unit_weight * self.height

    def stress(self, _x: float, _z: float, levels: Floats, /) -> Floats:
        """Return the vertical stress at some levels, everywhere: all of it at and below its own."""
        return np.where(levels <= self.level + LENGTH, self.pressure, 0.0)
