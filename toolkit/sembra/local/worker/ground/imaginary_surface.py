"""An imaginary surface: soil above it acts on the ground below like a load.

Soil of limited width, such as an old embankment, doesn't press the ground below it with all of its
weight: a part goes to the ground beside it. Cut into columns of uniform pressure, it spreads like
a strip load.
"""

from collections.abc import Sequence
from dataclasses import dataclass
from typing import Protocol

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.ground.material import Material
from sembra.local.worker.ground.polyline import Polyline
from sembra.local.worker.spreading.columns import cut
from sembra.local.worker.spreading.distribution import Spreading
from sembra.local.worker.spreading.strips import Strips


class LayerAbove(Protocol):
    """A layer above the imaginary surface."""

    @property
    def top(self) -> Polyline:
        """Its upper boundary."""

    @property
    def bottom(self) -> Polyline:
        """Its lower boundary."""

    @property
    def material(self) -> Material:
        """What it consists of."""


@dataclass(frozen=True)
class SoilAbove:
    """The soil above an imaginary surface, seen from the vertical at x where that has a level.

    `pressures` in kPa are those of its columns, less what water carries.
    """

    x: float
    level: float
    strips: Strips
    pressures: Floats

    def stress(self, levels: Floats) -> Floats:
        """Return the effective stress by it at levels below the imaginary surface, in kPa."""
        return self.strips.shares(self.x, levels) @ self.pressures


@dataclass(frozen=True)
class ImaginarySurface:
    """A line through the ground, and the columns of soil above it."""

    line: Polyline
    strips: Strips
    pressures: Floats

    def at(self, x: float) -> SoilAbove:
        """Return what stands above it as a vertical sees it."""
        return SoilAbove(x, self.line.level(x), self.strips, self.pressures)


def make_imaginary_surface(
    line: Polyline,
    above: Sequence[LayerAbove],
    phreatic_line: Polyline,
    spreading: Spreading,
    water_unit_weight: float,
) -> ImaginarySurface:
    """Return the imaginary surface along a line.

    Args:
        line: The line.
        above: The layers above it.
        phreatic_line: Soil below it weighs less by the water that it displaces.
        spreading: How stress spreads, and the width of the columns.
        water_unit_weight: Unit weight of water, in kN/m³.

    Raises:
        WorkerError: There would be too many columns.
    """
    lines = [line, *(layer.top for layer in above)]
    places = np.unique([x for one in lines for x, _ in one.points])
    places = places[(line.start <= places) & (places <= line.end)]
    width = spreading.imaginary_surface_width
    left, right = cut(places, width, "The soil above the imaginary surface")
    middles = (left + right) / 2
    pressures = np.zeros_like(middles)
    water = phreatic_line.levels(middles)
    for layer in above:
        top, bottom = layer.top.levels(middles), layer.bottom.levels(middles)
        height = np.maximum(top - bottom, 0.0)
        wet = np.clip(water - bottom, 0.0, height)
        pressures += layer.material.unit_weight_dry * (height - wet)
        pressures += (layer.material.unit_weight_wet - water_unit_weight) * wet
    base = line.levels(middles)
    none = np.zeros_like(base)
    strips = Strips(left, right, base, none, none, spreading.distribution)
    return ImaginarySurface(line, strips, pressures)
