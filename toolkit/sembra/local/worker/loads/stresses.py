"""Effective stress in a column below loads, in kPa, and what makes it impossible.

Soil can't carry an effective stress below zero, and has no strain at zero.
"""

from collections.abc import Iterable, Sequence

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.failures import LocalError, named
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.mesh import Mesh
from sembra.local.worker.ground.pore_pressure import layers_at
from sembra.local.worker.ground.stresses import LEAST_EFFECTIVE_STRESS, soil_effective_stress
from sembra.local.worker.loads.load import Load

_TOLERANCE = 1e-6


def load_stress(loads: Iterable[Load], column: Column, levels: Floats) -> Floats:
    """Return the sum of the stresses by loads at some levels of a column."""
    stress = np.zeros_like(levels)
    for load in loads:
        stress += load.stress(column.x, column.z, levels)
    return stress


def initial_effective_stress(
    column: Column, mesh: Mesh, loads: Iterable[Load], water_unit_weight: float
) -> Floats:
    """Return the effective stress at the nodes by soil, water and initial loads.

    Just below an unloaded surface it is next to nothing; there a least value takes its place, since
    the compression of the topmost element depends on its logarithm.

    Raises:
        WorkerError: An initial load brings it below zero, or the water carries more than the weight
            above it.
    """
    initial = [load for load in loads if load.is_initial]
    effective = soil_effective_stress(column, mesh.levels, water_unit_weight)
    effective += load_stress(initial, column, mesh.levels)
    check_not_negative(column, mesh, effective, initial)
    return np.maximum(effective, LEAST_EFFECTIVE_STRESS)


def middle_effective_stress(
    column: Column, loads: Iterable[Load], water_unit_weight: float
) -> Floats:
    """Return the initial effective stress in the middle of each layer."""
    middles = np.array([(layer.top + layer.bottom) / 2 for layer in column.layers])
    initial = [load for load in loads if load.is_initial]
    stress = soil_effective_stress(column, middles, water_unit_weight)
    stress += load_stress(initial, column, middles)
    return stress


def check_not_negative(
    column: Column, mesh: Mesh, effective: Floats, loads: Sequence[Load]
) -> None:
    """Refuse effective stresses at the nodes below zero.

    Args:
        column: The column.
        mesh: Its mesh.
        effective: The stresses.
        loads: The loads that are there.

    Raises:
        LocalError: There is one; the message names the loads that make it, and the worst place.
    """
    worst = int(np.argmin(effective))
    if effective[worst] < -_TOLERANCE:
        raise _too_low(column, mesh.levels[worst], float(effective[worst]), loads)


def check_positive(column: Column, mesh: Mesh, means: Floats, loads: Sequence[Load]) -> None:
    """Refuse elements without effective stress, for which no soil model has an answer.

    Args:
        column: The column.
        mesh: Its mesh.
        means: The mean stress of each element.
        loads: The loads that are there.

    Raises:
        LocalError: There is one; the message names the loads that make it, and the place.
    """
    worst = int(np.argmin(means))
    if not means[worst] > 0:
        raise _too_low(column, mesh.levels[worst + 1], float(means[worst]), loads)


def _too_low(column: Column, level: float, stress: float, loads: Sequence[Load]) -> LocalError:
    """Return the error of a stress that is zero or below at a level of a column."""
    at_level = np.array([level])
    material = column.layers[int(layers_at(column, at_level)[0])].material.name
    lifting: dict[str, float] = {}
    for load in loads:
        lifts = float(load.stress(column.x, column.z, at_level)[0])
        lifting[load.name] = lifting.get(load.name, 0.0) + lifts
    names = [f'"{name}"' for name, lifts in lifting.items() if lifts < 0]
    # Adding zero takes the sign of a negative zero away.
    place = f"x = {column.x:g} m and a level of {round(level, 3) + 0.0:.3f} m, in {material}"
    if names:
        cause = named("load", names, "bring")
        sentence = f"{cause} the effective stress down to {stress:.3f} kPa at {place}."
    else:
        cause = f"The pore pressure in {material}"
        sentence = (
            f"The pore pressure carries more than the weight above it: it leaves an effective "
            f"stress of {stress:.3f} kPa at {place}."
        )
    return LocalError(cause, -stress, f"{sentence} Soil needs an effective stress above zero.")
