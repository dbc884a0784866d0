"""Loads and soil that come under water as the ground settles, from one time step to the next.

What stands on the ground goes down with it, by the settlement of the surface, linear between the
columns. So does the soil: the phreatic level rises, as it stands to the soil, by the settlement of
the point where it is. Both weigh less by it.
"""

import itertools
from collections.abc import Sequence

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.consolidation import Situation
from sembra.local.worker.consolidation.darcy.wet_columns import WetColumns
from sembra.local.worker.ground.stresses import load_stress
from sembra.local.worker.loads.load import Load
from sembra.local.worker.loads.reach import Reach
from sembra.local.worker.loads.strip_load import StripLoad

_ROUNDING = 1e-6


class SinkingLoads:
    """The loads on columns that settle together, in several runs.

    Args:
        situations: the columns, with the same loads.
        lasts: for each run, the time in days after which no further loads count.
    """

    def __init__(self, situations: Sequence[Situation], lasts: Sequence[float]) -> None:
        self._lasts = np.array(lasts)
        borders = np.cumsum([0, *(len(s.mesh.levels) for s in situations)])
        self._surfaces = borders[:-1]
        self._parts = [slice(*ends) for ends in itertools.pairwise(borders)]
        self._soil = [SinkingSoil(situation) for situation in situations]
        loads = situations[0].loads
        # A load and its removal have the same columns.
        steps: dict[int, list[StripLoad]] = {}
        for load in loads:
            if isinstance(load, StripLoad):
                steps.setdefault(id(load.strips), []).append(load)
        self._strips = [_SinkingStrips(some, situations, self._lasts) for some in steps.values()]
        self._pressures = [
            (load.time, _stress([load], situations))
            for load in loads
            if not isinstance(load, StripLoad)
        ]
        self._at_first = _stress([load for load in loads if load.is_initial], situations)

    def increases(self, time: float, settlements: Floats, /) -> Floats:
        """Return the increase of stress at the nodes of all columns in each run.

        Args:
            time: in days; loads that come at it are there.
            settlements: settlement of the nodes in metres, shape (runs, nodes).
        """
        now = np.minimum(self._lasts, time + _ROUNDING)
        surface = settlements[:, self._surfaces]
        increases = np.concatenate(
            [
                soil.loss(settlements[:, part])
                for soil, part in zip(self._soil, self._parts, strict=True)
            ],
            axis=1,
        )
        increases -= self._at_first
        for load_time, stress in self._pressures:
            increases[load_time <= now] += stress
        for strips in self._strips:
            if strips.time <= time + _ROUNDING:
                runs = strips.runs
                increases[runs] += strips.stress(now[runs], surface[runs])
        return increases


def _stress(loads: Sequence[Load], situations: Sequence[Situation]) -> Floats:
    """Return the stress by loads at the nodes of columns, one after another."""
    return np.concatenate([load_stress(loads, s.column, s.mesh.levels) for s in situations])


class _SinkingStrips:
    """The columns of a load, which goes again if it is removed.

    Args:
        steps: the load, and its removal.
        situations: the columns of ground.
        lasts: for each run, the time in days after which no further loads count.

    Attributes:
        time: when the load comes, in days.
        runs: in which of the runs the load comes.
    """

    def __init__(
        self, steps: Sequence[StripLoad], situations: Sequence[Situation], lasts: Floats
    ) -> None:
        load, self._steps = steps[0], steps
        self.time = load.time
        self.runs = load.time <= lasts
        self._fill = load.fill
        self._wet = WetColumns(load, int(self.runs.sum()))
        self._reach = Reach(load.strips, [(s.column.x, s.mesh.levels) for s in situations])
        self._dry = self._reach.stress(load.strips.height)
        places = np.array([s.column.x for s in situations])
        order = np.argsort(places, kind="stable")
        # What the settlement of each column of ground adds to that below each column of the load.
        self._below = np.array(
            [
                np.interp(load.strips.middles, places[order], one[order])
                for one in np.eye(len(places))
            ]
        )

    def stress(self, now: Floats, surface: Floats) -> Floats:
        """Return the stress at the nodes of the columns of ground, from when the load comes on.

        Args:
            now: for each run in which it comes, the time in days up to which loads count.
            surface: settlement of the surface of the columns in metres, shape (runs, columns).
        """
        signs = np.sum([(step.time <= now) * step.sign for step in self._steps], axis=0)
        wet = self._reach.stress(self._wet.heights(surface @ self._below))
        return signs[:, None] * self._fill.pressure(self._dry, wet)


class SinkingSoil:
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
        # What the settlement of each node adds to that at the phreatic level.
        self._at_level = np.array(
            [np.interp(-self._level, -self._levels, one) for one in np.eye(len(self._levels))]
        )
        self._before = self._change_below(self._level)

    def loss(self, settlements: Floats) -> Floats:
        """Return the change of effective stress at the nodes by what comes under water, in kPa.

        Args:
            settlements: settlement of the nodes in metres, shape (runs, nodes).
        """
        if not self._is_dry:
            return np.zeros_like(settlements)
        rise = settlements @ self._at_level
        return self._change_below(self._level + rise[:, None]) - self._before

    def _change_below(self, water_level: Floats | float) -> Floats:
        """Return what all soil up to a water level, but not below the nodes, changes once wet."""
        reached = np.maximum(self._levels, water_level)
        change: Floats = np.interp(reached, self._borders, self._sums)
        return change
