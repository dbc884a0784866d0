"""Trapeziform loads: a pressure that rises, stays, and falls again, endless across."""

import math
from dataclasses import dataclass
from functools import cached_property

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.failures import WorkerError
from sembra.local.worker.loads.load import PressureLoad
from sembra.local.worker.spreading.columns import check_count
from sembra.local.worker.spreading.distribution import Distribution
from sembra.local.worker.spreading.strips import Strips

# In parts of a column.
_ROUNDING = 1e-9


@dataclass(frozen=True)
class Trapezium:
    """Lengths in metres of the rising, level and falling part, which begin at x and lie at y."""

    rising: float
    level: float
    falling: float
    x: float
    y: float


@dataclass(frozen=True)
class TrapeziformLoad(PressureLoad):
    """A load of a pressure in kPa where it is highest.

    A slope is cut into columns of one width, as many as fit in with the column width and one more;
    each has the pressure of its middle. The level part is one column.

    Raises:
        WorkerError: A length is negative, there is none at all, or there are too many columns.
    """

    pressure: float
    shape: Trapezium
    column_width: float
    distribution: Distribution

    def __post_init__(self) -> None:
        lengths = (self.shape.rising, self.shape.level, self.shape.falling)
        if min(lengths) < 0 or sum(lengths) <= 0:
            raise WorkerError(f'The load "{self.name}" has no length or a negative one.')
        check_count(sum(lengths) / self.column_width, f'The load "{self.name}"')

    @cached_property
    def strips(self) -> Strips:
        """The columns; they stand at one level, and their heights are parts of the highest."""
        rising, level, falling = self.shape.rising, self.shape.level, self.shape.falling
        up, down = self._parts(rising), self._parts(falling)
        edges = np.concatenate([rising * up, rising + level + falling * down])
        heights = np.concatenate([(up[:-1] + up[1:]) / 2, [1.0], 1 - (down[:-1] + down[1:]) / 2])
        return Strips(
            left=self.shape.x + edges[:-1],
            right=self.shape.x + edges[1:],
            base=np.full_like(heights, self.shape.y),
            height=heights,
            slope=np.zeros_like(heights),
            distribution=self.distribution,
        )

    def stress(self, x: float, _z: float, levels: Floats, /) -> Floats:
        """Return the vertical stress at x and some levels, none at the load's and above."""
        stress = self.strips.shares(x, levels) @ (self.pressure * self.strips.height)
        return np.where(levels < self.shape.y, stress, 0.0)

    def _parts(self, length: float) -> Floats:
        """Return the edges of a slope's columns as parts of its length, or only its foot."""
        if length == 0:
            return np.zeros(1)
        return np.linspace(0, 1, math.floor(length / self.column_width + _ROUNDING) + 2)
