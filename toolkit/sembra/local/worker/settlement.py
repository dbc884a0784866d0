"""Settlement of columns: from the ground and the loads to what a result file shows."""

from collections.abc import Sequence
from dataclasses import replace

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.column_result import ColumnResult
from sembra.local.worker.consolidation.interface import Consolidated, Situation
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.mesh import Mesh, make_mesh
from sembra.local.worker.ground.preconsolidation import preconsolidation_pressure
from sembra.local.worker.ground.stresses import pore_pressures
from sembra.local.worker.loads.load import Load
from sembra.local.worker.loads.stresses import (
    initial_effective_stress,
    middle_effective_stress,
)
from sembra.local.worker.options import Options
from sembra.local.worker.project import Project
from sembra.local.worker.remark import Remark
from sembra.local.worker.soil_models.soil_model import Elements


def calculate_columns(
    situations: Sequence[Situation],
    project: Project,
    loads: Sequence[Sequence[Load]],
    *,
    sinking: bool = False,
) -> list[ColumnResult]:
    """Return the stresses and settlements of columns below some loads.

    Args:
        situations: The columns before the first load.
        project: The input.
        loads: The loads on each column, in place of those of the project. They differ in how deep
            they have sunk, if in anything.
        sinking: Whether the loads sink into the water with the columns, from one time to the next.

    Raises:
        WorkerError: An effective stress isn't positive, or a layer can't consolidate.
    """
    loaded = [
        replace(situation, loads=on_it, options=project.options)
        for situation, on_it in zip(situations, loads, strict=True)
    ]
    consolidated = project.consolidation.consolidate(loaded, sinking=sinking)
    return [_result(situation, one) for situation, one in zip(loaded, consolidated, strict=True)]


def make_situation(column: Column, project: Project, loads: Sequence[Load]) -> Situation:
    """Return a column before the first load, and what is going to happen to it.

    Args:
        column: The column.
        project: The input.
        loads: All loads, initial ones too, which need not be those of the input.

    Raises:
        WorkerError: An effective stress isn't positive.
    """
    options = project.options
    mesh = make_mesh(column)
    initial = initial_effective_stress(column, mesh, loads, options.water_unit_weight)
    return Situation(
        column=column,
        mesh=mesh,
        initial=initial,
        water=pore_pressures(column, mesh, options.water_unit_weight),
        model=project.soil_model(_elements(column, mesh, initial, loads, options), options),
        loads=loads,
        drains=project.drains,
        options=options,
        wanted_times=project.residual_times,
    )


def _result(situation: Situation, consolidated: Consolidated) -> ColumnResult:
    """Return what a result file shows of a column that has consolidated."""
    column, mesh = situation.column, situation.mesh
    return ColumnResult(
        column=column,
        mesh=mesh,
        times=consolidated.times,
        settlements=mesh.settlements(consolidated.strain),
        consolidation=consolidated.stresses,
        load_settlements=consolidated.load_settlements,
        layer_settlements=situation.model.layer_settlements(
            consolidated.drained, mesh.thicknesses, mesh.element_layers
        ),
        remarks=(
            *situation.model.remarks(consolidated.drained),
            *_too_soft(situation, consolidated),
        ),
    )


def _elements(
    column: Column, mesh: Mesh, initial: Floats, loads: Sequence[Load], options: Options
) -> Elements:
    """Return the elements of a column in their initial state."""
    materials = [column.layers[layer].material for layer in mesh.element_layers]
    stress = mesh.means(initial)
    at_middle = middle_effective_stress(column, loads, options.water_unit_weight)
    pressure = preconsolidation_pressure(
        [material.preconsolidation for material in materials],
        stress,
        at_middle[mesh.element_layers],
        options.preconsolidation,
    )
    return Elements(materials, stress, pressure)


def _too_soft(s: Situation, consolidated: Consolidated) -> list[Remark]:
    """Tell of layers that settle by more than there is of them, as linear strain has no limit."""
    heights = np.bincount(s.mesh.element_layers, s.mesh.thicknesses)
    most = (consolidated.strain * s.mesh.thicknesses).max(axis=0)
    compressed = np.bincount(s.mesh.element_layers, most) / heights > 1
    what = (
        "compressed by more than the height of a layer. See whether the parameters and the loads "
        "are as they are meant"
    )
    names = s.model.elements.names_where(compressed[s.mesh.element_layers])
    return [Remark("material", tuple(names), "are", what)] if names else []
