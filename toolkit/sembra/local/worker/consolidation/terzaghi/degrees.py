"""Consolidation by the theory of Terzaghi and Fröhlich (1936).

All layers of a cluster have its mean degree of consolidation,

    1 - U = exp(-r t / t_ref) sum over n of 8 / ((2n + 1)² pi²) exp(-(2n + 1)² pi² T),
    T     = t / (t_ref L²)

with L the distance between drained sides in h / sqrt(c_v), and r the flow to vertical drains per
day (Carrillo 1942). The reference time t_ref belongs to the theory of secular settlement and not
to this one; the tool divides by it all the same.
"""

import math
from collections.abc import Sequence

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.drains.equal_drains import Drains
from sembra.local.worker.consolidation.terzaghi.clusters import Cluster, find_clusters
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.mesh import Mesh
from sembra.local.worker.options import Options

LAST_TERM = 1e-5
"""The tool ends the series with the first term that is smaller."""

_WAVE = (2 * np.arange(143) + 1) * math.pi
_SHARE = 8 / _WAVE**2
"""Beyond these waves each term is smaller than `LAST_TERM` at any time."""


class TerzaghiColumn:
    """The degrees of consolidation of one column.

    Args:
        column: The column.
        mesh: Its mesh.
        options: Drained boundaries and reference time.
        drains: The drains of the file, if there are any.

    Raises:
        WorkerError: A layer has no coefficient of consolidation.
    """

    def __init__(self, column: Column, mesh: Mesh, options: Options, drains: Drains | None) -> None:
        self._column = column
        self.reference_time = options.reference_time
        self._drains = drains
        self._clusters = list(
            find_clusters(column, mesh, options.drained_top, options.drained_bottom)
        )

    @property
    def layer_count(self) -> int:
        """How many layers the column has."""
        return len(self._column.layers)

    @property
    def clusters(self) -> Sequence[Cluster]:
        """The clusters, from top to bottom."""
        return self._clusters

    def degrees(self, times: Floats, load_time: float) -> Floats:
        """Return the degree of consolidation of each layer for a load, shape (layers, times).

        Args:
            times: Times in days; up to that of the load the degree is 0, and beyond it 1 in a
                drained layer.
            load_time: When the load comes, in days.
        """
        since = times - load_time
        degrees = np.tile(np.where(since > 0, 1.0, 0.0), (self.layer_count, 1))
        for cluster in self._clusters:
            factor = since / (self.reference_time * cluster.length**2)
            excess = (1 - mean_degree(factor)) * self.left_by_drains(cluster, times, load_time)
            degrees[cluster.first : cluster.end] = np.where(since > 0, 1 - excess, 0.0)
        return degrees

    def drain_rate(self, cluster: Cluster) -> float:
        """Return the rate r of the flow to the drains from a cluster, per day."""
        if self._drains is None:
            return 0.0
        layers = self._column.layers[cluster.first : cluster.end]
        reach = np.array([self._drains.reach(layer.top, layer.bottom) for layer in layers])
        ratio = np.array([layer.material.conductivity.horizontal_factor for layer in layers])
        inside = reach * cluster.heights / cluster.height
        horizontal = cluster.coefficient * float(ratio @ inside)
        return float(inside.sum()) * self._drains.rate(self._column.x) * horizontal

    def left_by_drains(self, cluster: Cluster, times: Floats, load_time: float) -> Floats:
        """Return the part of the excess pressure that drains leave from their start on."""
        if self._drains is None:
            return np.ones_like(times)
        flowing = np.maximum(times - max(load_time, self._drains.start), 0.0)
        left: Floats = np.exp(-self.drain_rate(cluster) * flowing / self.reference_time)
        return left


def mean_degree(time_factor: Floats) -> Floats:
    """Return the mean degree of consolidation of a layer drained at both sides.

    Args:
        time_factor: T, shape (times,); up to 0 the degree is 0.

    Returns:
        Degrees from 0 to 1, of the same shape.
    """
    factor = np.maximum(time_factor, 0.0)[:, None]
    with np.errstate(under="ignore"):
        terms = _SHARE * np.exp(-(_WAVE**2) * factor)
    added = np.ones_like(terms, dtype=bool)
    added[:, 1:] = terms[:, :-1] >= LAST_TERM
    excess = (terms * added).sum(axis=1)
    return np.where(time_factor > 0, 1 - excess, 0.0)
