"""The calculation of a whole project: its columns, and loads that depend on how they settle.

With submerging, loads that are not initial come under water as the ground settles below them. All
of a column's loads sink by one settlement: that of its surface at the end of the calculation. It is
found by repetition, as settlements and weights depend on each other. Where creep and consolidation
by Darcy's law are calculated together, from one time to the next, loads sink from one time to the
next as well, and all columns are calculated together.
"""

from collections.abc import Callable, Sequence
from dataclasses import replace
from functools import partial

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.column_result import ColumnResult
from sembra.local.worker.consolidation.interface import Situation
from sembra.local.worker.dissipation import dissipation
from sembra.local.worker.failures import OUT_OF_RANGE, Problems, WorkerError
from sembra.local.worker.loads.load import Load
from sembra.local.worker.loads.superelevation import MaintainedProfile
from sembra.local.worker.project import Project
from sembra.local.worker.settlement import calculate_columns, make_situation

_AT_REST = 1e-7
"""Settlements of two repetitions, in metres, that count as the same."""

_MOST_REPETITIONS = 100

_LARGEST_STEP = 10.0
"""How many times as far as the plain next repetition the profile is taken where it rests slowly."""


def calculate(project: Project, report: Callable[[float], None]) -> list[ColumnResult]:
    """Return the results of all columns in the order of the verticals.

    Args:
        project: The input.
        report: Is told the fraction done, from 0 to 1, after each column.

    Raises:
        WorkerError: An effective stress isn't positive, a layer can't consolidate, loads that
            submerge don't come to rest, the profile can't be maintained, or a result is no finite
            number.
    """
    situations = _situations(project)
    results = (
        _settle(situations, project, project.loads, np.zeros(len(situations)), report)
        if project.profile is None
        else _maintain(situations, project, project.profile, report)
    )
    return [_with_dissipation(result, project) for result in results]


def _situations(project: Project) -> list[Situation]:
    """Return the columns before the first load."""
    problems = Problems()
    situations = []
    for column in project.columns:
        with problems.collecting():
            situations.append(make_situation(column, project, project.loads))
    problems.check()
    return situations


def _with_dissipation(result: ColumnResult, project: Project) -> ColumnResult:
    """Return a result with the dissipation, if it is that of the column that it is wanted for."""
    if result.column is not project.dissipation_column:
        return result
    found, remarks = dissipation(project, result.column, sinking=project.sinks_by_steps)
    return replace(result, dissipation=found, remarks=(*result.remarks, *remarks))


def _settle(
    situations: Sequence[Situation],
    project: Project,
    loads: Sequence[Load],
    expected: Floats,
    report: Callable[[float], None],
) -> list[ColumnResult]:
    """Return the results of all columns below some loads.

    Args:
        situations: The columns before the first load.
        project: The input.
        loads: The loads, in place of those of the project.
        expected: About how far each column settles, in metres, as far as that is known.
        report: As for `calculate`.
    """
    by_steps = project.consolidation.goes_by_steps
    sinking = project.sinks_by_steps
    results: list[ColumnResult] = []
    problems = Problems()
    repeats = project.options.submerging and not sinking
    # What goes by steps is quicker together, and has to be where loads sink between the columns.
    count = len(situations)
    for at in [slice(None)] if by_steps else [slice(one, one + 1) for one in range(count)]:
        group = situations[at]
        with problems.collecting():
            if repeats:
                results.extend(_submerging(group, project, loads, expected[at]))
            else:
                same = [loads] * len(group)
                results.extend(calculate_columns(group, project, same, sinking=sinking))
        report(len(results) / count)
    problems.check()
    for result in results:
        if not (
            np.all(np.isfinite(result.settlements))
            and np.all(np.isfinite(result.consolidation.loading))
        ):
            raise WorkerError(OUT_OF_RANGE)
    return results


