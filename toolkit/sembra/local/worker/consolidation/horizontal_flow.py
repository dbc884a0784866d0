"""Horizontal flow of water to vertical drains."""

import math
from dataclasses import dataclass
from typing import Protocol

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.terzaghi_series import mean_degree

_WIDEST = 0.99


class HorizontalFlow(Protocol):
    """How water flows to drains at equal distances, with `coefficient` c_h in m²/day."""

    def degree(self, times: Floats, coefficient: float) -> Floats:
        """Degree of consolidation at times in days since the load; up to 0 it is 0."""

    def leakage(self, coefficient: float) -> float:
        """What flows to the drain in the steady state, per day and unit of storage.

        It is the factor by which the mean pressure in the soil above that in the drain is to be
        multiplied.
        """


@dataclass(frozen=True)
class RadialFlow:
    """Flow to a round drain in the middle of a cylinder, under equal vertical strain.

        U_h = 1 - exp(-8 c_h t / (D² F))                                Barron (1948)
        F = n² / (n² - 1) ln n - (3 n² - 1) / (4 n²)     with n = D / d

    There is neither smear nor resistance in the drain.

    Args:
        influence_diameter: diameter D of the cylinder, in metres.
        drain_diameter: diameter d of the drain, in metres.

    Raises:
        ValueError: the drain takes (almost) all of the cylinder.
    """

    influence_diameter: float
    drain_diameter: float

    def __post_init__(self) -> None:
        if not self.drain_diameter < _WIDEST * self.influence_diameter:
            raise ValueError("the drains leave no soil between them")

    @property
    def spacing_factor(self) -> float:
        """F of the ratio n of the two diameters."""
        square = (self.influence_diameter / self.drain_diameter) ** 2
        return square / (square - 1) * math.log(square) / 2 - (3 * square - 1) / (4 * square)

    def degree(self, times: Floats, coefficient: float) -> Floats:
        """Degree of consolidation at times since the load."""
        degree: Floats = -np.expm1(-self.leakage(coefficient) * np.maximum(times, 0.0))
        return degree

    def leakage(self, coefficient: float) -> float:
        """8 c_h / (D² F): under equal strain the flow is always that of the steady state."""
        return 8 * coefficient / (self.influence_diameter**2 * self.spacing_factor)


@dataclass(frozen=True)
class PlaneFlow:
    """Flow to the nearer of two parallel walls: Terzaghi's theory laid on its side.

    Args:
        clear_spacing: thickness of the soil between two walls, in metres, of which the drainage
            path is a half.

    Raises:
        ValueError: the walls leave no soil between them.
    """

    clear_spacing: float

    def __post_init__(self) -> None:
        if not self.clear_spacing > 0:
            raise ValueError("the drains leave no soil between them")

    def degree(self, times: Floats, coefficient: float) -> Floats:
        """Degree of consolidation at times since the load."""
        length = self.clear_spacing / math.sqrt(coefficient)
        return mean_degree(times, length, 0.0, length)

    def leakage(self, coefficient: float) -> float:
        """12 c_h / L²: the pressure between the walls is a parabola, whose mean is two thirds."""
        return 12 * coefficient / self.clear_spacing**2


def strip_diameter(width: float, thickness: float) -> float:
    """Diameter of the round drain with the circumference of a strip: 2 (w + t) / pi (Hansbo 1981).

    Args:
        width: width of the strip, in metres.
        thickness: thickness of the strip, in metres.
    """
    return 2 * (width + thickness) / math.pi
