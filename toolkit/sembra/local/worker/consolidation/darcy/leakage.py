"""Flow of water from the elements of a column to the vertical drains.

An element that the drains go through leaks

    l = rate k_h / k_v h0² / 4

in parts of the pressure above that in the drains, with the rate of horizontal flow of the drains
and h0 the initial height of the element. One that they end in does not leak.
"""

from collections.abc import Sequence
from dataclasses import dataclass

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.drains.equal_drains import Drains
from sembra.local.worker.consolidation.drains.water import Schedule
from sembra.local.worker.ground.material import Material
from sembra.local.worker.tolerances import LENGTH, TIME


@dataclass(frozen=True)
class Leakage:
    """The leakage of the elements of a column, and the water in the drains if there are any.

    Attributes:
        factors: L of the elements.
        stated: L as if the drains had no end, which is what result files show.
        schedule: The water in the drains.
    """

    factors: Floats
    stated: Floats
    schedule: Schedule | None

    @property
    def changes(self) -> list[float]:
        """Times in days at which the water in the drains changes."""
        return [stage.time for stage in self.schedule.stages] if self.schedule else []

    def factors_at(self, time: float) -> Floats:
        """Return l in a step that begins at a time in days: none before the start of drainage."""
        flows = self.schedule is not None and time + TIME >= self.schedule.start
        return self.factors * flows

    def pressure_at(self, time: float, levels: Floats, water_unit_weight: float) -> Floats:
        """Return the pressure in the drains at a time in days and some levels, in kPa."""
        if self.schedule is None:
            return np.zeros_like(levels)
        return self.schedule.water(time + TIME).pressure(levels, water_unit_weight)


def leakage(
    drains: Drains | None, x: float, levels: Floats, materials: Sequence[Material]
) -> Leakage:
    """Return the leakage of a column.

    Args:
        drains: The drains, if there are any.
        x: Where the column stands, in metres.
        levels: Levels of its nodes, from top to bottom, in metres.
        materials: The material of each element.
    """
    if drains is None:
        none = np.zeros(len(materials))
        return Leakage(none, none, None)
    ratios = np.array([material.conductivity.horizontal_factor for material in materials])
    stated = drains.rate(x) * ratios * (levels[:-1] - levels[1:]) ** 2 / 4
    reached = levels[1:] >= drains.bottom - LENGTH
    return Leakage(np.where(reached, stated, 0.0), stated, drains.schedule)
