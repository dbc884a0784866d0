"""Vertical stresses in a column, in kPa.

Total stress is the weight of what lies above; pore pressure is hydrostatic below the piezometric
level; effective stress is their difference (Terzaghi, 1925).
"""

from collections.abc import Iterable

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.errors import WorkerError
from sembra.local.worker.ground.column import Column, Layer
from sembra.local.worker.ground.mesh import Mesh
from sembra.local.worker.loads.load import Load

_STRESS_TOLERANCE = 1e-6
_LEAST_EFFECTIVE_STRESS = 0.001


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
    height = top + (bottom - top) * (layer.top - level) / layer.thickness
    return (height + settlement) * water_unit_weight if height > 0 else 0.0


def load_stress(loads: Iterable[Load], x: float, levels: Floats) -> Floats:
    """Sum of the stresses by loads at x and some levels."""
    stress = np.zeros_like(levels)
    for load in loads:
        stress += load.stress(x, levels)
    return stress


def initial_effective_stress(
    column: Column, mesh: Mesh, loads: Iterable[Load], water_unit_weight: float
) -> Floats:
    """Effective stress at the nodes by soil, water and initial loads.

    Just below an unloaded surface it is next to nothing; there a least value takes its place, since
    the compression of the topmost element depends on its logarithm.

    Raises:
        WorkerError: the water carries more than the weight above it.
    """
    soil = [soil_stress(column, float(level), water_unit_weight) for level in mesh.levels]
    initial = [load for load in loads if load.is_initial]
    total = np.array(soil) + load_stress(initial, column.x, mesh.levels)
    effective = total - pore_pressures(column, mesh, water_unit_weight)
    check_not_negative(mesh, effective)
    return np.maximum(effective, _LEAST_EFFECTIVE_STRESS)


def check_not_negative(mesh: Mesh, effective: Floats) -> None:
    """Refuses effective stresses at the nodes below zero.

    Raises:
        WorkerError: there is one; the message names the level of the worst.
    """
    worst = int(np.argmin(effective))
    if effective[worst] < -_STRESS_TOLERANCE:
        raise WorkerError(
            f"The effective stress at {mesh.levels[worst]:.3f} m becomes {effective[worst]:.3f} "
            "kPa. Soil can't carry an effective stress below zero."
        )


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
    column: Column, loads: Iterable[Load], water_unit_weight: float
) -> Floats:
    """Initial effective stress in the middle of each layer."""
    middles = np.array([(layer.top + layer.bottom) / 2 for layer in column.layers])
    soil = [soil_stress(column, float(level), water_unit_weight) for level in middles]
    water = [
        pore_pressure(layer, float(level), water_unit_weight)
        for layer, level in zip(column.layers, middles, strict=True)
    ]
    initial = [load for load in loads if load.is_initial]
    stress: Floats = np.array(soil) - np.array(water) + load_stress(initial, column.x, middles)
    return stress
