"""Loads and soil that come under water as the ground settles, from one time step to the next.

What stands on the ground goes down with it, by the settlement of the surface, linear between the
columns. So does the soil: the phreatic level rises, as it stands to the soil, by the settlement of
the point where it is. Both weigh less by it.
"""

from collections.abc import Sequence
from dataclasses import replace

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.consolidation import Situation
from sembra.local.worker.consolidation.darcy.wet_columns import WetColumns
from sembra.local.worker.ground.stresses import load_stress
from sembra.local.worker.loads.load import Load, SurfaceSettlement
from sembra.local.worker.loads.reach import Reach
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
        self._soil = [_SinkingSoil(situation) for situation in situations]
        self._wet: dict[int, WetColumns] = {}
        self._reach: dict[int, Reach] = {}
        self._stresses: dict[int, Floats] = {}
        self._borders = np.cumsum([len(s.mesh.levels) for s in situations])[:-1]
        self._dry = np.concatenate(
            [load_stress(self._initial, s.column, s.mesh.levels) for s in situations]
        )

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
        increases = np.concatenate(
            [soil.loss(own) for soil, own in zip(self._soil, settlements, strict=True)]
        )
        increases -= self._dry
        heights: dict[int, Floats] = {}
        for load in there:
            if isinstance(load, StripLoad):
                increases += self._of_strips(self._submerged(load, sunk, heights))
            else:
                increases += self._of_pressure(load)
        return np.split(increases, self._borders)

    def _of_strips(self, load: StripLoad) -> Floats:
        """Return the stress by a load at the nodes of all columns, one after another."""
        key = id(load.strips)
        if key not in self._reach:
            points = [(s.column.x, s.mesh.levels) for s in self._situations]
            self._reach[key] = Reach(load.strips, points)
        return self._reach[key].stress(load.pressures_above)

    def _of_pressure(self, load: Load) -> Floats:
        """Return the same by a load without a height that could come under water: it stays."""
        key = id(load)
        if key not in self._stresses:
            self._stresses[key] = np.concatenate(
                [load_stress([load], s.column, s.mesh.levels) for s in self._situations]
            )
        return self._stresses[key]

    def _submerged(
        self, load: StripLoad, sunk: SurfaceSettlement, heights: dict[int, Floats]
    ) -> StripLoad:
        """Return a load after the ground has settled.

        A load and its removal have the same columns, whose heights in water are kept in `heights`.
        """
        key = id(load.strips)
        if key not in heights:
            if key not in self._wet:
                self._wet[key] = WetColumns(load)
            heights[key] = self._wet[key].heights(sunk(load.strips.middles))
        return replace(load, water_levels=load.strips.base + heights[key])


class _SinkingSoil:
    """The soil of a column, which comes under water from the phreatic level up.

    Args:
        situation: the column.
    """

    def __init__(self, situation: Situation) -> None:
        column = situation.column
        layers = column.layers[::-1]
        materials = [layer.material for layer in layers]
        changes = [
            (material.unit_weight_wet - situation.options.water_unit_weight)
            - material.unit_weight_dry
            for material in materials
        ]
        heights = [layer.top - layer.bottom for layer in layers]
        self._borders = np.array([layers[0].bottom, *(layer.top for layer in layers)])
        self._sums = np.concatenate([[0.0], np.cumsum(np.multiply(heights, changes))])
        self._is_dry = column.phreatic_level < column.surface
        self._level = column.phreatic_level
        self._levels = situation.mesh.levels
        self._before = self._change_below(self._level)

    def loss(self, settlements: Floats) -> Floats:
        """Return the change of effective stress at the nodes by what comes under water, in kPa."""
        if not self._is_dry:
            return np.zeros_like(self._levels)
        rise = float(np.interp(-self._level, -self._levels, settlements))
        return self._change_below(self._level + rise) - self._before

    def _change_below(self, water_level: float) -> Floats:
        """Return what all soil up to a water level, but not below the nodes, changes once wet."""
        reached = np.maximum(self._levels, water_level)
        change: Floats = np.interp(reached, self._borders, self._sums)
        return change
