"""Creep isotaches from one time to the next, as Darcy's consolidation asks for them."""

from math import log

import numpy as np
import pytest
from sembra.local.worker.soil_models.isotache import Isotache
from sembra.local.worker.soil_models.soil_model import StressStep

from tests.toolkit.worker.made_options import options
from tests.toolkit.worker.soil_models.made_elements import consolidated, elements

ABC = {"a": 0.01, "b": 0.1, "c": 0.005}
INITIAL, PRECONSOLIDATION = [50.0, 50.0, 80.0], [60.0, 50.0, 200.0]
LOADED = np.array([100.0, 45.0, 120.0])


def model(*, c: float = 0.005, natural: bool = False) -> Isotache:
    return Isotache(elements(ABC | {"c": c}, INITIAL, PRECONSOLIDATION), options(natural=natural))


@pytest.mark.parametrize("natural", [False, True])
@pytest.mark.parametrize("c", [0.005, 1e-9, 0.0])
def test_steps_without_excess_pressure_are_drained_load_steps(c: float, natural: bool) -> None:
    soil = model(c=c, natural=natural)
    history = soil.begin()
    first = history.advance(LOADED, 10.0)
    second = history.advance(1.2 * LOADED, 90.0)
    times = np.array([10.0, 100.0])
    steps = [StressStep(0.0, LOADED), StressStep(10.0, 1.2 * LOADED)]
    drained = soil.strains(steps, times, consolidated(times, 0.0, 10.0, count=3))
    assert first == pytest.approx(drained[0, 0])
    assert second == pytest.approx(drained[1, 1])


def test_time_may_be_cut_at_constant_stress() -> None:
    parts, whole = model().begin(), model().begin()
    for duration in (0.5, 3.0):
        parts.advance(LOADED, duration)
    assert parts.advance(LOADED, 6.5) == pytest.approx(whole.advance(LOADED, 10.0))


@pytest.mark.parametrize("c", [0.005, 0.0])
def test_creep_makes_excess_pressure_by_the_storage(c: float) -> None:
    soil = model(c=c)
    assert soil.storage == pytest.approx([0.01 / 60, 0.01 / 50, 0.01 / 200])
    history = soil.begin()
    before = history.advance(LOADED, 10.0) - soil.elastic(LOADED)
    stress = np.array([130.0, 48.0, 110.0])
    excess, _ = history.creep_excess(stress, 5.0)
    after = history.advance(stress, 5.0) - soil.elastic(stress)
    assert excess == pytest.approx((after - before) / soil.storage, rel=1e-9, abs=1e-12)
    assert excess[0] > 0


def test_excess_pressure_by_hand() -> None:
    # Without load, creep of 0.005 ln(1 + 10 / 1) in normally consolidated soil.
    history = Isotache(elements(ABC, [50.0], [50.0]), options()).begin()
    excess, slope = history.creep_excess(np.array([50.0]), 10.0)
    assert excess[0] == pytest.approx(0.005 * log(11) / (0.01 / 50))
    # d creep / d ln s = (b - a) dt / (tau + dt)
    assert slope[0] == pytest.approx(0.09 * 10 / 11 / (0.01 / 50))


@pytest.mark.parametrize("c", [0.005, 1e-4, 0.0])
def test_slope_of_the_excess_pressure_against_differences(c: float) -> None:
    history = model(c=c).begin()
    history.advance(LOADED, 10.0)
    stress, step = np.array([103.0, 52.0, 115.0]), 1e-6
    _, slope = history.creep_excess(stress, 5.0)
    above, below = (history.creep_excess(stress * np.exp(d), 5.0)[0] for d in (step, -step))
    assert slope == pytest.approx((above - below) / (2 * step), rel=1e-5, abs=1e-6)
    assert slope[0] > 0


def test_asking_for_excess_pressure_changes_nothing() -> None:
    asked, unasked = model().begin(), model().begin()
    for stress in (LOADED, 3 * LOADED):
        asked.creep_excess(stress, 7.0)
    assert asked.advance(LOADED, 5.0).tolist() == unasked.advance(LOADED, 5.0).tolist()


def test_virgin_compressibility() -> None:
    soil = Isotache(elements(ABC, [50.0], [60.0]), options())
    # b / s where the virgin line passes, a ln(sp / s0) + b ln(s / sp), at sp and at 100 kPa.
    at_sp = 0.01 * log(60 / 50)
    for strain, stress in ((at_sp, 60.0), (at_sp + 0.1 * log(100 / 60), 100.0)):
        found = soil.virgin_compressibility(np.array([strain]))
        assert found[0] == pytest.approx(0.1 / stress)
