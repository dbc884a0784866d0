"""The strains of columns that consolidate by Darcy's law."""

from collections.abc import Callable, Sequence
from typing import Protocol

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.column_result import DarcyHistory
from sembra.local.worker.consolidation.darcy.dissipation_run import dissipation
from sembra.local.worker.consolidation.darcy.profile import Profile, make_profile
from sembra.local.worker.consolidation.darcy.run import Course, DarcyRun
from sembra.local.worker.consolidation.darcy.sinking import SinkingLoads
from sembra.local.worker.consolidation.interface import Consolidated, Consolidation, Situation
from sembra.local.worker.failures import Problems
from sembra.local.worker.loads.load_steps import load_steps
from sembra.local.worker.timesteps import calculation_times
from sembra.local.worker.tolerances import TIME


class _Loads(Protocol):
    """What increases the stress in columns, in several runs."""

    def increases(self, time: float, settlements: Floats, /) -> Floats:
        """Return the increase at the nodes from a time on by their settlements, in each run."""


class Darcy(Consolidation):
    """Consolidation by Darcy's law, from one time to the next.

    Settlement by the first load step alone, by the first two, and so on, is calculated where the
    options ask for it, each in a run of its own.
    """

    goes_by_steps = True
    by_coefficient = False

    def consolidate(
        self, situations: Sequence[Situation], *, sinking: bool = False
    ) -> list[Consolidated]:
        """Return the strains of columns that go from each time to the next together."""
        return _consolidate(situations, SinkingLoads if sinking else _FixedLoads)

    def dissipation(
        self, unloaded: Situation, load: Floats, times: Floats, *, sinking: bool = False
    ) -> Floats:
        """Return the degree of consolidation of each layer, of a run with one load at time 0."""
        return dissipation(unloaded, load, times, sinking=sinking)


def _consolidate(
    situations: Sequence[Situation],
    loads_until: Callable[[Sequence[Situation], Sequence[float]], _Loads],
) -> list[Consolidated]:
    """Consolidate columns together, in one row for each load step that is wanted to be the last."""
    drained = _drained(situations)
    s = situations[0]
    steps = load_steps(s.column, s.mesh, s.initial, s.loads)
    profiles = [make_profile(situation) for situation in situations]
    starts = [*(step.time for step in steps), *profiles[0].leakage.changes]
    times = calculation_times(starts, s.options.end, s.wanted_times)
    # Result files have 0 for the soil's own weight, although its creep is in all other columns.
    last = len(steps) - 1
    wanted = [
        number
        for number, step in enumerate(steps)
        if number == last or (s.options.each_step_alone and not step.is_own_weight)
    ]
    loads = loads_until(situations, [steps[number].time for number in wanted])
    size = len(situations)

    def loading(step: int, settlements: Floats) -> Floats:
        by_run = settlements.reshape(len(wanted), -1)
        return loads.increases(float(times[step]), by_run).ravel()

    courses = DarcyRun(profiles * len(wanted), type(s.model), s.options, times).run(loading)
    settlements = np.zeros((size, len(times), len(steps)))
    for position, course in enumerate(courses):
        number, column = wanted[position // size], position % size
        settlements[column, :, number] = course.strain @ situations[column].mesh.thicknesses
    return [
        Consolidated(
            times=times,
            strain=course.strain,
            load_settlements=by_step if s.options.each_step_alone else None,
            stresses=_history(profile, course, s.options.water_unit_weight),
            drained=stresses,
        )
        for stresses, profile, course, by_step in zip(
            drained, profiles, courses[-size:], settlements, strict=True
        )
    ]


class _FixedLoads:
    """Loads that weigh the same however the ground settles.

    Args:
        situations: The columns.
        lasts: For each run, the time in days after which no further loads count.
    """

    def __init__(self, situations: Sequence[Situation], lasts: Sequence[float]) -> None:
        self._lasts = lasts
        by_column = [load_steps(s.column, s.mesh, s.initial, s.loads) for s in situations]
        initial = np.concatenate([s.initial for s in situations])
        self._steps = [
            (steps[0].time, np.concatenate([step.effective for step in steps]) - initial)
            for steps in zip(*by_column, strict=True)
        ]
        self._none = np.zeros_like(initial)

    def increases(self, time: float, _settlements: Floats, /) -> Floats:
        """Return the increase by the last load step at or before a time in days."""
        now = np.minimum(self._lasts, time + TIME)
        return np.array(
            [
                [self._none, *(increase for when, increase in self._steps if when <= until)][-1]
                for until in now
            ]
        )


def _drained(situations: Sequence[Situation]) -> list[list[Floats]]:
    """Return the effective stress of the elements after each load step, once all water is out.

    Raises:
        WorkerError: A stress isn't positive; the message names all loads that make one so.
    """
    problems = Problems()
    drained = []
    for s in situations:
        with problems.collecting():
            steps = load_steps(s.column, s.mesh, s.initial, s.loads)
            drained.append([step.element_stress(s.column, s.mesh) for step in steps])
    problems.check()
    return drained


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
