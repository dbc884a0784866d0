"""Loads of soil that stand in columns on the ground, partly under water."""

from dataclasses import dataclass, replace
from typing import Self

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.loads.load import SurfaceSettlement
from sembra.local.worker.loads.reach import Reach
from sembra.local.worker.spreading.strips import Strips


@dataclass(frozen=True)
class Fill:
    """Unit weights in kN/m³ of a load above and below the phreatic level, and that of water.

    Under water a load weighs less by the water that it displaces. Negative unit weights are those
    of soil that is taken away, and with it goes that the water carried a part of it.
    """

    dry: float
    wet: float
    water: float

    @property
    def change_under_water(self) -> float:
        """What is added to the unit weight of what comes under water, in kN/m³."""
        return self.wet - (-self.water if self.wet < 0 else self.water) - self.dry


@dataclass(frozen=True)
class StripLoad:
    """Columns of a fill that come at one time, or go.

    `water_levels` is the phreatic level at each column, as it stands to the column: it rises by
    what the ground settles. `sign` is 1 for a load that comes and -1 for one that goes, and
    `was_initial` tells that what goes was there from the start.
    """

    name: str
    time: float
    strips: Strips
    fill: Fill
    water_levels: Floats
    sign: int = 1
    was_initial: bool = False

    @property
    def is_initial(self) -> bool:
        """Whether the load belongs to the initial state."""
        return self.time < 0

    @property
    def sinks_in_the_end(self) -> bool:
        """Whether it comes under water with the final settlement; what was initial doesn't."""
        return not (self.is_initial or self.was_initial)

    @property
    def area(self) -> float:
        """Cross-section of the load, in m²."""
        strips = self.strips
        return float(np.sum((strips.right - strips.left) * strips.height))

    @property
    def pressures(self) -> Floats:
        """Pressure of each column on its base, in kPa, negative for a load that goes."""
        dry, wet = (
            self.fill.dry * self.strips.height,
            self.fill.change_under_water * self.wet_heights,
        )
        return self.sign * (dry + wet)

    @property
    def wet_heights(self) -> Floats:
        """How high each column stands in water, in metres."""
        return np.clip(self.water_levels - self.strips.base, 0.0, self.strips.height)

    def stress(self, x: float, _z: float, levels: Floats, /) -> Floats:
        """Return the vertical stress at x and some levels."""
        reach = Reach([self.strips], [(x, levels)])
        dry = reach.stress(self.strips.height, self.fill.dry)
        return self.sign * (dry + reach.stress(self.wet_heights, self.fill.change_under_water))

    def submerged(self, settlement: SurfaceSettlement, /) -> Self:
        """Return the load after the ground below it has settled, with more of it under water."""
        rise = settlement(self.strips.middles)
        return replace(self, water_levels=self.water_levels + rise)

    def removed(self, time: float) -> Self:
        """Return the load step by which all of the load goes."""
        return replace(self, time=time, sign=-self.sign, was_initial=self.is_initial)
