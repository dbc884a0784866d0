"""Loads of soil that stand in columns on the ground, partly under water."""

from dataclasses import dataclass, replace
from typing import Self

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.loads.load import SurfaceSettlement
from sembra.local.worker.loads.reach import Reach
from sembra.local.worker.loads.strips import Strips


@dataclass(frozen=True)
class Fill:
    """Unit weights in kN/m³ of a load above and below the phreatic level, and that of water.

    Under water a load weighs less by the water that it displaces. Negative unit weights are those
    of soil that is taken away, and with it goes that the water carried a part of it.
    """

    dry: float
    wet: float
    water: float

    def pressure(self, base: Floats, top: Floats, water_level: Floats) -> Floats:
        """Return the pressure by what stands between a base and a top, in kPa."""
        height = np.maximum(top - base, 0.0)
        wet = np.clip(water_level - base, 0.0, height)
        under_water = self.wet - (-self.water if self.wet < 0 else self.water)
        return self.dry * (height - wet) + under_water * wet


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
        return self.pressures_above(self.strips.base)

    def pressures_above(self, levels: Floats) -> Floats:
        """Pressure by what of each column stands above levels, one for each or rows of them."""
        return self.sign * self.fill.pressure(levels, self.strips.tops, self.water_levels)

    def stress(self, x: float, _z: float, levels: Floats, /) -> Floats:
        """Vertical stress at x and some levels."""
        return Reach(self.strips, [(x, levels)]).stress(self.pressures_above)

    def submerged(self, settlement: SurfaceSettlement, /) -> Self:
        """The load after the ground below it has settled, with more of it under water."""
        rise = settlement(self.strips.middles)
        return replace(self, water_levels=self.water_levels + rise)

    def removed(self, time: float) -> Self:
        """The load step by which all of the load goes."""
        return replace(self, time=time, sign=-self.sign, was_initial=self.is_initial)
