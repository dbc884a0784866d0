"""Uniform loads: the same weight everywhere."""

from dataclasses import dataclass
from typing import Self

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.loads.load import SurfaceSettlement

_LEVEL_TOLERANCE = 1e-9


@dataclass(frozen=True)
class UniformLoad:
    """A load of the same weight everywhere, from `level` downwards.

    A load at time -1 is an initial load: it is part of the initial stress and causes no settlement.
    """

    name: str
    time: float
    unit_weight: float
    height: float
    level: float

    @property
    def pressure(self) -> float:
        """Vertical stress below the load."""
        return self.unit_weight * self.height

    @property
    def is_initial(self) -> bool:
        """Whether the load belongs to the initial state."""
        return self.time < 0

    def stress(self, _x: float, _z: float, levels: Floats, /) -> Floats:
        """Vertical stress at some levels, the same everywhere: all of it at and below its own."""
        return np.where(levels <= self.level + _LEVEL_TOLERANCE, self.pressure, 0.0)

    def submerged(self, _settlement: SurfaceSettlement, /) -> Self:
        """Return the load as it is: a pressure has no height that could come under water."""
        return self
