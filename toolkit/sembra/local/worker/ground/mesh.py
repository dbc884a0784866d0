"""Depths at which a column is calculated, and the elements between them.

A column has fixed levels: every layer's top (just below it), middle and bottom, the phreatic level
and the other piezometric ones, and steps of 0.1 m in the first metre below the surface and around
an imaginary surface. Between neighbouring fixed levels nodes stand 1 m apart, and what is odd is
shared by the first and the last element (`_first_step`); between levels more than 12 m apart,
nodes stand 2 m apart from a depth of 18 m on. `make verify` holds them against published ones.
"""

import itertools
import math
from collections.abc import Iterator, Sequence
from dataclasses import dataclass

import numpy as np
from numpy.typing import NDArray

from sembra.local.worker.arrays import Floats
from sembra.local.worker.failures import WorkerError
from sembra.local.worker.ground.column import Column

TOP_OFFSET = 1e-5
_FINE_STEP = 0.1
_FINE_BELOW_SURFACE = range(1, 11)
_FINE_AROUND_IMAGINARY_SURFACE = range(-4, 6)
_STEP = 1.0
_MOST_STEPS = 12
_LONG_STEP = 2.0
_LONG_STEPS_FROM = 18.0
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

    def means(self, at_nodes: Floats) -> Floats:
        """Return the mean of the values at the two ends of each element."""
        means: Floats = (at_nodes[:-1] + at_nodes[1:]) / 2
        return means

    def settlements(self, strain: Floats) -> Floats:
        """Return the settlement of the nodes by the strain of the elements, along the last axis."""
        compressions = strain * self.thicknesses
        none = np.zeros_like(compressions[..., :1])
        from_below = np.cumsum(compressions[..., ::-1], axis=-1)[..., ::-1]
        return np.concatenate([from_below, none], axis=-1)


def make_mesh(column: Column) -> Mesh:
    """Return the mesh of a column.

    Raises:
        WorkerError: A layer is too thin to hold its nodes, or the column is too deep.
    """
    if column.surface - column.layers[-1].bottom > _DEEPEST:
        raise WorkerError(
            f"The worker calculates to a depth of {_DEEPEST:g} m, and at x = {column.x:g} m the "
            "ground is deeper."
        )
    everywhere = _fixed_levels(column)
    levels: list[float] = []
    layers: list[int] = []
    for index, layer in enumerate(column.layers):
        if layer.thickness < 10 * TOP_OFFSET:
            raise WorkerError(
                f"At x = {column.x:g} m the layer of {layer.material.name} at {layer.top:g} m is "
                "too thin to calculate."
            )
        inside = [level for level in everywhere if layer.bottom < level < layer.top]
        middle = (layer.top + layer.bottom) / 2
        fixed = sorted([layer.top, middle, layer.bottom, *inside], reverse=True)
        fixed = _without_repeats(fixed)
        fixed[0] -= TOP_OFFSET
        nodes = fixed[:1]
        for upper, lower in itertools.pairwise(fixed):
            nodes.extend(_between(upper, lower, column.surface))
            nodes.append(lower)
        levels.extend(nodes)
        layers.extend([index] * len(nodes))
    return Mesh(np.array(levels), np.array(layers, dtype=np.intp))


def _fixed_levels(column: Column) -> list[float]:
    """Return the fixed levels that don't depend on the layers."""
    levels = [column.phreatic_level, *column.piezometric_levels]
    levels += [column.surface - k * _FINE_STEP for k in _FINE_BELOW_SURFACE]
    if column.soil_above:
        middle = column.soil_above.level
        levels += [middle - k * _FINE_STEP for k in _FINE_AROUND_IMAGINARY_SURFACE]
    return levels


def _without_repeats(levels: Sequence[float]) -> list[float]:
    kept = [levels[0]]
    for level in levels[1:]:
        if kept[-1] - level > 2 * TOP_OFFSET:
            kept.append(level)
    kept[-1] = levels[-1]
    return kept


def _between(upper: float, lower: float, surface: float) -> Iterator[float]:
    """Return the levels strictly between two fixed ones, from top to bottom."""
    length = upper - lower
    step = _STEP
    if _count(length, step) > _MOST_STEPS:
        step = _LONG_STEP
    first = _first_step(length, step)
    if first >= length - _TOLERANCE:
        return
    if first > step + _TOLERANCE:
        yield _rounded(upper - first / 2)
    level = upper - first
    while level > lower + _TOLERANCE:
        yield level
        if step == _LONG_STEP and surface - level < _LONG_STEPS_FROM:
            level -= _STEP
        else:
            level -= step


def _first_step(length: float, step: float) -> float:
    """Return the height of the first element; full steps follow, and what remains is the last one.

    It is what a number of equal steps leaves over, when these are a tenth of a metre or several
    shorter than a full step, such that it comes out as long as possible as those. That full steps
    follow nevertheless is how D-Settlement does it.
    """
    count = _count(length, step)
    tenths = range(round(step / _FINE_STEP))
    shortened = [step - k * _FINE_STEP for k in tenths]
    left_over = [length - (count - 1) * each for each in shortened]
    unlike = [abs(rest - each) for rest, each in zip(left_over, shortened, strict=True)]
    least = min(unlike)
    return next(
        rest
        for rest, difference in zip(left_over, unlike, strict=True)
        if difference <= least + _TOLERANCE
    )


def _count(length: float, step: float) -> int:
    return math.ceil(length / step - 1e-6)


def _rounded(level: float) -> float:
    """Return a level in whole tenths of a metre, upwards where it lies halfway."""
    return math.floor(level / _FINE_STEP + 0.5 + 1e-6) * _FINE_STEP
