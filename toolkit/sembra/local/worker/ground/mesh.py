"""Depths at which a column is calculated, and the elements between them.

Every layer has a node just below its top, at its middle, at its bottom and at the phreatic level.
Between these, nodes stand 0.1 m apart in the first metre below the surface and 1 m apart below
it, in such a way that the last step is thicker than half a metre.
"""

import itertools
import math
from collections.abc import Iterator
from dataclasses import dataclass

import numpy as np
from numpy.typing import NDArray

from sembra.local.worker.arrays import Floats
from sembra.local.worker.errors import WorkerError
from sembra.local.worker.ground.column import Column

TOP_OFFSET = 1e-5
_FINE_STEP = 0.1
_FINE_COUNT = 10
_COARSE_STEP = 1.0
_THINNEST_LAST_STEP = 0.5
_TOLERANCE = 1e-9
_DEEPEST = 5000.0


@dataclass(frozen=True)
class Mesh:
    """Nodes from top to bottom, and the elements between neighbouring nodes.

    `node_layers` and `element_layers` are positions in the column's layers. The thin element
    between the bottom node of a layer and the top node of the next belongs to the lower one.
    """

    levels: Floats
    node_layers: NDArray[np.intp]

    @property
    def element_layers(self) -> NDArray[np.intp]:
        """Layer of each element."""
        return self.node_layers[1:]

    @property
    def thicknesses(self) -> Floats:
        """Height of each element, in metres."""
        return self.levels[:-1] - self.levels[1:]


def make_mesh(column: Column) -> Mesh:
    """The mesh of a column.

    Raises:
        WorkerError: a layer is too thin to hold its nodes, or the column is too deep.
    """
    levels: list[float] = []
    layers: list[int] = []
    if column.surface - column.layers[-1].bottom > _DEEPEST:
        raise WorkerError(f"The worker calculates to a depth of {_DEEPEST:g} m and no deeper.")
    for index, layer in enumerate(column.layers):
        if layer.thickness < 10 * TOP_OFFSET:
            raise WorkerError(
                f"The layer of {layer.material.name} at {layer.top:g} m is too thin to calculate."
            )
        marks = [layer.top, (layer.top + layer.bottom) / 2, layer.bottom]
        if layer.bottom < column.phreatic_level < layer.top:
            marks.append(column.phreatic_level)
        marks = _without_repeats(sorted(marks, reverse=True))
        nodes = [layer.top - TOP_OFFSET]
        for upper, lower in itertools.pairwise(marks):
            nodes.extend(_between(upper, lower, column.surface))
            nodes.append(lower)
        levels.extend(nodes)
        layers.extend([index] * len(nodes))
    return Mesh(np.array(levels), np.array(layers, dtype=np.intp))


def _without_repeats(levels: list[float]) -> list[float]:
    kept = levels[:1]
    for level in levels[1:]:
        if kept[-1] - level > 2 * TOP_OFFSET:
            kept.append(level)
    kept[-1] = levels[-1]
    return kept


def _between(upper: float, lower: float, surface: float) -> Iterator[float]:
    """Levels strictly between two marks, from top to bottom."""
    start = upper
    for k in range(1, _FINE_COUNT + 1):
        level = surface - k * _FINE_STEP
        if lower + _TOLERANCE < level < upper - _TOLERANCE:
            yield level
            start = level
    if start - lower < _FINE_STEP + _TOLERANCE and start > surface - _FINE_COUNT * _FINE_STEP:
        return
    length = start - lower
    count = math.ceil(length / _COARSE_STEP - _TOLERANCE) - 1
    missing = _THINNEST_LAST_STEP - (length - count * _COARSE_STEP)
    shift = 0.0
    if count > 0 and missing > -_TOLERANCE:
        shift = _FINE_STEP * (math.floor(missing / _FINE_STEP + 1e-6) + 1)
    for k in range(1, count + 1):
        yield start - k * _COARSE_STEP + shift
