"""Vertical stresses in a column, in kPa.

Total stress is the weight of what lies above; pore pressure is hydrostatic below the piezometric
level; effective stress is their difference (Terzaghi, 1925).
"""

from __future__ import annotations

from collections.abc import Iterable

import numpy as np

from .discretisation import Floats, Mesh
from .model import Column, Layer, UniformLoad

_LEVEL_TOLERANCE = 1e-9


def soil_stress(column: Column, level: float, water_unit_weight: float) -> float:
    """Total stress by the soil and the free water above a level, without loads.

    Soil weighs its dry unit weight above the phreatic level and its wet unit weight below it;
    water that stands above the surface adds its weight.
    """
    stress = max(column.phreatic_level - column.surface, 0.0) * water_unit_weight
    for layer in column.layers:
        bottom = max(layer.bottom, level)
        if bottom >= layer.top:
            break
        border = min(max(column.phreatic_level, bottom), layer.top)
        stress += (layer.top - border) * layer.material.unit_weight_dry
        stress += (border - bottom) * layer.material.unit_weight_wet
    return stress


def pore_pressure(
    layer: Layer, level: float, water_unit_weight: float, settlement: float = 0.0
) -> float:
    """Pore pressure at a level within a layer, after a settlement of that point.

    Between two piezometric levels, one for the top and one for the bottom of the layer, the
    pressure runs linearly. Above the piezometric level it is zero.
    """
    if layer.head_top == layer.head_bottom:
        return max(layer.head_top - level + settlement, 0.0) * water_unit_weight
    top = max(layer.head_top - layer.top, 0.0)
    bottom = max(layer.head_bottom - layer.bottom, 0.0)
    part = (layer.top - level) / layer.thickness
    return max(top + (bottom - top) * part + settlement, 0.0) * water_unit_weight


def load_stress(loads: Iterable[UniformLoad], levels: Floats) -> Floats:
    """Stress by uniform loads: each acts in full at and below its level and nowhere above it."""
    stress = np.zeros_like(levels)
    for load in loads:
        stress += np.where(levels <= load.level + _LEVEL_TOLERANCE, load.pressure, 0.0)
    return stress


def initial_total_stress(
    column: Column, mesh: Mesh, loads: Iterable[UniformLoad], water_unit_weight: float
) -> Floats:
    """Total stress at the nodes by soil, free water and initial loads."""
    soil = [soil_stress(column, float(level), water_unit_weight) for level in mesh.levels]
    initial = [load for load in loads if load.is_initial]
    return np.array(soil) + load_stress(initial, mesh.levels)


def pore_pressures(
    column: Column, mesh: Mesh, water_unit_weight: float, settlements: Floats | None = None
) -> Floats:
    """Pore pressure at the nodes, after their settlements if these are given."""
    moved = np.zeros_like(mesh.levels) if settlements is None else settlements
    return np.array(
        [
            pore_pressure(column.layers[layer], float(level), water_unit_weight, float(settlement))
            for layer, level, settlement in zip(mesh.node_layers, mesh.levels, moved, strict=True)
        ]
    )


def middle_effective_stress(
    column: Column, loads: Iterable[UniformLoad], water_unit_weight: float
) -> Floats:
    """Initial effective stress in the middle of each layer."""
    middles = np.array([(layer.top + layer.bottom) / 2 for layer in column.layers])
    soil = [soil_stress(column, float(level), water_unit_weight) for level in middles]
    water = [
        pore_pressure(layer, float(level), water_unit_weight)
        for layer, level in zip(column.layers, middles, strict=True)
    ]
    initial = [load for load in loads if load.is_initial]
    return np.array(soil) - np.array(water) + load_stress(initial, middles)
