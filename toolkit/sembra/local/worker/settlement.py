"""Settlement of one column: from stresses to settlement at every node and time."""

from collections.abc import Callable, Sequence

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.degrees import degrees_of_consolidation
from sembra.local.worker.consolidation.drawdown import drawdowns
from sembra.local.worker.errors import OUT_OF_RANGE, WorkerError
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.mesh import Mesh, make_mesh
from sembra.local.worker.ground.preconsolidation import preconsolidation_pressure
from sembra.local.worker.ground.stresses import (
    initial_effective_stress,
    middle_effective_stress,
    pore_pressures,
)
from sembra.local.worker.loads.load_steps import LoadStep, element_stress, load_steps, lowering
from sembra.local.worker.project import Project
from sembra.local.worker.result.column_result import (
    ColumnResult,
    Dissipation,
    TerzaghiStresses,
)
from sembra.local.worker.soil_models.koppejan import Koppejan
from sembra.local.worker.soil_models.layer_settlement import layer_settlements
from sembra.local.worker.soil_models.soil_model import Elements, StressStep
from sembra.local.worker.soil_models.unstated_constants import check_constants
from sembra.local.worker.timesteps import calculation_times


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
        if not (
            np.all(np.isfinite(result.settlements))
            and np.all(np.isfinite(result.consolidation.loading))
        ):
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
    model = project.soil_model(_elements(column, mesh, initial, project), options)
    assert isinstance(model, Koppejan)
    stresses = [element_stress(mesh, step.effective) for step in steps]
    paths = model.paths(stresses)
    check_constants(column, mesh, steps, paths)
    starts = [step.time for step in steps] + ([drains.start] if drains else [])
    times = calculation_times(starts, options.end, project.residual_times)

    degrees = np.array(
        [
            degrees_of_consolidation(
                column,
                times - step.time,
                options.drained_top,
                options.drained_bottom,
                drains,
                step.time,
            )[mesh.element_layers].T
            for step in steps
        ]
    )
    stress_steps = [
        StressStep(step.time, stress) for step, stress in zip(steps, stresses, strict=True)
    ]
    strains = model.strains(stress_steps, times, degrees)
    settlements = _from_bottom(strains[-1] * mesh.thicknesses)
    final_water = pore_pressures(column, mesh, options.water_unit_weight, settlements[-1])
    final_water -= lowering(mesh, lowered, options.end)
    stresses_and_loading = TerzaghiStresses(
        initial_total=initial + water,
        initial_water=water,
        final_total=steps[-1].effective + final_water,
        final_water=final_water,
        loading=_loading(times, initial, steps),
        preconsolidation=model.pressures(stresses),
    )
    return ColumnResult(
        column=column,
        mesh=mesh,
        times=times,
        settlements=settlements,
        consolidation=stresses_and_loading,
        load_settlements=(strains @ mesh.thicknesses).T,
        layer_settlements=layer_settlements(
            mesh,
            paths,
            model.primary,
            model.secular,
            len(column.layers),
        ),
        dissipation=_dissipation(column, times, project) if options.dissipation else None,
    )


def _dissipation(column: Column, times: Floats, project: Project) -> Dissipation:
    options = project.options
    degrees = degrees_of_consolidation(
        column,
        times,
        options.drained_top,
        options.drained_bottom,
        project.drains_around(column),
    )
    return Dissipation(times, degrees)


def _elements(column: Column, mesh: Mesh, initial: Floats, project: Project) -> Elements:
    """Return the elements of a column in their initial state."""
    materials = [column.layers[layer].material for layer in mesh.element_layers]
    stress = element_stress(mesh, initial)
    at_middle = middle_effective_stress(column, project.loads, project.options.water_unit_weight)
    pressure = preconsolidation_pressure(
        [material.preconsolidation for material in materials],
        stress,
        at_middle[mesh.element_layers],
        project.options.preconsolidation,
    )
    return Elements(materials, stress, pressure)


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
