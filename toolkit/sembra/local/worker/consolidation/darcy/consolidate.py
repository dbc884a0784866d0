"""The strains of a column that consolidates by Darcy's law."""

from collections.abc import Sequence

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.column_result import DarcyHistory
from sembra.local.worker.consolidation.consolidation import Consolidated, Situation
from sembra.local.worker.consolidation.darcy.leakage import leakage
from sembra.local.worker.consolidation.darcy.profile import Profile
from sembra.local.worker.consolidation.darcy.run import Course, DarcyRun
from sembra.local.worker.loads.load_steps import LoadStep, load_steps
from sembra.local.worker.timesteps import calculation_times

_ROUNDING = 1e-6


def consolidate(situation: Situation) -> Consolidated:
    """Return the strains of a column by all load steps.

    Settlement by the first load step alone, by the first two, and so on, is calculated where the
    options ask for it, each in a run of its own.

    Raises:
        WorkerError: an effective stress isn't positive, or water can't leave a layer.
    """
    s = situation
    steps = load_steps(s.column, s.mesh, s.initial, s.loads)
    profile = _profile(s)
    starts = [*(step.time for step in steps), *profile.leakage.changes]
    times = calculation_times(starts, s.options.end, s.wanted_times)
    counts = range(1, len(steps) + 1) if s.options.each_step_alone else [len(steps)]
    # Result files have 0 for the soil's own weight, although its creep is in all other columns.
    calculated = [
        count for count in counts if not steps[count - 1].is_own_weight or count == len(steps)
    ]
    loadings = [_loading(times, s.initial, steps[:count]) for count in calculated]
    run = DarcyRun([profile] * len(loadings), type(s.model), s.options, times)
    courses = run.run(lambda step, _: [loading[step] for loading in loadings])
    settlements = np.zeros((len(times), len(steps)))
    for count, course in zip(calculated, courses, strict=True):
        settlements[:, count - 1] = course.strain @ s.mesh.thicknesses
    return Consolidated(
        times=times,
        strain=courses[-1].strain,
        load_settlements=settlements if s.options.each_step_alone else None,
        stresses=_history(profile, courses[-1], s.options.water_unit_weight),
    )


def _profile(s: Situation) -> Profile:
    elements = s.model.elements
    return Profile(
        levels=s.mesh.levels,
        materials=elements.materials,
        effective=s.initial,
        pore_pressure=s.water,
        preconsolidation=elements.preconsolidation,
        leakage=leakage(s.drains, s.column.x, s.mesh.levels, elements.materials),
    )


def _loading(times: Floats, initial: Floats, steps: Sequence[LoadStep]) -> Floats:
    """Return the increase of stress at the nodes from each time on, shape (times, nodes)."""
    loading = np.zeros((len(times), len(initial)))
    for step in steps:
        loading[times + _ROUNDING >= step.time] = step.effective - initial
    return loading


def _history(profile: Profile, course: Course, water_unit_weight: float) -> DarcyHistory:
    """Return what the result file shows of a course."""
    pore_pressure = profile.pore_pressure + course.excess
    upper, lower = np.moveaxis(course.sources / water_unit_weight, 1, 0)
    return DarcyHistory(
        initial_effective=profile.effective,
        effective=profile.effective + course.loading - course.excess,
        head=profile.levels + pore_pressure / water_unit_weight,
        loading=course.loading,
        upper_amplitudes=upper,
        lower_amplitudes=lower,
        normalized_coefficients=4 * course.diffusivity,
        leakages=profile.leakage.stated,
        drained=np.array([material.drained for material in profile.materials]),
    )