def _maintain(
    situations: Sequence[Situation],
    project: Project,
    profile: MaintainedProfile,
    report: Callable[[float], None],
) -> list[ColumnResult]:
    """Return the results below loads whose profile is maintained.

    The superelevation is as high as the ground settled in the repetition before. When the vertical
    that settles most does so by less than the tolerance more, one last repetition follows. Ground
    that settles by nearly as much as is put on it comes to rest all the same, as each metre more
    compresses it less, but after thousands of repetitions; after a hundred of them it is taken on
    in longer steps, by the secant method.
    """
    places = np.array([column.x for column in project.columns])
    heights = np.zeros_like(places)
    before: tuple[Floats, Floats] | None = None
    is_last = False
    for done in range(2 * _MOST_REPETITIONS):
        # How many repetitions there will be isn't known: each is told as half of what is left.
        superelevation = profile.load(places, heights)
        loads = (*project.loads, superelevation)
        run = project if is_last else _draft(project)
        results = _settle(situations, run, loads, heights, partial(_report_half, report, 0.5**done))
        if is_last:
            return [replace(result, superelevation=superelevation.area) for result in results]
        settled = np.array([result.settlements[-1, 0] for result in results])
        rests = settled - heights
        most = int(np.argmax(settled))
        is_last = abs(rests[most]) < max(profile.option.tolerance, _AT_REST)
        step = 1.0
        if before and done >= _MOST_REPETITIONS and not is_last:
            step = _longer_step(before, (heights, rests))
        before = heights, rests
        heights = heights + step * rests if step > 1 else settled
    raise WorkerError(
        f"The profile can't be maintained: at x = {places[most]:g} m the settlement of "
        f"{settled[most]:.3f} m still changes by {rests[most]:.3g} m after "
        f"{2 * _MOST_REPETITIONS} repetitions."
    )


def _longer_step(before: tuple[Floats, Floats], now: tuple[Floats, Floats]) -> float:
    """Return how many times as far as it settled in this repetition the ground will settle.

    Args:
        before: Heights in one repetition, and by how much more the ground settled.
        now: The same in the next.
    """
    heights, rests = now[0] - before[0], now[1] - before[1]
    # One less the slope of settlement over height: what the rest falls by for each metre.
    fall = float(-(rests @ heights)) / max(float(heights @ heights), np.finfo(float).tiny)
    return 1 / max(fall, 1 / _LARGEST_STEP)


def _draft(project: Project) -> Project:
    """Return what all repetitions but the last need: no settlements by the load steps alone."""
    return replace(project, options=replace(project.options, each_step_alone=False))


def _report_half(report: Callable[[float], None], left: float, fraction: float) -> None:
    """Report the fraction of a repetition that counts as half of what is left to do."""
    report(1 - left * (1 - fraction / 2))


def _submerging(
    situations: Sequence[Situation], project: Project, loads: Sequence[Load], expected: Floats
) -> list[ColumnResult]:
    """Return the results of columns whose loads have sunk by their own final settlements.

    Args:
        situations: The columns before the first load.
        project: The input.
        loads: The loads, in place of those of the project.
        expected: Where to begin, in metres.
    """
    draft = _draft(project)
    depths = [_Depth(float(depth)) for depth in expected]
    results: list[ColumnResult | None] = [None] * len(situations)
    for _ in range(_MOST_REPETITIONS):
        moving = [number for number, depth in enumerate(depths) if not depth.is_found]
        if not moving:
            break
        found = calculate_columns(
            [situations[number] for number in moving],
            draft,
            [_sunk(loads, depths[number].metres) for number in moving],
        )
        for number, result in zip(moving, found, strict=True):
            results[number] = result
            depths[number].take(float(result.settlements[-1, 0]))
    problems = Problems()
    for situation, depth in zip(situations, depths, strict=True):
        if not depth.is_found:
            problems.add(
                f"The loads at x = {situation.column.x:g} m don't come to rest as they sink into "
                "the water."
            )
    problems.check()
    if draft.options == project.options:
        return [result for result in results if result is not None]
    sunk = [_sunk(loads, depth.metres) for depth in depths]
    return calculate_columns(situations, project, sunk)


class _Depth:
    """How deep the loads of a column sink: as deep as it settles below them when they have.

    It is sought by the secant method: settlement less depth comes to zero.

    Args:
        metres: Where to begin.
    """

    def __init__(self, metres: float) -> None:
        self.metres = metres
        self.is_found = False
        self._earlier: tuple[float, float] | None = None

    def take(self, settlement: float) -> None:
        """Take in how much the column settles below loads at this depth, and go to the next."""
        rest = settlement - self.metres
        self.is_found = abs(rest) < _AT_REST
        if self.is_found:
            return
        step = rest
        if self._earlier is not None and self._earlier[1] != rest:
            depth, earlier = self._earlier
            step = rest * (self.metres - depth) / (earlier - rest)
        self._earlier = self.metres, rest
        self.metres += step


def _sunk(loads: Sequence[Load], depth: float) -> list[Load]:
    """Return the loads after those that sink in the end have sunk by a depth in metres."""
    return [
        load.submerged(lambda x: np.full_like(x, depth)) if load.sinks_in_the_end else load
        for load in loads
    ]
