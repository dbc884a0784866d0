"""The columns that consolidate together, as one row of elements.

Columns with the same times are joined to one row, whose arrays numpy goes through at once. No
water flows from one to another, since the top of each holds none under pressure.
"""

from collections.abc import Sequence
from dataclasses import dataclass
from itertools import accumulate

import numpy as np
from numpy.typing import NDArray

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.darcy.leakage import Leakage, leakage
from sembra.local.worker.consolidation.interface import Situation
from sembra.local.worker.ground.material import Material


@dataclass(frozen=True)
class Profile:
    """A column before the first load.

    Attributes:
        places: x of each element, in metres.
        levels: Levels of the nodes, from top to bottom, in metres.
        materials: The material of each element.
        effective: Initial effective stress at the nodes, in kPa.
        pore_pressure: Initial pore pressure at the nodes, in kPa.
        preconsolidation: Initial preconsolidation pressure of the elements, in kPa.
        leakage: Their flow to vertical drains.
    """

    places: Floats
    levels: Floats
    materials: Sequence[Material]
    effective: Floats
    pore_pressure: Floats
    preconsolidation: Floats
    leakage: Leakage

    def pressure_in_drains(self, time: float, water_unit_weight: float) -> Floats:
        """Return the pressure in the drains at the nodes against the initial pore pressure."""
        in_drains = self.leakage.pressure_at(time, self.levels, water_unit_weight)
        return in_drains - self.pore_pressure


def make_profile(s: Situation) -> Profile:
    """Return the profile of a column before the first load."""
    elements = s.model.elements
    return Profile(
        places=np.full(len(elements.materials), s.column.x),
        levels=s.mesh.levels,
        materials=elements.materials,
        effective=s.initial,
        pore_pressure=s.water,
        preconsolidation=elements.preconsolidation,
        leakage=leakage(s.drains, s.column.x, s.mesh.levels, elements.materials),
    )


class Row:
    """Profiles joined to a row of nodes and elements.

    Args:
        profiles: The profiles.
        drained_bottom: Whether water leaves through the bottom of the columns.

    Attributes:
        profile: All of them as one, with the values of one after the other.
        nodes: The upper and the lower node of each element, shape (2, elements).
        heights: Initial height of the elements, in metres.
        drained: Which elements don't hold back their water.
        free: Which nodes can have an excess pore pressure. None can at the top of a column,
            where the tool drains whatever is asked for, and at the ends of a drained element.
    """

    def __init__(self, profiles: Sequence[Profile], drained_bottom: bool) -> None:
        counts = [len(profile.levels) for profile in profiles]
        self._ends = list(accumulate(counts))
        starts = [0, *self._ends[:-1]]
        self._bottoms = np.repeat(self._ends, counts)
        upper = np.concatenate(
            [start + np.arange(count - 1) for start, count in zip(starts, counts, strict=True)]
        )
        self.nodes: NDArray[np.intp] = np.stack([upper, upper + 1])
        self.profile = _joined(profiles)
        self.heights: Floats = self.profile.levels[upper] - self.profile.levels[upper + 1]
        self.drained = np.array([material.drained for material in self.profile.materials])
        self.free = np.ones(self._ends[-1], dtype=np.bool_)
        self.free[starts] = False
        self.free[self.nodes[:, self.drained]] = False
        if drained_bottom:
            self.free[np.array(self._ends) - 1] = False

    def part(self, number: int, values: Floats, *, of_elements: bool = False) -> Floats:
        """Return what belongs to one of the profiles, along the last axis."""
        end = self._ends[number]
        start = self._ends[number - 1] if number else 0
        if of_elements:
            return values[..., start - number : end - number - 1]
        return values[..., start:end]

    def means(self, at_nodes: Floats) -> Floats:
        """Return the mean of the values at the two ends of each element."""
        upper, lower = self.nodes
        mean: Floats = (at_nodes[..., upper] + at_nodes[..., lower]) / 2
        return mean

    def settlements(self, strain: Floats) -> Floats:
        """Return the settlement of the nodes by the strain of the elements."""
        compression = np.zeros(len(self.free))
        compression[self.nodes[0]] = strain * self.heights
        from_below = np.append(np.cumsum(compression[::-1])[::-1], 0.0)
        settlements: Floats = from_below[:-1] - from_below[self._bottoms]
        return settlements


def _joined(profiles: Sequence[Profile]) -> Profile:
    leakages = [profile.leakage for profile in profiles]
    return Profile(
        places=np.concatenate([profile.places for profile in profiles]),
        levels=np.concatenate([profile.levels for profile in profiles]),
        materials=[material for profile in profiles for material in profile.materials],
        effective=np.concatenate([profile.effective for profile in profiles]),
        pore_pressure=np.concatenate([profile.pore_pressure for profile in profiles]),
        preconsolidation=np.concatenate([profile.preconsolidation for profile in profiles]),
        leakage=Leakage(
            factors=np.concatenate([leakage.factors for leakage in leakages]),
            stated=np.concatenate([leakage.stated for leakage in leakages]),
            schedule=leakages[0].schedule,
        ),
    )
