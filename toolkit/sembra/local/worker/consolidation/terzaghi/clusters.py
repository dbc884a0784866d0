"""Clusters: neighbouring layers that hold back their water, between drained boundaries.

With depths measured in h / sqrt(c_v) a cluster is one homogeneous layer of unit c_v.
"""

from collections.abc import Iterator, Sequence
from dataclasses import dataclass

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.failures import LackError
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.mesh import Mesh


@dataclass(frozen=True)
class Cluster:
    """Layers from `first` up to but not including `end`, with drainage at top and bottom.

    Args:
        first: Position of the uppermost layer in the column.
        end: Position of the layer below the lowermost.
        drained_top: Whether water leaves at the top.
        drained_bottom: Whether water leaves at the bottom.
        heights: Height of each layer between its nodes, in metres.
        thicknesses: Thickness of each layer between its borders, in metres.
        coefficients: Coefficient of consolidation of each layer, in m²/day.
    """

    first: int
    end: int
    drained_top: bool
    drained_bottom: bool
    heights: Floats
    thicknesses: Floats
    coefficients: Floats

    @property
    def height(self) -> float:
        """Height H, in metres."""
        return float(self.heights.sum())

    @property
    def spans(self) -> Floats:
        """H / sqrt(c_v) of each layer, in the square root of days."""
        spans: Floats = self.heights / np.sqrt(self.coefficients)
        return spans

    @property
    def borders(self) -> Floats:
        """Depths of the borders of the layers in h / sqrt(c_v), in parts of that of the lowest.

        The length of the cluster begins at the topmost node, and these at the surface.
        """
        depths = np.concatenate([[0.0], np.cumsum(self.thicknesses / np.sqrt(self.coefficients))])
        borders: Floats = depths / depths[-1]
        return borders

    @property
    def sides(self) -> int:
        """How often the cluster and its mirror images stand between drained sides: 1 or 2.

        A cluster that is drained at no side counts like one that is drained at one.
        """
        return 1 if self.drained_top and self.drained_bottom else 2

    @property
    def length(self) -> float:
        """L, the distance between drained sides: the sum of the spans, doubled for one side."""
        return float(self.spans.sum()) * self.sides

    @property
    def coefficient(self) -> float:
        """c_v of the homogeneous layer of the same height and span, in m²/day."""
        return float((self.height / self.spans.sum()) ** 2)


def find_clusters(
    column: Column, mesh: Mesh, drained_top: bool, drained_bottom: bool
) -> Iterator[Cluster]:
    """Yield the clusters of undrained layers of a column, from top to bottom.

    Args:
        column: The column.
        mesh: Its mesh, whose elements have the heights that count.
        drained_top: Whether water leaves through the surface.
        drained_bottom: Whether water leaves through the bottom of the column.

    Raises:
        WorkerError: A layer has no coefficient of consolidation; the message names all materials.
    """
    drained = [layer.material.drained for layer in column.layers]
    heights = np.bincount(mesh.element_layers, mesh.thicknesses, len(drained))
    coefficients = _coefficients(column, drained)
    first = 0
    while first < len(drained):
        if drained[first]:
            first += 1
            continue
        end = first
        while end < len(drained) and not drained[end]:
            end += 1
        yield Cluster(
            first,
            end,
            first > 0 or drained_top,
            end < len(drained) or drained_bottom,
            heights[first:end],
            np.array([layer.thickness for layer in column.layers[first:end]]),
            coefficients[first:end],
        )
        first = end


def _coefficients(column: Column, drained: Sequence[bool]) -> Floats:
    """Return the coefficient of consolidation of each layer; drained ones need none."""
    flows = [layer.material.conductivity for layer in column.layers]
    without = dict.fromkeys(
        layer.material.name
        for layer, one in zip(column.layers, drained, strict=True)
        if not one and layer.material.conductivity.cv <= 0
    )
    if without:
        raise LackError([*without], "a coefficient of consolidation greater than zero")
    return np.array([flow.vertical_coefficient for flow in flows])
