"""The ground below one vertical."""

from dataclasses import dataclass

from sembra.local.worker.ground.imaginary_surface import SoilAbove
from sembra.local.worker.ground.material import Material


@dataclass(frozen=True)
class Layer:
    """A layer of one column, with the piezometric levels that hold at its top and bottom."""

    top: float
    bottom: float
    material: Material
    head_top: float
    head_bottom: float

    @property
    def thickness(self) -> float:
        """Distance from top to bottom."""
        return self.top - self.bottom


@dataclass(frozen=True)
class Column:
    """The ground below one vertical: layers from top to bottom without gaps.

    `piezometric_levels` are those of all pl-lines here, whichever layers they hold for.
    `soil_above` is what stands above an imaginary surface, if there is one.
    """

    x: float
    z: float
    layers: tuple[Layer, ...]
    phreatic_level: float
    piezometric_levels: tuple[float, ...] = ()
    soil_above: SoilAbove | None = None

    @property
    def surface(self) -> float:
        """Level of the ground surface."""
        return self.layers[0].top
