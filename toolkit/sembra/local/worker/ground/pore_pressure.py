"""Pore pressure in a column before the ground consolidates.

At the top and bottom of a layer the pressure is that of the layer's piezometric levels there, unit
weight times (head - level), and between them it runs linearly. A level below its side gives a
suction; it takes part in this, and only what comes out is cut off at zero. There is no pressure
above the phreatic line: where a layer rises above it with a suction at its top, the pressure runs
linearly from that of the upper level at the line, which is none if the level is the line itself.
"""

import numpy as np
from numpy.typing import NDArray

from sembra.local.worker.arrays import Floats
from sembra.local.worker.ground.column import Column
from sembra.local.worker.tolerances import LENGTH


def pore_pressures_at(
    column: Column, levels: Floats, water_unit_weight: float, settlements: Floats | float = 0.0
) -> Floats:
    """Return the pore pressure at some levels of a column, in kPa.

    A level on the border of two layers belongs to the upper one. A point that settles is pressed
    by so much more water as it comes to lie deeper below the phreatic line.

    Args:
        column: The column.
        levels: Levels in the column, before settlement.
        water_unit_weight: Unit weight of water, in kN/m³.
        settlements: Settlement of the points, in metres.
    """
    dry = np.maximum(levels - column.phreatic_level, 0.0)
    deeper = np.where(dry > 0, np.maximum(settlements - dry, 0.0), settlements)
    heights = np.maximum(_heights_of_water(column, levels) + deeper, 0.0)
    pressures: Floats = water_unit_weight * heights
    return pressures


def layers_at(column: Column, levels: Floats) -> NDArray[np.intp]:
    """Return the position in the column's layers of the layer that each level lies in."""
    bottoms = np.array([layer.bottom for layer in column.layers])
    found = np.searchsorted(-bottoms, -levels - LENGTH)
    return np.minimum(found, len(bottoms) - 1)


def _heights_of_water(column: Column, levels: Floats) -> Floats:
    """Return pressure over unit weight of water at some levels."""
    sides = [
        (layer.top, layer.bottom, layer.head_top, layer.head_bottom) for layer in column.layers
    ]
    top, bottom, head_top, head_bottom = np.array(sides)[layers_at(column, levels)].T
    upper, lower = head_top - top, head_bottom - bottom
    line = column.phreatic_level
    crossed = (upper < 0) & (bottom < line) & (line < top)
    start = np.where(crossed, line, top)
    upper = np.where(crossed, head_top - line, upper)
    height = upper + (lower - upper) * (start - levels) / (start - bottom)
    return np.where(levels > line, 0.0, np.maximum(height, 0.0))
