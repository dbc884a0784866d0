"""Settlement of one column: from stresses to settlement at every node and time."""

from __future__ import annotations

from collections.abc import Callable, Sequence
from dataclasses import dataclass

import numpy as np

from .consolidation import degrees_of_consolidation
from .discretisation import Mesh, make_mesh
from .drawdown import drawdowns
from .errors import OUT_OF_RANGE, WorkerError
from .koppejan import (
    StressPath,
    linear_strain,
    primary_constants,
    secular_constants,
    secular_factor,
    stress_path,
)
from .layer_settlement import LayerSettlement, layer_settlements
from .load_steps import LoadStep, element_stress, load_steps, lowering
from .model import Column, Floats
from .preconsolidation import preconsolidation_pressure
from .project import Project
from .stresses import initial_effective_stress, middle_effective_stress, pore_pressures
from .timesteps import calculation_times
from .unstated_constants import check_constants


@dataclass(frozen=True)
class ColumnResult:
    """What is calculated for one column.

    Shapes: `times` (times), `load_settlements` (times, load steps), `settlements` and `loading`
    (times, nodes), the stresses (nodes), `preconsolidation` (nodes - 1), `dissipation` (layers,
    times). Settlement by the first i load steps stands in column i - 1 of `load_settlements`.
    """

    column: Column
    mesh: Mesh
    times: Floats
    load_settlements: Floats
    settlements: Floats
    loading: Floats
    initial_total: Floats
    initial_water: Floats
    preconsolidation: Floats
    final_total: Floats
    final_water: Floats
    layer_settlements: tuple[LayerSettlement, ...]
    dissipation: Floats


def calculate(project: Project, report: Callable[[float], None]) -> list[ColumnResult]:
    """The results of all columns in the order of the verticals.

    Args:
        project: the input.
        report: is told the fraction done, from 0 to 1, after each column.

    Raises:
        WorkerError: an effective stress isn't positive, a layer can't consolidate, a material
            swells whose swelling constants aren't stated, or a result is no finite number.
    """
    results = []
    for number, column in enumerate(project.columns, 1):
        result = calculate_column(column, project)
        if not (np.all(np.isfinite(result.settlements)) and np.all(np.isfinite(result.loading))):
            raise WorkerError(OUT_OF_RANGE)
        results.append(result)
        report(number / len(project.columns))
    return results


def calculate_column(column: Column, project: Project) -> ColumnResult:
    """Stresses and settlements of a column.

    Raises:
        WorkerError: an effective stress isn't positive, a layer can't consolidate, or a material
            swells whose swelling constants aren't stated.
    """
    options = project.options
    drains = project.drains_around(column)
    mesh = make_mesh(column)
    initial = initial_effective_stress(column, mesh, project.loads, options.water_unit_weight)
    water = pore_pressures(column, mesh, options.water_unit_weight)
    lowered = drawdowns(column, drains, options) if drains else []
    steps = load_steps(column, mesh, initial, project.loads, lowered)
    pressure, paths = _stress_paths(column, mesh, initial, steps, project)
    check_constants(column, mesh, steps, paths)
    starts = [step.time for step in steps] + ([drains.start] if drains else [])
    times = calculation_times(starts, options.end, project.residual_times)

    load_settlements, strain = _strain(column, mesh, times, steps, paths, project)
    settlements = _from_bottom(strain * mesh.thicknesses)
    final_water = pore_pressures(column, mesh, options.water_unit_weight, settlements[-1])
    final_water -= lowering(mesh, lowered, options.end)
    materials = [column.layers[layer].material for layer in mesh.element_layers]
    return ColumnResult(
        column=column,
        mesh=mesh,
        times=times,
        load_settlements=load_settlements,
        settlements=settlements,
        loading=_loading(times, initial, steps),
        initial_total=initial + water,
        initial_water=water,
        preconsolidation=pressure,
        final_total=steps[-1].effective + final_water,
        final_water=final_water,
        layer_settlements=layer_settlements(
            mesh,
            paths,
            primary_constants(materials),
            secular_constants(materials),
            len(column.layers),
        ),
        dissipation=degrees_of_consolidation(
            column, times, options.drained_top, options.drained_bottom, drains
        ),
    )


def _stress_paths(
    column: Column, mesh: Mesh, initial: Floats, steps: Sequence[LoadStep], project: Project
) -> tuple[Floats, list[StressPath]]:
    """The preconsolidation pressure of the last step, and the path of every step, per element."""
    option = project.options.preconsolidation
    at_middle = middle_effective_stress(column, project.loads, project.options.water_unit_weight)
    before = highest = element_stress(mesh, initial)
    pressure = preconsolidation_pressure(column, mesh, before, at_middle, option)
    paths = []
    for step in steps:
        after = element_stress(mesh, step.effective)
        if option.corrected_at_every_step:
            pressure = np.maximum(pressure, highest)
        paths.append(stress_path(before, after, pressure))
        highest = np.maximum(highest, after)
        before = after
    return pressure, paths


def _strain(
    column: Column,
    mesh: Mesh,
    times: Floats,
    steps: Sequence[LoadStep],
    paths: Sequence[StressPath],
    project: Project,
) -> tuple[Floats, Floats]:
    """Settlement of the surface by the first load step, the first two, and so on; final strain.

    Shapes (times, load steps) and (times, elements). Strain is relative to the initial height.
    Consolidation holds back primary strain alone; secular strain starts with the load.
    """
    options = project.options
    drains = project.drains_around(column)
    materials = [column.layers[layer].material for layer in mesh.element_layers]
    primary, secular = primary_constants(materials), secular_constants(materials)
    load_settlements = np.empty((len(times), len(steps)))
    total = np.zeros((len(times), len(mesh.thicknesses)))
    strain = total
    for index, (step, path) in enumerate(zip(steps, paths, strict=True)):
        since = times - step.time
        degrees = degrees_of_consolidation(
            column, since, options.drained_top, options.drained_bottom, drains, step.time
        )
        total += degrees[mesh.element_layers].T * primary.strain(path)
        total += secular_factor(since, options.reference_time)[:, None] * secular.strain(path)
        strain = linear_strain(total) if options.natural_strain else total
        load_settlements[:, index] = strain @ mesh.thicknesses
    return load_settlements, strain


def _from_bottom(compressions: Floats) -> Floats:
    """Settlement of the nodes out of the compression of the elements, shape (times, elements)."""
    sums = np.cumsum(compressions[:, ::-1], axis=1)[:, ::-1]
    return np.hstack([sums, np.zeros((len(compressions), 1))])


def _loading(times: Floats, initial: Floats, steps: Sequence[LoadStep]) -> Floats:
    """Effective stress at the nodes after consolidation under the loads before each time."""
    loading = np.tile(initial, (len(times), 1))
    for step in steps:
        loading[times > step.time] = step.effective
    return loading
