"""Degree of consolidation by Terzaghi's one-dimensional theory (Terzaghi and Fröhlich, 1936).

Neighbouring layers that hold back their water form a cluster between drained boundaries. With
depths measured in h / sqrt(cv) the cluster is one homogeneous layer of unit cv, and the excess
pressure after a sudden uniform load is known as a Fourier series and, for early times, as a
series of images.
"""

from __future__ import annotations

import itertools
import math
from collections.abc import Iterator
from dataclasses import dataclass

import numpy as np

from .errors import WorkerError
from .model import Column, Floats

_SECONDS_PER_DAY = 86400.0
_EARLY = 0.05
_TERMS = 25
_IMAGES = 4
_erfc = np.vectorize(math.erfc, otypes=[np.float64])


@dataclass(frozen=True)
class Cluster:
    """Layers from `first` up to but not including `end`, with drainage at top and bottom."""

    first: int
    end: int
    drained_top: bool
    drained_bottom: bool


def clusters(column: Column, drained_top: bool, drained_bottom: bool) -> Iterator[Cluster]:
    """The clusters of undrained layers of a column, from top to bottom.

    Args:
        column: the column.
        drained_top: whether water leaves through the surface.
        drained_bottom: whether water leaves through the bottom of the column.
    """
    drained = [layer.material.drained for layer in column.layers]
    first = 0
    while first < len(drained):
        if drained[first]:
            first += 1
            continue
        end = first
        while end < len(drained) and not drained[end]:
            end += 1
        yield Cluster(first, end, first > 0 or drained_top, end < len(drained) or drained_bottom)
        first = end


def degrees_of_consolidation(
    column: Column, times: Floats, drained_top: bool, drained_bottom: bool
) -> Floats:
    """Mean degree of consolidation of every layer, shape (layers, times).

    Args:
        column: the column.
        times: times since the load, in days; up to 0 nothing has consolidated.
        drained_top: whether water leaves through the surface.
        drained_bottom: whether water leaves through the bottom of the column.

    Raises:
        WorkerError: a layer has no coefficient of consolidation, or water can leave a cluster at
            neither side.
    """
    degrees = np.tile(np.where(times > 0, 1.0, 0.0), (len(column.layers), 1))
    for cluster in clusters(column, drained_top, drained_bottom):
        layers = column.layers[cluster.first : cluster.end]
        for layer in layers:
            if layer.material.cv <= 0:
                raise WorkerError(
                    f"The material {layer.material.name} needs a coefficient of consolidation "
                    "greater than zero."
                )
        if not (cluster.drained_top or cluster.drained_bottom):
            raise WorkerError(
                f"The layer of {layers[0].material.name} at {layers[0].top:g} m can drain neither "
                "at its top nor at its bottom, so that it never consolidates."
            )
        spans = [
            layer.thickness / math.sqrt(layer.material.cv * _SECONDS_PER_DAY) for layer in layers
        ]
        borders = np.concatenate([[0.0], np.cumsum(spans)])
        if not cluster.drained_top:
            borders = borders[-1] - borders[::-1]
        mirrored = not (cluster.drained_top and cluster.drained_bottom)
        length = borders[-1] * (2 if mirrored else 1)
        means = [
            mean_degree(times, length, upper, lower) for upper, lower in itertools.pairwise(borders)
        ]
        degrees[cluster.first : cluster.end] = means if cluster.drained_top else means[::-1]
    return degrees


def mean_degree(times: Floats, length: float, upper: float, lower: float) -> Floats:
    """Mean degree of consolidation between two depths of a layer drained at both sides.

    Args:
        times: times since the load; up to 0 the degree is 0.
        length: thickness of the layer divided by sqrt(cv), the distance between drained sides.
        upper: depth of the part's top in the same measure.
        lower: depth of the part's bottom in the same measure.
    """
    degrees = np.zeros_like(times)
    factor = times / length**2
    early = (times > 0) & (factor < _EARLY)
    late = factor >= _EARLY
    degrees[early] = _by_images(factor[early], upper / length, lower / length)
    degrees[late] = 1 - _by_series(factor[late], upper / length, lower / length)
    return degrees


def _by_series(factor: Floats, upper: float, lower: float) -> Floats:
    """Mean excess pressure; relative depths, factor = cv t / length²."""
    wave = (2 * np.arange(_TERMS) + 1)[:, None] * math.pi
    shape = (np.cos(wave * upper) - np.cos(wave * lower)) * 4 / wave**2
    total: Floats = (shape * np.exp(-(wave**2) * factor)).sum(axis=0)
    return total / (lower - upper)


def _by_images(factor: Floats, upper: float, lower: float) -> Floats:
    """Mean degree of consolidation; relative depths, factor = cv t / length²."""
    width = 2 * np.sqrt(factor)
    total = np.zeros_like(factor)
    for n in range(_IMAGES):
        sign = 1 if n % 2 == 0 else -1
        from_top = _ierfc((n + upper) / width) - _ierfc((n + lower) / width)
        from_bottom = _ierfc((n + 1 - lower) / width) - _ierfc((n + 1 - upper) / width)
        total += sign * width * (from_top + from_bottom)
    return total / (lower - upper)


def _ierfc(x: Floats) -> Floats:
    """The repeated integral of erfc from x to infinity."""
    result: Floats = np.exp(-(x**2)) / math.sqrt(math.pi) - x * _erfc(x)
    return result
