"""Horizontal flow of water to vertical drains, in the steady state under equal vertical strain.

What flows to the drain per unit of volume and time is, in parts of c_h (u - w) m_v, with u the mean
pore pressure in the soil and w the pressure in the drain,

    strips, columns   8 / (D² F),   F = n² / (n² - 1) ln n - (3 n² - 1) / (4 n²),   n = D / d
    sand walls        12 / (B - d)²

for drains of diameter d that each serve a cylinder of diameter D (Barron 1948, with neither smear
nor resistance), and for walls of thickness d at centre distances B: between two walls the pressure
is a parabola, whose mean is two thirds of its height. A strip counts as the round drain of its
circumference, d = 2 (w + t) / pi (Hansbo 1981).
"""

import math
from dataclasses import dataclass
from typing import Protocol

_WIDEST = 0.99


class HorizontalFlow(Protocol):
    """How water flows to drains at equal distances."""

    @property
    def distance(self) -> float:
        """Centre-to-centre distance of the drains, in metres."""

    def rate(self, distance: float) -> float:
        """Return the flow at a centre-to-centre distance in metres, as above, in 1/m²."""


@dataclass(frozen=True)
class RadialFlow:
    """Flow to strips and columns.

    Args:
        distance: centre-to-centre distance of the drains, in metres.
        grid_factor: D in parts of that distance.
        drain_diameter: Diameter d of the drain, in metres.

    Raises:
        ValueError: The drain takes (almost) all of the cylinder.
    """

    distance: float
    grid_factor: float
    drain_diameter: float

    def __post_init__(self) -> None:
        if not self.drain_diameter < _WIDEST * self.grid_factor * self.distance:
            raise ValueError("the drains leave no soil between them")

    def rate(self, distance: float) -> float:
        """Return 8 / (D² F) for a centre-to-centre distance in metres."""
        influence = self.grid_factor * distance
        square = (influence / self.drain_diameter) ** 2
        factor = square / (square - 1) * math.log(square) / 2 - (3 * square - 1) / (4 * square)
        return 8 / (influence**2 * factor)


@dataclass(frozen=True)
class PlaneFlow:
    """Flow to the nearer of two parallel walls.

    Args:
        distance: centre-to-centre distance of the walls, in metres.
        thickness: Thickness of the walls, in metres.

    Raises:
        ValueError: The walls leave no soil between them.
    """

    distance: float
    thickness: float

    def __post_init__(self) -> None:
        if not self.thickness < self.distance:
            raise ValueError("the drains leave no soil between them")

    def rate(self, distance: float) -> float:
        """Return 12 / (B - d)² for a centre-to-centre distance in metres."""
        return 12 / (distance - self.thickness) ** 2


def strip_diameter(width: float, thickness: float) -> float:
    """Return the diameter of the round drain with the circumference of a strip.

    Args:
        width: Width of the strip, in metres.
        thickness: Thickness of the strip, in metres.
    """
    return 2 * (width + thickness) / math.pi
