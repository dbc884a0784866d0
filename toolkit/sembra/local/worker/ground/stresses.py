"""Vertical stresses in a column, in kPa.

Total stress is the weight of what lies above; effective stress is what the pore pressure leaves of
it (Terzaghi, 1925).
"""

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.mesh import Mesh
from sembra.local.worker.ground.pore_pressure import pore_pressures_at

LEAST_EFFECTIVE_STRESS = 0.001
"""What the soil keeps of effective stress, in kPa, where weight or water would leave it nothing."""


def soil_stress(column: Column, levels: Floats, water_unit_weight: float) -> Floats:
    """Return the total stress at some levels by soil and free water above them, without loads.

    Soil weighs its dry unit weight above the phreatic level and its wet unit weight below it;
    water that stands above the surface adds its weight. Below an imaginary surface it is the water
    above that surface, the stress by the soil above it, and the weight of the soil in between.
    """
    stress = _weight_above(column, levels, water_unit_weight)
    if column.soil_above is None:
        return stress
    surface = column.soil_above.level
    water = max(column.phreatic_level - surface, 0.0) * water_unit_weight
    between = stress - _weight_above(column, np.array(surface), water_unit_weight)
    return np.where(levels < surface, between + water + column.soil_above.stress(levels), stress)


def _weight_above(column: Column, levels: Floats, water_unit_weight: float) -> Floats:
    free_water = max(column.phreatic_level - column.surface, 0.0) * water_unit_weight
    stress = np.full_like(levels, free_water)
    for layer in column.layers:
        bottom = np.clip(levels, layer.bottom, layer.top)
        border = np.clip(column.phreatic_level, bottom, layer.top)
        stress += (layer.top - border) * layer.material.unit_weight_dry
        stress += (border - bottom) * layer.material.unit_weight_wet
    return stress


def soil_effective_stress(column: Column, levels: Floats, water_unit_weight: float) -> Floats:
    """Return the effective stress at some levels by the soil and its water, without loads."""
    return soil_stress(column, levels, water_unit_weight) - pore_pressures_at(
        column, levels, water_unit_weight
    )


def pore_pressures(
    column: Column, mesh: Mesh, water_unit_weight: float, settlements: Floats | None = None
) -> Floats:
    """Return the pore pressure at the nodes, after their settlements if these are given."""
    moved = 0.0 if settlements is None else settlements
    return pore_pressures_at(column, mesh.levels, water_unit_weight, moved)
