"""Dissipation: the degree of consolidation of the layers, as for one load at time 0.

It is the mean over each layer of what is local in its cluster, while settlements are calculated
with the mean over the cluster.

The tool takes the depth within a cluster from the top where only one side is drained. Where that is
the bottom, theory would take it from there: the dissipation is that of the column upside down.
"""

import itertools

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.terzaghi.degrees import TerzaghiColumn
from sembra.local.worker.consolidation.terzaghi.local_degree import local_degree


def dissipation(consolidation: TerzaghiColumn, times: Floats) -> Floats:
    """Return the degree of consolidation of each layer, shape (layers, times).

    Args:
        consolidation: How the column consolidates.
        times: Times since the load, in days, from 0 on.
    """
    degrees = np.ones((consolidation.layer_count, len(times)))
    for cluster in consolidation.clusters:
        relative = cluster.borders / cluster.sides
        factor = times / (consolidation.reference_time * cluster.length**2)
        left = consolidation.left_by_drains(cluster, times, 0.0)
        for offset, (upper, lower) in enumerate(itertools.pairwise(relative)):
            local = local_degree(factor, upper, lower)
            degrees[cluster.first + offset] = 1 - (1 - local) * left
    return degrees
