"""Load steps: the moments at which the effective stress of a column changes."""

from collections.abc import Sequence
from dataclasses import dataclass

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.drawdown import Drawdown
from sembra.local.worker.errors import WorkerError
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.mesh import Mesh
from sembra.local.worker.ground.stresses import check_not_negative, load_stress
from sembra.local.worker.loads.load import Load


@dataclass(frozen=True)
class LoadStep:
    """A time in days and the effective stress, in kPa, that the nodes come to after it."""

    time: float
    effective: Floats


def load_steps(
    column: Column,
    mesh: Mesh,
    initial: Floats,
    loads: Sequence[Load],
    drawdowns: Sequence[Drawdown] = (),
) -> list[LoadStep]:
    """The load steps in the order of time; what comes at the same time forms one step.

    Without initial loads the first step is that of the soil's own weight, at time 0, which
    changes nothing.

    Args:
        column: the column.
        mesh: its mesh.
        initial: initial effective stress at the nodes.
        loads: all loads, initial ones too.
        drawdowns: the changes of pore pressure by drains, in the order of time.
    """
    later = [load for load in loads if not load.is_initial]
    times = {load.time for load in later} | {drawdown.time for drawdown in drawdowns}
    steps = []
    if not times or len(later) == len(loads):
        steps.append(LoadStep(0.0, initial))
    for time in sorted(times):
        placed = [load for load in later if load.time <= time]
        stress = load_stress(placed, column.x, mesh.levels)
        steps.append(LoadStep(time, initial + stress + lowering(mesh, drawdowns, time)))
    return steps


def lowering(mesh: Mesh, drawdowns: Sequence[Drawdown], time: float) -> Floats:
    """What the pore pressure at the nodes comes to fall by at a time, in kPa."""
    past = [drawdown for drawdown in drawdowns if drawdown.time <= time]
    return past[-1].lowering[mesh.node_layers] if past else np.zeros_like(mesh.levels)


def element_stress(mesh: Mesh, stress: Floats) -> Floats:
    """Mean of the effective stresses at the two ends of each element, none of them negative.

    Raises:
        WorkerError: a stress is negative, or a mean is zero, so that the method of Koppejan has
            no answer.
    """
    check_not_negative(mesh, stress)
    means: Floats = (stress[:-1] + stress[1:]) / 2
    for level, mean in zip(mesh.levels, means, strict=False):
        if not mean > 0:
            raise WorkerError(
                f"The effective stress below {level:.3f} m becomes zero. NEN-Koppejan needs an "
                "effective stress greater than zero."
            )
    return means
