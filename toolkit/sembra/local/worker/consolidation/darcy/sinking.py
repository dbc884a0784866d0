"""Loads and soil that come under water as the ground settles, from one time step to the next.

What stands on the ground goes down with it, by the settlement of the surface, linear between the
columns. So does the soil: the phreatic level rises, as it stands to the soil, by the settlement of
the point where it is. Both weigh less by it.
"""

from collections.abc import Sequence
from dataclasses import replace

import numpy as np
from numpy.typing import NDArray

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.consolidation import Situation
from sembra.local.worker.consolidation.darcy.wet_columns import WetColumns
from sembra.local.worker.ground.stresses import load_stress
from sembra.local.worker.loads.load import Load, SurfaceSettlement
from sembra.local.worker.loads.strip_load import StripLoad

_ROUNDING = 1e-6


class SinkingLoads:
    """The loads on columns that settle together.

    Args:
        situations: the columns, with the same loads.
        last: the time in days after which no further loads count.
    """

    def __init__(self, situations: Sequence[Situation], last: float) -> None:
        self._situations = situations
        places = np.array([situation.column.x for situation in situations])
        self._order = np.argsort(places, kind="stable")
        self._places = places[self._order]
        loads = [load for load in situations[0].loads if load.time <= last]
        self._initial = [load for load in loads if load.is_initial]
        self._later = [load for load in loads if not load.is_initial]
        self._wet: dict[int, WetColumns] = {}
        self._shares: dict[int, tuple[list[int], Floats]] = {}
        self._borders: dict[int, NDArray[np.intp]] = {}
        self._dry = [load_stress(self._initial, s.column, s.mesh.levels) for s in situations]

    def increases(self, time: float, settlements: Sequence[Floats]) -> list[Floats]:
        """Return the increase of stress at the nodes of each column.

        Args:
            time: in days; loads that come at it are there.
            settlements: settlement of the nodes of each column, in metres.
        """
        surface = np.array([settlement[0] for settlement in settlements])[self._order]

        def sunk(x: Floats) -> Floats:
            settlement: Floats = np.interp(x, self._places, surface)
            return settlement

        there: list[Load] = [
            *self._initial,
            *(load for load in self._later if load.time <= time + _ROUNDING),
        ]
        increases = [
            _loss_of_soil(s, settlement) - dry
            for s, dry, settlement in zip(self._situations, self._dry, settlements, strict=True)
        ]
        heights: dict[int, Floats] = {}
        for load in there:
            self._add(self._submerged(load, sunk, heights), increases)
        return increases

    def _add(self, load: Load, increases: Sequence[Floats]) -> None:
        """Add the stress by a load to that at the nodes of each column.

        Below all of a load's columns, stress is a sum of their pressures; it is taken for all
        columns of the ground at once.
        """
        below: list[int] = []
        if isinstance(load, StripLoad):
            below, shares = self._shares_below(load)
        if isinstance(load, StripLoad) and below:
            stresses = np.split(shares @ load.pressures, self._borders[id(load.strips)])
            for number, stress in zip(below, stresses, strict=True):
                increases[number][:] += stress
        for number, s in enumerate(self._situations):
            if number not in below:
                increases[number][:] += load.stress(s.column.x, s.column.z, s.mesh.levels)

    def _shares_below(self, load: StripLoad) -> tuple[list[int], Floats]:
        """Return which columns lie below all of a load's, and the shares at their nodes."""
        strips, key = load.strips, id(load.strips)
        if key not in self._shares:
            lowest = strips.base.min(initial=np.inf)
            below = [n for n, s in enumerate(self._situations) if s.mesh.levels[0] <= lowest]
            chosen = [self._situations[number] for number in below]
            parts = [strips.shares(s.column.x, s.mesh.levels) for s in chosen]
            self._shares[key] = below, np.concatenate([np.empty((0, len(strips.base))), *parts])
            self._borders[key] = np.cumsum([len(part) for part in parts], dtype=np.intp)[:-1]
        return self._shares[key]

    def _submerged(self, load: Load, sunk: SurfaceSettlement, heights: dict[int, Floats]) -> Load:
        """Return a load after the ground has settled.

        A load and its removal have the same columns, whose heights in water are kept in `heights`.
        """
        if not isinstance(load, StripLoad):
            return load.submerged(sunk)
        key = id(load.strips)
        if key not in heights:
            if key not in self._wet:
                self._wet[key] = WetColumns(load)
            heights[key] = self._wet[key].heights(sunk(load.strips.middles))
        return replace(load, water_levels=load.strips.base + heights[key])


def _loss_of_soil(situation: Situation, settlements: Floats) -> Floats:
    """Return the change of effective stress at the nodes by the soil that comes under water."""
    column, levels = situation.column, situation.mesh.levels
    change = np.zeros_like(levels)
    old = column.phreatic_level
    if old >= column.surface:
        return change
    rise = float(np.interp(-old, -levels, settlements))
    for layer in column.layers:
        material = layer.material
        bottom = np.clip(np.maximum(levels, old), layer.bottom, layer.top)
        top = np.clip(np.maximum(levels, old + rise), layer.bottom, layer.top)
        change += (top - bottom) * (
            material.unit_weight_wet
            - situation.options.water_unit_weight
            - material.unit_weight_dry
        )
    return change
