"""Load steps: the moments at which the effective stress of a column changes."""

from collections.abc import Sequence
from dataclasses import dataclass

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.mesh import Mesh
from sembra.local.worker.loads.load import Load
from sembra.local.worker.loads.stresses import check_not_negative, check_positive, load_stress
from sembra.local.worker.loads.water_load import WaterLoad


@dataclass(frozen=True)
class LoadStep:
    """A time in days and the effective stress, in kPa, that the nodes come to after it.

    `loads` are those that have come by then, the initial ones among them. `is_own_weight` marks the
    step of the soil's own weight, which changes nothing.
    """

    time: float
    effective: Floats
    loads: tuple[Load, ...] = ()
    is_own_weight: bool = False

    def element_stress(self, column: Column, mesh: Mesh) -> Floats:
        """Return the mean of the effective stresses at the two ends of each element.

        Raises:
            LocalError: A stress is negative, or a mean is zero, so that no soil model has an
                answer.
        """
        check_not_negative(column, mesh, self.effective, self.loads)
        means = mesh.means(self.effective)
        check_positive(column, mesh, means, self.loads)
        return means


def load_steps(
    column: Column, mesh: Mesh, initial: Floats, loads: Sequence[Load]
) -> list[LoadStep]:
    """Return the load steps in the order of time; what comes at the same time forms one step.

    Without initial loads the first step is that of the soil's own weight, at time 0. The soil above
    an imaginary surface counts as an initial load. Where there are none but water loads, one at
    time 0 takes the place of the own weight.

    Args:
        column: The column.
        mesh: Its mesh.
        initial: Initial effective stress at the nodes.
        loads: All loads, initial ones too.
    """
    later = [load for load in loads if not load.is_initial]
    times = sorted({load.time for load in later})
    has_initial = column.soil_above is not None or len(later) < len(loads)
    is_water_first = times[:1] == [0.0] and all(isinstance(load, WaterLoad) for load in later)
    steps = []
    if not times or not (has_initial or is_water_first):
        steps.append(LoadStep(0.0, initial, is_own_weight=True))
    change = np.zeros_like(initial)
    for time in times:
        coming = [load for load in later if load.time == time]
        change = change + load_stress(coming, column, mesh.levels)
        there = tuple(load for load in loads if load.time <= time)
        steps.append(LoadStep(time, initial + change, there))
    return steps
