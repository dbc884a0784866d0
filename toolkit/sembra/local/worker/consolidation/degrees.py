"""Degree of consolidation of the layers of a column.

Neighbouring layers that hold back their water form a cluster between drained boundaries. With
depths measured in h / sqrt(cv) the cluster is one homogeneous layer of unit cv, for which the
one-dimensional theory of Terzaghi holds. Where drains take water sideways too,

    1 - U = (1 - U_v) (1 - U_h)                                         Carrillo (1942)
"""

import itertools
import math
from collections.abc import Sequence

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.clusters import Cluster, clusters
from sembra.local.worker.consolidation.drains import Drains
from sembra.local.worker.consolidation.terzaghi_series import mean_degree
from sembra.local.worker.errors import WorkerError
from sembra.local.worker.ground.column import Column, Layer


def degrees_of_consolidation(
    column: Column,
    times: Floats,
    drained_top: bool,
    drained_bottom: bool,
    drains: Drains | None = None,
    load_time: float = 0.0,
) -> Floats:
    """Mean degree of consolidation of every layer, shape (layers, times).

    A layer that the drains reach in part has the mean of its two parts by thickness.

    Args:
        column: the column.
        times: times since the load, in days; up to 0 nothing has consolidated.
        drained_top: whether water leaves through the surface.
        drained_bottom: whether water leaves through the bottom of the column.
        drains: the drains around the column, if there are any.
        load_time: when the load comes, in days. Water flows to the drains from then or the start
            of drainage on, whichever is later.

    Raises:
        WorkerError: a layer has no coefficient of consolidation, or water can't leave it.
    """
    degrees = np.tile(np.where(times > 0, 1.0, 0.0), (len(column.layers), 1))
    for cluster in clusters(column, drained_top, drained_bottom):
        layers = column.layers[cluster.first : cluster.end]
        _check_coefficients(layers, drains)
        if cluster.drained_top or cluster.drained_bottom:
            excess = 1 - _vertical_degrees(layers, times, cluster)
        else:
            _check_reached(layers, drains)
            excess = np.ones((len(layers), len(times)))
        if drains is not None:
            flowing = np.minimum(times, times + load_time - drains.start)
            excess *= 1 - np.array([drains.degree(layer, flowing) for layer in layers])
        degrees[cluster.first : cluster.end] = 1 - excess
    return degrees


def _vertical_degrees(layers: Sequence[Layer], times: Floats, cluster: Cluster) -> Floats:
    spans = [
        layer.thickness / math.sqrt(layer.material.conductivity.vertical_coefficient)
        for layer in layers
    ]
    borders = np.concatenate([[0.0], np.cumsum(spans)])
    if not cluster.drained_top:
        borders = borders[-1] - borders[::-1]
    mirrored = not (cluster.drained_top and cluster.drained_bottom)
    length = borders[-1] * (2 if mirrored else 1)
    means = np.array(
        [mean_degree(times, length, upper, lower) for upper, lower in itertools.pairwise(borders)]
    )
    return means if cluster.drained_top else means[::-1]


def _check_coefficients(layers: Sequence[Layer], drains: Drains | None) -> None:
    for layer in layers:
        material = layer.material
        if material.conductivity.cv <= 0:
            raise WorkerError(
                f"The material {material.name} needs a coefficient of consolidation greater than "
                "zero."
            )
        if drains is not None and material.conductivity.horizontal_factor <= 0:
            raise WorkerError(
                f"The material {material.name} has drains and needs a ratio of horizontal to "
                "vertical permeability greater than zero."
            )


def _check_reached(layers: Sequence[Layer], drains: Drains | None) -> None:
    """Refuses a layer whose water leaves through no side and no drain."""
    for layer in layers:
        if drains is None or drains.reach(layer) == 0:
            raise WorkerError(
                f"The layer of {layer.material.name} at {layer.top:g} m can drain neither at its "
                "top nor at its bottom, so that it never consolidates."
            )
