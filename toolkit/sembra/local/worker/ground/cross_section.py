"""A cross-section, and the columns that verticals cut out of it."""

import itertools
from dataclasses import dataclass, replace
from typing import ClassVar

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.errors import WorkerError
from sembra.local.worker.ground.column import Column, Layer
from sembra.local.worker.ground.material import Material

_THINNEST = 1e-4
_FAR = 1e6


@dataclass(frozen=True)
class Polyline:
    """A line through points from left to right.

    Raises:
        ValueError: there are fewer than two points, or x decreases.
    """

    points: tuple[tuple[float, float], ...]

    def __post_init__(self) -> None:
        if len(self.points) < 2:
            raise ValueError("a line needs at least two points")
        if any(a[0] > b[0] for a, b in itertools.pairwise(self.points)):
            raise ValueError("a line should run from left to right")

    @property
    def start(self) -> float:
        """Where the line begins on the left."""
        return self.points[0][0]

    @property
    def end(self) -> float:
        """Where the line ends on the right."""
        return self.points[-1][0]

    def levels(self, x: Floats) -> Floats:
        """Return the levels at some places, those of the ends beyond them.

        At a vertical part of the line, that is the level of its last point.
        """
        places, levels = np.array(self.points).T
        found: Floats = np.interp(x, places, levels)
        return found

    def level(self, x: float) -> float:
        """The level at x; at a vertical part of the line, the level of its first point.

        Raises:
            WorkerError: the line has no point at x.
        """
        for (x1, y1), (x2, y2) in itertools.pairwise(self.points):
            if x1 <= x <= x2:
                return y1 if x1 == x2 else y1 + (y2 - y1) * (x - x1) / (x2 - x1)
        raise WorkerError(f"The vertical at x = {x:g} m lies outside the geometry.")

    def covers(self, x: float) -> bool:
        """Whether the line has a point at x."""
        return self.points[0][0] <= x <= self.points[-1][0]


@dataclass(frozen=True)
class LayerBetween:
    """A layer between two boundaries.

    The pore pressure at its top and bottom follows a piezometric level line, is absent, or is
    interpolated over the depth between the nearest known pressures above and below.
    """

    NO_PRESSURE: ClassVar[int] = 0
    INTERPOLATED: ClassVar[int] = 99

    top: Polyline
    bottom: Polyline
    material: Material
    head_top: Polyline | int
    head_bottom: Polyline | int


@dataclass(frozen=True)
class LevelGround:
    """Ground that is the same everywhere."""

    ground: Column

    @property
    def surface(self) -> Polyline:
        """The surface, which has no ends within reach."""
        return _endless(self.ground.surface)

    @property
    def phreatic_line(self) -> Polyline:
        """The phreatic line."""
        return _endless(self.ground.phreatic_level)

    def column(self, x: float, z: float) -> Column:
        """The column below a vertical at x."""
        return replace(self.ground, x=x, z=z)


@dataclass(frozen=True)
class Geometry2D:
    """Layers from top to bottom, the phreatic line, and all pl-lines."""

    layers: tuple[LayerBetween, ...]
    phreatic_line: Polyline
    pl_lines: tuple[Polyline, ...] = ()

    @property
    def surface(self) -> Polyline:
        """The surface."""
        return self.layers[0].top

    def column(self, x: float, z: float) -> Column:
        """The column below the surface at x.

        Layers that have no thickness at x are left out.

        Raises:
            WorkerError: x lies outside the geometry, layers overlap, or a pore pressure has
                nothing to be interpolated from.
        """
        phreatic_level = self.phreatic_line.level(x)
        heads = _heads(self.layers, x, phreatic_level)
        layers: list[Layer] = []
        for layer, (head_top, head_bottom) in zip(self.layers, heads, strict=True):
            top = layers[-1].bottom if layers else layer.top.level(x)
            bottom = layer.bottom.level(x)
            if top - bottom < -_THINNEST:
                raise WorkerError(
                    f"At x = {x:g} m the bottom of the layer of {layer.material.name} lies above "
                    "its top. Layers lie one on the other from bottom to top, and do not cross."
                )
            if top - bottom > _THINNEST:
                layers.append(Layer(top, bottom, layer.material, head_top, head_bottom))
        if not layers:
            raise WorkerError(f"There is no layer at x = {x:g} m.")
        piezometric_levels = tuple(line.level(x) for line in self.pl_lines if line.covers(x))
        return Column(x, z, tuple(layers), phreatic_level, piezometric_levels)


def _endless(level: float) -> Polyline:
    return Polyline(((-_FAR, level), (_FAR, level)))


def _heads(
    layers: tuple[LayerBetween, ...], x: float, phreatic_level: float
) -> list[tuple[float, float]]:
    """Piezometric levels at top and bottom of each layer.

    A side without pressure has the level of the side itself.
    """
    sides = [
        side
        for layer in layers
        for side in (
            (layer.top.level(x), layer.head_top),
            (layer.bottom.level(x), layer.head_bottom),
        )
    ]
    known = {
        index: 0.0 if isinstance(head, int) else head.level(x) - level
        for index, (level, head) in enumerate(sides)
        if head != LayerBetween.INTERPOLATED
    }
    levels = [level for level, _ in sides]
    heads = [
        level
        + (
            known[index]
            if index in known
            else _interpolated(index, levels, known, x, phreatic_level)
        )
        for index, level in enumerate(levels)
    ]
    return list(zip(heads[::2], heads[1::2], strict=True))


def _interpolated(
    index: int, levels: list[float], known: dict[int, float], x: float, phreatic_level: float
) -> float:
    """Height of water at a side, linear in level between the nearest known sides.

    Where there is a suction at the upper one, above the phreatic line, it is linear from the line.
    """
    above = [other for other in known if other < index]
    below = [other for other in known if other > index]
    if not above or not below:
        raise WorkerError(f"A pore pressure at x = {x:g} m has nothing to be interpolated from.")
    upper, lower = levels[above[-1]], levels[below[0]]
    start = known[above[-1]]
    if start < 0 and lower < phreatic_level < upper:
        upper, start = phreatic_level, 0.0
    if upper == lower:
        return start
    return start + (known[below[0]] - start) * (upper - levels[index]) / (upper - lower)
