"""A cross-section, as the picture of it needs it."""

from collections.abc import Iterator, Sequence
from dataclasses import dataclass

import numpy as np
from numpy.typing import ArrayLike, NDArray

from sembra.core import Color
from sembra.local.pictures.load_step import LoadStep

ROW_OF_LOAD = 0.11
"""Height of a row of arrows, as a part of the height of the cross-section."""

Line = Sequence[tuple[float, float]]
"""Points of x and level [m] from left to right; two may stand above each other."""


@dataclass(frozen=True)
class Layer:
    """A layer between two lines, and its soil with unit weights dry and wet [kN/m³]."""

    top: Line
    bottom: Line
    material: str
    color: Color
    unit_weights: tuple[float, float]


@dataclass(frozen=True)
class Embankment:
    """A load by the weight of soil below a line, down to the surface or the loads before it.

    A time below zero [days] makes it an initial load. A temporary one has a time of removal.
    """

    name: str
    outline: Line
    time: float
    removal: float | None
    unit_weights: tuple[float, float]


@dataclass(frozen=True)
class DrainBand:
    """Where vertical drains stand: from one x to another, from the surface to a level [m].

    The spacing is that of the drains along x [m], the first at the left end.
    """

    label: str
    left: float
    right: float
    bottom: float
    spacing: float


@dataclass(frozen=True)
class CrossSection:
    """What stands in the picture.

    layers: from bottom to top, at least one.
    phreatic_line: the level of the free water; without points there is none.
    pl_lines: other lines of piezometric level by their label.
    verticals: x of each vertical [m], in the order of their numbers.
    loads: in the order in which they were created; each lies on those before it.
    uniform_loads: on the whole surface, in the order in which they were created.
    """

    layers: Sequence[Layer]
    phreatic_line: Line
    pl_lines: dict[str, Line]
    verticals: Sequence[float]
    loads: Sequence[Embankment] = ()
    drains: DrainBand | None = None
    datum: str = ""
    uniform_loads: Sequence[LoadStep] = ()

    @property
    def surface(self) -> Line:
        """The line along the top of the highest layer."""
        return self.layers[-1].top

    @property
    def limits(self) -> tuple[float, float]:
        """Left and right end of the geometry [m]."""
        return self.surface[0][0], self.surface[-1][0]

    @property
    def top(self) -> float:
        """Highest level of all lines [m]."""
        return max(level for line in self._lines() for _, level in line)

    @property
    def row(self) -> float:
        """Height of the arrows of a uniform load with the room around them [m]."""
        return ROW_OF_LOAD * (self.top - self._bottom)

    @property
    def extent(self) -> tuple[float, float]:
        """Lowest and highest level of what is drawn [m]."""
        return self._bottom, self.top + self.row * len(self.uniform_loads)

    def thickness(self, number: int, x: ArrayLike) -> NDArray[np.float64]:
        """Return how thick a load is at each x [m], by its place among the loads; 0 beside it."""
        ground = levels(self.surface, x)
        for load in self.loads[:number]:
            ground = np.fmax(ground, levels(load.outline, x))
        return np.nan_to_num(np.fmax(levels(self.loads[number].outline, x) - ground, 0.0))

    @property
    def _bottom(self) -> float:
        lowest = min(level for line in self._lines() for _, level in line)
        return lowest if self.drains is None else min(lowest, self.drains.bottom)

    def _lines(self) -> Iterator[Line]:
        for layer in self.layers:
            yield from (layer.top, layer.bottom)
        yield self.phreatic_line
        yield from self.pl_lines.values()
        yield from (load.outline for load in self.loads)


def levels(line: Line, x: ArrayLike) -> NDArray[np.float64]:
    """Return the level of a line at each x, and NaN beside it."""
    along, up = np.array(line, dtype=np.float64).T
    places = np.asarray(x, dtype=np.float64)
    return np.asarray(np.interp(places, along, up, left=np.nan, right=np.nan), dtype=np.float64)


def between(line: Line, left: float, right: float) -> list[tuple[float, float]]:
    """Return the part of a line from one x to another, both inside it."""
    ends = levels(line, [left, right])
    inside = [(x, level) for x, level in line if left < x < right]
    return [(left, float(ends[0])), *inside, (right, float(ends[1]))]
