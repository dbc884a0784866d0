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
        heights: dict[int, Floats] = {}
        wet = [self._submerged(load, sunk, heights) for load in there]
        return [
            load_stress(wet, s.column, s.mesh.levels) - dry + _loss_of_soil(s, settlement)
            for s, dry, settlement in zip(self._situations, self._dry, settlements, strict=True)
        ]

    def _submerged(self, load: Load, sunk: SurfaceSettlement, heights: dict[int, Floats]) -> Load:
        """Return a load after the ground has settled.

        A load and its removal have the same columns, whose heights in water are kept in `heights`.
        """
        if not isinstance(load, StripLoad):
            return load.submerged(sunk)
        key = id(load.strips)
        if key not in heights:
            columns = self._wet.setdefault(key, WetColumns(load))
            heights[key] = columns.heights(sunk(load.strips.middles))
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
