"""Consolidation by Darcy's law, against textbook solutions of linear storage and invariants."""

from math import cosh, exp, log, pi, sin, sqrt

import numpy as np
import pytest
from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.darcy import storage_equation
from sembra.local.worker.consolidation.darcy.profile import Profile
from sembra.local.worker.consolidation.darcy.run import Course, DarcyRun
from sembra.local.worker.consolidation.drains.equal_drains import Drains
from sembra.local.worker.consolidation.drains.flow import PlaneFlow
from sembra.local.worker.consolidation.drains.water import (
    PipeWater,
    Schedule,
    ScheduleKind,
    Stage,
)
from sembra.local.worker.failures import WorkerError
from sembra.local.worker.ground.material import Material
from sembra.local.worker.soil_models.isotache import Isotache
from sembra.local.worker.soil_models.koppejan import Koppejan

from tests.toolkit.worker.consolidation.darcy.layers import (
    CREEPING,
    INITIAL,
    STIFF,
    UNIT_WEIGHT,
    loaded,
    material,
    options,
    profile,
)

HEIGHT = 10.0
LEVELS = -np.linspace(0.0, HEIGHT, 21)
PERMEABILITY = 1e-3
LOAD = 1.0
# c_v = k / (m_v gamma_w), with m_v = 1 / (Cp' p_c).
COEFFICIENT = PERMEABILITY / UNIT_WEIGHT * STIFF["cp1"] * INITIAL
TIMES = np.concatenate([[0.0], np.geomspace(1e-3, 1e3, 121)])


def layer(count: int = 20) -> list[Material]:
    return [material(STIFF, PERMEABILITY)] * count


def degree(course: Course, column: Profile) -> Floats:
    """Settlement at all times in parts of the last."""
    settlements: Floats = course.strain @ -np.diff(column.levels)
    degree: Floats = settlements / settlements[-1]
    return degree


def terzaghi(factor: float) -> float:
    """Mean degree of consolidation by the time factor of single drainage."""
    waves = [(2 * n + 1) * pi / 2 for n in range(200)]
    return 1 - sum(2 / wave**2 * exp(-(wave**2) * factor) for wave in waves)


@pytest.mark.parametrize(("drained_bottom", "path"), [(True, HEIGHT / 2), (False, HEIGHT)])
def test_mean_degree_of_linear_storage(drained_bottom: bool, path: float) -> None:
    column = profile(layer(), LEVELS)
    times = np.concatenate([[0.0], np.geomspace(0.01, 1e4, 331)])
    given = options(drained_bottom=drained_bottom)
    found = degree(loaded(column, LOAD, times, Koppejan, given), column)
    expected = [terzaghi(COEFFICIENT * time / path**2) for time in times]
    assert found[times > 1] == pytest.approx(np.array(expected)[times > 1], abs=0.005)


def test_excess_pore_pressure_of_linear_storage() -> None:
    column = profile(layer(), LEVELS)
    course = loaded(column, LOAD, TIMES, Koppejan, options())
    number = int(np.searchsorted(TIMES, 10.0))
    factor = COEFFICIENT * TIMES[number] / HEIGHT**2
    expected = [
        sum(
            4 / (m * pi) * sin(m * pi * -level / HEIGHT) * exp(-((m * pi) ** 2) * factor)
            for m in range(1, 99, 2)
        )
        for level in LEVELS
    ]
    assert course.excess[number] == pytest.approx(expected, abs=0.01)


def test_few_thick_elements_do_as_well() -> None:
    levels = np.array([0.0, -5.0, -10.0])
    column = profile(layer(2), levels)
    found = degree(loaded(column, LOAD, TIMES, Koppejan, options()), column)
    expected = [terzaghi(COEFFICIENT * time / 5.0**2) for time in TIMES]
    assert found[TIMES > 0.1] == pytest.approx(np.array(expected)[TIMES > 0.1], abs=0.01)


def test_drained_elements_carry_the_load_at_once() -> None:
    sand = material(STIFF, 0.0, drained=True)
    column = profile([*layer(8), sand, sand, *layer(10)], LEVELS)
    course = loaded(column, 100.0, TIMES, Koppejan, options())
    assert np.all(course.excess[:, [8, 9, 10]] == 0)
    assert course.strain[1, [8, 9]] == pytest.approx(np.full(2, log(2) / 20))
    assert np.all(course.sources[:, :, [8, 9]] == 0)
    assert np.all(course.diffusivity[:, [8, 9]] == 0)


def test_a_column_without_clay() -> None:
    column = profile([material(STIFF, 0.0, drained=True)] * 20, LEVELS)
    course = loaded(column, 100.0, TIMES, Koppejan, options())
    assert course.strain[1:] == pytest.approx(np.full((121, 20), log(2) / 20))


def test_the_top_drains_and_the_bottom_where_it_should() -> None:
    course = loaded(profile(layer(), LEVELS), LOAD, TIMES, Koppejan, options(drained_bottom=False))
    assert np.all(course.excess[:, 0] == 0)
    assert course.excess[1, -1] == pytest.approx(LOAD)


def test_nothing_happens_without_load() -> None:
    course = loaded(profile(layer(), LEVELS), 0.0, TIMES, Koppejan, options())
    assert np.all(course.strain == 0)
    assert np.all(course.excess == 0)


