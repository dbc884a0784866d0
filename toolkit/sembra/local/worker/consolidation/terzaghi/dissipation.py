"""Dissipation: the degree of consolidation of the layers, as for one load at time 0.

It is the mean over each layer of what is local in its cluster, while settlements are calculated
with the mean over the cluster.
"""

import itertools

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.terzaghi.degrees import TerzaghiColumn
from sembra.local.worker.consolidation.terzaghi.local_degree import local_degree


def dissipation(consolidation: TerzaghiColumn, times: Floats) -> Floats:
    """Return the degree of consolidation of each layer, shape (layers, times).

    Args:
        consolidation: how the column consolidates.
        times: times since the load, in days.
    """
    degrees = consolidation.degrees(times, 0.0)
    for cluster in consolidation.clusters:
        borders = cluster.borders if cluster.drained_top else 1 - cluster.borders
        relative = borders / cluster.sides
        factor = times / (consolidation.reference_time * cluster.length**2)
        left = consolidation.left_by_drains(cluster, times, 0.0)
        for offset, (one, other) in enumerate(itertools.pairwise(relative)):
            local = local_degree(factor, min(one, other), max(one, other))
            degrees[cluster.first + offset] = np.where(times > 0, 1 - (1 - local) * left, 0.0)
    return degrees
