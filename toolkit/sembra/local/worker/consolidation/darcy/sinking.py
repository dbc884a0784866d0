"""Loads and soil that come under water as the ground settles, from one time step to the next.

What stands on the ground goes down with it, by the settlement of the surface, linear between the
columns. So does the soil: the phreatic level rises, as it stands to the soil, by the settlement of
the point where it is. Both weigh less by it.
"""

import itertools
from collections.abc import Sequence

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.darcy.wet_columns import WetColumns
from sembra.local.worker.consolidation.interface import Situation
from sembra.local.worker.loads.load import Load
from sembra.local.worker.loads.reach import Reach
from sembra.local.worker.loads.stresses import load_stress
from sembra.local.worker.loads.strip_load import StripLoad
from sembra.local.worker.tolerances import TIME


class SinkingLoads:
    """The loads on columns that settle together, in several runs.

    Args:
        situations: The columns, with the same loads.
        lasts: For each run, the time in days after which no further loads count.
    """

    def __init__(self, situations: Sequence[Situation], lasts: Sequence[float]) -> None:
        self._lasts = np.array(lasts)
        borders = np.cumsum([0, *(len(s.mesh.levels) for s in situations)])
        self._surfaces = borders[:-1]
        self._parts = [slice(*ends) for ends in itertools.pairwise(borders)]
        self._soil = [SinkingSoil(situation) for situation in situations]
        loads = situations[0].loads
        strips = [load for load in loads if isinstance(load, StripLoad)]
        self._strips = _SinkingStrips(strips, situations, len(lasts)) if strips else None
        self._pressures = [
            (load.time, _stress([load], situations))
            for load in loads
            if not isinstance(load, StripLoad)
        ]
        self._at_first = _stress([load for load in loads if load.is_initial], situations)

    def increases(self, time: float, settlements: Floats, /) -> Floats:
        """Return the increase of stress at the nodes of all columns in each run.

        Args:
            time: In days; loads that come at it are there.
            settlements: Settlement of the nodes in metres, shape (runs, nodes).
        """
        now = np.minimum(self._lasts, time + TIME)
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
        if self._strips:
            increases += self._strips.stress(now, surface)
        return increases


def _stress(loads: Sequence[Load], situations: Sequence[Situation]) -> Floats:
    """Return the stress by loads at the nodes of columns, one after another."""
    return np.concatenate([load_stress(loads, s.column, s.mesh.levels) for s in situations])


class _SinkingStrips:
    """The columns of all loads that have some, side by side.

    Args:
        steps: The loads and their removals, at least one; both have the same columns.
        situations: The columns of ground.
        runs: The number of runs.
    """

    def __init__(
        self, steps: Sequence[StripLoad], situations: Sequence[Situation], runs: int
    ) -> None:
        with_removal: dict[int, list[StripLoad]] = {}
        for step in steps:
            with_removal.setdefault(id(step.strips), []).append(step)
        self._steps = list(with_removal.values())
        loads = [load for load, *_ in self._steps]
        strips = [load.strips for load in loads]
        numbers = np.arange(len(loads))
        self._owners = np.repeat(numbers, [len(one.base) for one in strips])
        self._wet = WetColumns(loads, runs)
        self._reach = Reach(strips, [(s.column.x, s.mesh.levels) for s in situations])
        dry = np.array([load.fill.dry for load in loads])
        self._dry_stress = self._reach.stress(
            np.concatenate([one.height for one in strips]),
            np.where(self._owners == numbers[:, None], dry[self._owners], 0.0),
        )
        self._change = np.array([load.fill.change_under_water for load in loads])[self._owners]
        middles = np.concatenate([one.middles for one in strips])
        places = np.array([s.column.x for s in situations])
        order = np.argsort(places, kind="stable")
        # What the settlement of each column of ground adds to that below each column of the loads.
        self._below = np.array(
            [np.interp(middles, places[order], one[order]) for one in np.eye(len(places))]
        )

    def stress(self, now: Floats, surface: Floats) -> Floats:
        """Return the stress at the nodes of the columns of ground.

        Args:
            now: For each run, the time in days up to which loads have come and gone.
            surface: Settlement of the surface of the columns in metres, shape (runs, columns).
        """
        there = np.array([load.time <= now for load, *_ in self._steps]).T
        signs = np.array(
            [sum((step.time <= now) * step.sign for step in steps) for steps in self._steps]
        ).T
        heights = self._wet.heights(surface @ self._below, there[:, self._owners])
        wet_stress = self._reach.stress(heights, signs[:, self._owners] * self._change)
        return signs @ self._dry_stress + wet_stress


class SinkingSoil:
    """The soil of a column, which comes under water from the phreatic level up.

    Args:
        situation: The column.
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
            settlements: Settlement of the nodes in metres, shape (runs, nodes).
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
