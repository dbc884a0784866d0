"""Dissipation of the column that the input file wants it for."""

import numpy as np

from sembra.local.worker.column_result import Dissipation
from sembra.local.worker.failures import OUT_OF_RANGE, WorkerError
from sembra.local.worker.ground.column import Column
from sembra.local.worker.loads.stresses import load_stress
from sembra.local.worker.project import Project
from sembra.local.worker.settlement import make_situation
from sembra.local.worker.timesteps import calculation_times

_LEFT_AWAY = "The dissipation is left away. "


def dissipation(
    project: Project, column: Column, *, sinking: bool
) -> tuple[Dissipation | None, tuple[str, ...]]:
    """Return the dissipation, and remarks on it.

    Its times are those of one load at time 0. They begin anew where a superelevation would come,
    which published results show, and where the water in drains changes. It stands beside the
    settlements: where it lacks something there is none, and a sentence says so.

    Args:
        project: The input.
        column: The column that it is wanted for.
        sinking: Whether the ground sinks into the water from one time to the next.
    """
    starts = []
    if project.options.superelevation:
        starts.append(project.options.superelevation.time)
    if project.drains:
        starts.extend(stage.time for stage in project.drains.schedule.stages)
    times = calculation_times(starts, project.options.end, project.residual_times)
    try:
        situation = make_situation(column, project, [])
        load = load_stress(project.loads, column, situation.mesh.levels)
        degrees = project.consolidation.dissipation(situation, load, times, sinking=sinking)
    except WorkerError as error:
        return None, (f"{_LEFT_AWAY}{error}",)
    except ArithmeticError:
        return None, (f"{_LEFT_AWAY}{OUT_OF_RANGE}",)
    if not np.all(np.isfinite(degrees)):
        return None, (f"{_LEFT_AWAY}{OUT_OF_RANGE}",)
    return Dissipation(times, degrees), ()