def test_steady_state_between_drained_ends_and_drains() -> None:
    distance = 4.0
    drains = Drains(
        left=-50.0,
        right=50.0,
        bottom=-99.0,
        flow=PlaneFlow(distance, 0.2),
        schedule=Schedule(ScheduleKind.OFF, (Stage(0.0, PipeWater(0.0, -900.0, 40.0)),)),
    )
    column = profile(layer(), LEVELS, drains=drains)
    course = loaded(column, 0.0, TIMES, Koppejan, options())
    # k / gamma_w u'' = 12 k / (gamma_w B²) (u - w): what comes from above goes into the drains.
    root = sqrt(12 / (distance - 0.2) ** 2)
    expected = [
        -40.0 * (1 - cosh(root * (level + HEIGHT / 2)) / cosh(root * HEIGHT / 2))
        for level in LEVELS
    ]
    assert course.excess[-1] == pytest.approx(np.array(expected), abs=0.6)


def test_isotaches_without_creep_end_where_the_formula_does() -> None:
    clay = material({"a": 0.01, "b": 0.1, "c": 0.0}, PERMEABILITY)
    times = np.concatenate([[0.0], np.geomspace(0.1, 1e4, 60)])
    column = profile([clay] * 20, LEVELS, overconsolidation=1.5)
    course = loaded(column, 200.0, times, Isotache, options())
    expected = 0.01 * log(1.5) + 0.1 * log(300 / 150)
    assert course.strain[-1] == pytest.approx(np.full(20, expected), rel=1e-6)


def test_creep_makes_excess_pore_pressure() -> None:
    clay = material(CREEPING, 1e-6)
    column = profile([clay] * 20, LEVELS)
    course = loaded(column, 0.0, np.array([0.0, 1.0]), Isotache, options())
    grown = course.sources[1, 0, 10] * CREEPING["a"] / INITIAL
    ratio = exp((course.strain[1, 10] - grown) / CREEPING["a"])
    assert course.excess[1, 10] > 1.0
    # The intrinsic time is one day at the initial stress, and (s0 / s)^18 days at another.
    assert grown == pytest.approx(CREEPING["c"] * log(1 + ratio**18))


def test_heights_follow_natural_strain_alone() -> None:
    clay = material(CREEPING, PERMEABILITY)
    times = np.array([0.0, 100.0])
    column = profile([clay] * 20, LEVELS)
    linear = loaded(column, 100.0, times, Isotache, options())
    natural = loaded(column, 100.0, times, Isotache, options(natural_strain=True))
    assert linear.diffusivity[1] == pytest.approx(linear.diffusivity[0])
    thinner = 1 - natural.strain[1]
    assert natural.diffusivity[1] == pytest.approx(natural.diffusivity[0] / thinner**2)


def test_columns_do_not_feel_each_other() -> None:
    times = np.concatenate([[0.0], np.geomspace(0.1, 1e3, 30)])
    clay = material(CREEPING, PERMEABILITY)
    columns = [profile([clay] * 20, LEVELS), profile([clay] * 10, LEVELS[:11])]
    loads = [np.full(21, 50.0), np.full(11, 20.0)]
    at_nodes = np.concatenate(loads)
    together = DarcyRun(columns, Isotache, options(), times).run(lambda _step, _s: at_nodes)
    for column, load, course in zip(columns, loads, together, strict=True):
        alone = loaded(column, load[0], times, Isotache, options())
        assert course.strain == pytest.approx(alone.strain, rel=1e-6)
        assert course.excess == pytest.approx(alone.excess, abs=1e-6)


def test_loads_may_depend_on_settlements() -> None:
    column = profile(layer(), LEVELS)
    seen: list[float] = []

    def load(_step: int, settlements: Floats) -> Floats:
        seen.append(float(settlements[0]))
        return np.full(21, LOAD)

    (course,) = DarcyRun([column], Koppejan, options(), TIMES).run(load)
    assert seen == pytest.approx(course.strain[:-1] @ -np.diff(LEVELS))


def test_clay_without_permeability_is_refused() -> None:
    column = profile([material(STIFF, 0.0)] * 20, LEVELS)
    with pytest.raises(WorkerError, match="The material Clay needs a permeability"):
        loaded(column, LOAD, TIMES, Koppejan, options())


def test_what_does_not_converge_is_told_by_place_material_and_time(
    monkeypatch: pytest.MonkeyPatch,
) -> None:
    monkeypatch.setattr(storage_equation, "_ITERATIONS", 1)
    column = profile([material(CREEPING, PERMEABILITY)] * 20, LEVELS)
    with pytest.raises(WorkerError) as caught:
        loaded(column, 200.0, TIMES, Isotache, options())
    assert str(caught.value).startswith(
        "The consolidation by Darcy's law doesn't converge at x = 3 m in Clay, between 0 and "
        f"{TIMES[1]:g} days."
    )


def test_clay_that_creeps_goes_on_settling() -> None:
    clay = material(CREEPING, PERMEABILITY)
    column = profile([clay] * 20, LEVELS)
    course = loaded(column, 200.0, TIMES, Isotache, options())
    assert np.all(np.diff(course.strain @ -np.diff(LEVELS)) > 0)
    # In the end as the isotaches have it: b ln(s / sp) + c ln(t).
    assert course.strain[-1] == pytest.approx(
        np.full(20, 0.1 * log(3) + 0.005 * log(1000)), rel=0.02
    )


def test_a_load_far_beyond_the_preconsolidation_converges() -> None:
    clay = material({"a": 0.01, "b": 0.4, "c": 0.03}, 1e-5)
    column = profile([clay] * 20, LEVELS)
    course = loaded(column, 5000.0, TIMES, Isotache, options())
    assert np.all(np.isfinite(course.strain))
