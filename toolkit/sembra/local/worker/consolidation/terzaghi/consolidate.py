"""The strains of a column that consolidates by Terzaghi's theory: drained ones, superposed."""

from collections.abc import Sequence

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.column_result import TerzaghiStresses
from sembra.local.worker.consolidation.interface import (
    Consolidated,
    Consolidation,
    Situation,
)
from sembra.local.worker.consolidation.terzaghi.degrees import TerzaghiColumn
from sembra.local.worker.consolidation.terzaghi.dewatering import Drawdown, drawdowns
from sembra.local.worker.consolidation.terzaghi.layer_degrees import dissipation
from sembra.local.worker.ground.mesh import Mesh
from sembra.local.worker.ground.stresses import LEAST_EFFECTIVE_STRESS, pore_pressures
from sembra.local.worker.loads.load_steps import LoadStep, load_steps
from sembra.local.worker.loads.water_load import in_the_end
from sembra.local.worker.soil_models.soil_model import StressStep
from sembra.local.worker.timesteps import calculation_times


class Terzaghi(Consolidation):
    """Consolidation by Terzaghi's theory, each column by itself."""

    goes_by_steps = False
    by_coefficient = True

    def consolidate(
        self, situations: Sequence[Situation], *, sinking: bool = False
    ) -> list[Consolidated]:
        """Return the strains of columns by their load steps; no load sinks by steps."""
        assert not sinking
        return [_consolidate(situation) for situation in situations]

    def dissipation(
        self, unloaded: Situation, _load: Floats, times: Floats, *, sinking: bool = False
    ) -> Floats:
        """Return the degree of consolidation of each layer, which is the same by any load."""
        assert not sinking
        s = unloaded
        return dissipation(TerzaghiColumn(s.column, s.mesh, s.options, s.drains), times)


def _consolidate(situation: Situation) -> Consolidated:
    """Return the strains of a column by the first load step, the first two, and so on.

    Dewatering of drains is a load step; so is the soil's own weight where there are no initial
    loads, and it causes nothing.

    Raises:
        WorkerError: An effective stress isn't positive, or a layer can't consolidate.
    """
    s = situation
    mesh, options = s.mesh, s.options
    column = TerzaghiColumn(s.column, mesh, options, s.drains)
    lowered = (
        drawdowns(s.column, mesh, s.drains, column, options.water_unit_weight) if s.drains else []
    )
    lowered = [one for one in lowered if one.time < options.end]
    loads = load_steps(s.column, mesh, s.initial, s.loads)
    steps = _with_dewatering(s, loads, lowered)
    starts = [step.time for step in steps] + ([s.drains.start] if s.drains else [])
    times = calculation_times(starts, options.end, s.wanted_times)
    drained = [step.element_stress(s.column, mesh) for step in steps]
    changes = [step for step in steps if not step.is_own_weight]
    strains = np.zeros((len(steps), len(times), len(mesh.thicknesses)))
    if changes:
        strains[len(steps) - len(changes) :] = s.model.strains(
            [
                StressStep(step.time, stress)
                for step, stress in zip(steps, drained, strict=True)
                if not step.is_own_weight
            ],
            times,
            np.array([column.degrees(times, step.time)[mesh.element_layers].T for step in changes]),
        )
    return Consolidated(
        times=times,
        strain=strains[-1],
        load_settlements=(strains @ mesh.thicknesses).T,
        stresses=_stresses(s, times, loads, mesh.settlements(strains[-1, -1]), lowered),
        drained=drained,
    )


def _with_dewatering(
    s: Situation, steps: Sequence[LoadStep], lowered: Sequence[Drawdown]
) -> list[LoadStep]:
    """Return the load steps with those of dewatering among them.

    Dewatering at the time of a load is one step with it; the own weight stays by itself. Water in
    the drains lifts no soil: where the pore pressure would rise too far, the least stress is left.
    """
    loads = [step for step in steps if not step.is_own_weight]
    merged = [step for step in steps if step.is_own_weight]
    for time in sorted({step.time for step in loads} | {one.time for one in lowered}):
        last = [LoadStep(time, s.initial), *(step for step in loads if step.time <= time)][-1]
        placed = last.effective
        lifted = np.maximum(placed + lowering(s.mesh, lowered, time), LEAST_EFFECTIVE_STRESS)
        effective = np.where(placed < LEAST_EFFECTIVE_STRESS, placed, lifted)
        merged.append(LoadStep(time, effective, last.loads))
    return merged


def lowering(mesh: Mesh, lowered: Sequence[Drawdown], time: float) -> Floats:
    """Return by what the pore pressure at the nodes has fallen at a time, in kPa."""
    past = [drawdown for drawdown in lowered if drawdown.time <= time]
    return past[-1].lowering[mesh.node_layers] if past else np.zeros_like(mesh.levels)


def _last_change(mesh: Mesh, lowered: Sequence[Drawdown]) -> Floats:
    """Return by what the pore pressure at the nodes changed in the last step of dewatering."""
    if not lowered:
        return np.zeros_like(mesh.levels)
    before = lowered[-2].lowering if len(lowered) > 1 else 0.0
    return np.abs(lowered[-1].lowering - before)[mesh.node_layers]


def _stresses(
    s: Situation,
    times: Floats,
    loads: Sequence[LoadStep],
    settlements: Floats,
    lowered: Sequence[Drawdown],
) -> TerzaghiStresses:
    """Return the stresses as D-Settlement writes them: effective ones are those of the loads alone.

    What the last step of dewatering changes, whichever way, is added to the total and the water
    stress instead.
    """
    water = pore_pressures(
        in_the_end(s.column, s.loads), s.mesh, s.options.water_unit_weight, settlements
    )
    water += _last_change(s.mesh, lowered)
    loading = np.tile(s.initial, (len(times), 1))
    for step in loads:
        loading[times > step.time] = step.effective
    return TerzaghiStresses(
        initial_total=s.initial + s.water,
        initial_water=s.water,
        final_total=loads[-1].effective + water,
        final_water=water,
        loading=loading,
        preconsolidation=s.model.printed_preconsolidation,
    )
