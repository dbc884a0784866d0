"""Vertical drains: where they stand, how water flows to them, and the water in them."""

from dataclasses import dataclass

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.horizontal_flow import HorizontalFlow
from sembra.local.worker.ground.column import Layer


@dataclass(frozen=True)
class DrainWater:
    """The water in the drains from a time in days on.

    Args:
        time: when it comes to this.
        level: water level in the drains, in metres.
        underpressure: what the pressure below that level is less than hydrostatic, in kPa.
    """

    time: float
    level: float
    underpressure: float = 0.0

    def pressure(self, levels: Floats, water_unit_weight: float) -> Floats:
        """Pressure in the drains at some levels, in kPa; above the water there is none."""
        depth = self.level - levels
        return np.where(depth > 0, depth * water_unit_weight - self.underpressure, 0.0)


@dataclass(frozen=True)
class Drains:
    """Equal drains at equal distances, from the surface down.

    Args:
        left: x of the leftmost drain, in metres.
        right: x of the rightmost drain, in metres.
        bottom: level of their lower end, in metres.
        flow: the flow of water to them.
        water: the water in them, in the order of time, at least once; they drain from the first
            time on.
    """

    left: float
    right: float
    bottom: float
    flow: HorizontalFlow
    water: tuple[DrainWater, ...]

    @property
    def start(self) -> float:
        """Start of drainage, in days."""
        return self.water[0].time

    def surround(self, x: float) -> bool:
        """Whether a vertical at x stands among the drains, the outermost ones included."""
        return self.left <= x <= self.right

    def reach(self, layer: Layer) -> float:
        """The part of a layer's thickness that the drains go through, from 0 to 1."""
        return min(max((layer.top - self.bottom) / layer.thickness, 0.0), 1.0)

    def degree(self, layer: Layer, times: Floats) -> Floats:
        """Degree of consolidation of a layer by flow to the drains alone, its mean by thickness.

        Args:
            layer: a layer that consolidates.
            times: times since water began to flow, in days; up to 0 the degree is 0.
        """
        return self.reach(layer) * self.flow.degree(
            times, layer.material.conductivity.horizontal_coefficient
        )
