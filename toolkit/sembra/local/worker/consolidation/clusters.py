"""Clusters: neighbouring layers that hold back their water, between drained boundaries."""

from collections.abc import Iterator
from dataclasses import dataclass

from sembra.local.worker.ground.column import Column


@dataclass(frozen=True)
class Cluster:
    """Layers from `first` up to but not including `end`, with drainage at top and bottom."""

    first: int
    end: int
    drained_top: bool
    drained_bottom: bool


def clusters(column: Column, drained_top: bool, drained_bottom: bool) -> Iterator[Cluster]:
    """Yield the clusters of undrained layers of a column, from top to bottom.

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
