"""What the water in drains does to the effective stress of a cluster, by Terzaghi's theory.

The pore pressure falls towards that in the drains, and less so where water flows in from above and
below. In the steady state of

    c_v d²u / dz² = r (u - w)

with r the rate of the flow to the drains, the mean fall over a cluster of height H between drained
sides is, for a mean difference G between the pressures at rest and in the drains,

    G (1 - tanh(x) / x),   x = H / 2 sqrt(r / c_v)

which is taken for all of the cluster, and comes like a load.
"""

from dataclasses import dataclass

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.drains.equal_drains import Drains
from sembra.local.worker.consolidation.drains.water import (
    ScheduleKind,
    Stage,
    StandingWater,
)
from sembra.local.worker.consolidation.terzaghi.clusters import Cluster
from sembra.local.worker.consolidation.terzaghi.degrees import TerzaghiColumn
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.mesh import Mesh

SHALLOW = 1.0
"""Less deep, in metres, the drains count as if they stood full up to the surface of dry ground.

Published results show it; no theory was found for it.
"""


@dataclass(frozen=True)
class Drawdown:
    """A time in days, and by what the pore pressure of each layer comes to have fallen, in kPa."""

    time: float
    lowering: Floats


def drawdowns(
    column: Column,
    mesh: Mesh,
    drains: Drains,
    consolidation: TerzaghiColumn,
    water_unit_weight: float,
) -> list[Drawdown]:
    """Return the changes of pore pressure by the water in drains, in the order of time.

    Args:
        column: The column.
        mesh: Its mesh.
        drains: The drains.
        consolidation: How the column consolidates.
        water_unit_weight: In kN/m³.
    """
    found: list[Drawdown] = []
    for stage in drains.schedule.stages:
        lowering = np.zeros(len(column.layers))
        if not _stands_full(stage, drains, column):
            for cluster in consolidation.clusters:
                lowering[cluster.first : cluster.end] = _steady_share(
                    cluster, consolidation.drain_rate(cluster)
                ) * _difference(column, mesh, cluster, drains, stage, water_unit_weight)
        before = found[-1].lowering if found else np.zeros_like(lowering)
        if not np.array_equal(lowering, before):
            found.append(Drawdown(stage.time, lowering))
    return found


def _stands_full(stage: Stage, drains: Drains, column: Column) -> bool:
    """Return whether the water in drains stands too high to do anything, as the tool has it."""
    water = stage.water
    return (
        drains.schedule.kind is not ScheduleKind.DETAILED
        and isinstance(water, StandingWater)
        and water.level >= column.phreatic_level
        and water.underpressure == 0
    )


def _steady_share(cluster: Cluster, rate: float) -> float:
    """Return 1 - tanh(x) / x, with the cluster's mirror image where it is drained at one side."""
    x = cluster.sides * cluster.height / 2 * np.sqrt(rate / cluster.coefficient)
    return float(1 - np.tanh(x) / x) if x > 0 else 0.0


def _difference(
    column: Column,
    mesh: Mesh,
    cluster: Cluster,
    drains: Drains,
    stage: Stage,
    water_unit_weight: float,
) -> float:
    """Return G: the cluster's mean of the pressure at rest less that in drains, down to their tip.

    Each element counts with the pressures at its upper node.
    """
    inside = (mesh.element_layers >= cluster.first) & (mesh.element_layers < cluster.end)
    upper = mesh.levels[:-1]
    at_rest = np.maximum((column.phreatic_level - upper) * water_unit_weight, 0.0)
    difference = at_rest - stage.water.pressure(upper, water_unit_weight)
    depth = column.surface - upper
    difference = np.where(depth < SHALLOW, -depth * water_unit_weight, difference)
    reached = inside & (mesh.levels[1:] >= drains.bottom)
    return float(difference[reached] @ mesh.thicknesses[reached]) / cluster.height
