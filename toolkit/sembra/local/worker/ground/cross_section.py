"""A cross-section, and the columns that verticals cut out of it."""

from dataclasses import dataclass, replace
from typing import ClassVar

from sembra.local.worker.failures import WorkerError
from sembra.local.worker.ground.column import Column, Layer
from sembra.local.worker.ground.imaginary_surface import ImaginarySurface
from sembra.local.worker.ground.material import Material
from sembra.local.worker.ground.polyline import Polyline

_THINNEST = 1e-4
_FAR = 1e6


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
        """Return the column below a vertical at x."""
        return replace(self.ground, x=x, z=z)


@dataclass(frozen=True)
class CrossSection:
    """Layers from top to bottom, the phreatic line, and all pl-lines.

    Below an imaginary surface, if there is one, the soil above it spreads its weight.
    """

    layers: tuple[LayerBetween, ...]
    phreatic_line: Polyline
    pl_lines: tuple[Polyline, ...] = ()
    imaginary_surface: ImaginarySurface | None = None

    @property
    def surface(self) -> Polyline:
        """The surface."""
        return self.layers[0].top

    def column(self, x: float, z: float) -> Column:
        """Return the column below the surface at x.

        Layers that have no thickness at x are left out.

        Raises:
            WorkerError: `x` lies outside the geometry, layers overlap, or a pore pressure has
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
        above = self.imaginary_surface.at(x) if self.imaginary_surface else None
        return Column(x, z, tuple(layers), phreatic_level, piezometric_levels, above)


def _endless(level: float) -> Polyline:
    return Polyline(((-_FAR, level), (_FAR, level)))


def _heads(
    layers: tuple[LayerBetween, ...], x: float, phreatic_level: float
) -> list[tuple[float, float]]:
    """Return the piezometric levels at top and bottom of each layer.

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
    """Return the height of water at a side, linear in level between the nearest known sides.

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
