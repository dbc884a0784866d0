"""The method of Koppejan from one time to the next, as Darcy's consolidation asks for it."""

from math import log, log10

import numpy as np
import pytest
from sembra.local.worker.ground.preconsolidation import PreconsolidationOption
from sembra.local.worker.soil_models.koppejan import Koppejan
from sembra.local.worker.soil_models.soil_model import StressStep

from tests.toolkit.worker.made_options import options
from tests.toolkit.worker.soil_models.made_elements import consolidated, elements

CONSTANTS = {"cp": 50.0, "cp1": 12.5, "cs": 300.0, "cs1": 75.0, "ap": 40.0, "asec": 250.0}
SOIL = elements(CONSTANTS, [20.0, 60.0, 80.0], [50.0, 60.0, 85.0])
LOADED = np.array([90.0, 75.0, 40.0])


@pytest.mark.parametrize("natural", [False, True])
def test_one_step_is_a_load_step_without_excess_pressure(natural: bool) -> None:
    model = Koppejan(SOIL, options(natural=natural, reference_time=2.0))
    times = np.array([30.0])
    drained = model.strains([StressStep(0.0, LOADED)], times, consolidated(times, 0.0, count=3))
    assert model.begin().advance(LOADED, 30.0) == pytest.approx(drained[0, 0])


def test_time_goes_on_without_a_change_of_stress() -> None:
    model = Koppejan(SOIL, options())
    history = model.begin()
    for duration in (1.0, 4.0):
        history.advance(LOADED, duration)
    assert history.advance(LOADED, 25.0) == pytest.approx(model.begin().advance(LOADED, 30.0))


def test_each_step_is_a_load_step_of_its_own() -> None:
    model = Koppejan(elements(CONSTANTS, [20.0], [50.0]), options())
    history = model.begin()
    first = history.advance(np.array([40.0]), 9.0)
    assert first[0] == pytest.approx(log(2) * (1 / 50 + 1 / 300))
    second = history.advance(np.array([90.0]), 90.0)
    below, above = log(50 / 40), log(90 / 50)
    secular = log10(100) * log(2) / 300 + log10(91) * (below / 300 + above / 75)
    assert second[0] == pytest.approx((log(2) + below) / 50 + above / 12.5 + secular)


@pytest.mark.parametrize(
    ("correction", "pressure"),
    [
        (PreconsolidationOption.VARIABLE, 50.0),
        (PreconsolidationOption.VARIABLE_CORRECTED_AT_EVERY_STEP, 60.0),
    ],
)
def test_correction_at_every_step(correction: PreconsolidationOption, pressure: float) -> None:
    chosen = options(preconsolidation=correction, reference_time=1e300)
    history = Koppejan(elements(CONSTANTS, [20.0], [50.0]), chosen).begin()
    before = [history.advance(np.array([stress]), 1.0)[0] for stress in (60.0, 40.0)][-1]
    again = history.advance(np.array([90.0]), 1.0)[0] - before
    assert again == pytest.approx(log(pressure / 40) / 50 + log(90 / pressure) / 12.5)


def test_secular_strain_makes_no_excess_pressure() -> None:
    excess, slope = Koppejan(SOIL, options()).begin().creep_excess(LOADED, 10.0)
    assert excess.tolist() == slope.tolist() == [0, 0, 0]


def test_histories_of_one_model_know_nothing_of_each_other() -> None:
    model = Koppejan(SOIL, options())
    one, other = model.begin(), model.begin()
    one.advance(LOADED, 10.0)
    assert other.advance(LOADED, 5.0) == pytest.approx(model.begin().advance(LOADED, 5.0))


def test_storage_is_virgin_below_the_preconsolidation_pressure_too() -> None:
    model = Koppejan(SOIL, options())
    assert model.storage == pytest.approx([1 / (12.5 * pc) for pc in (50, 60, 85)])


def test_virgin_compressibility() -> None:
    model = Koppejan(elements(CONSTANTS, [20.0], [50.0]), options())
    # At the preconsolidation pressure, and beyond it at 90 kPa: 1 / (Cp' s).
    at_pc, at_90 = log(2.5) / 50, log(2.5) / 50 + log(1.8) / 12.5
    for strain, stress in ((at_pc, 50.0), (at_90, 90.0)):
        found = model.virgin_compressibility(np.array([strain]))
        assert found[0] == pytest.approx(1 / (12.5 * stress))
    # Without strain at the virgin line's own stress, 50 (20 / 50)^(12.5 / 50) = 39.76 kPa.
    assert model.virgin_compressibility(np.zeros(1))[0] == pytest.approx(0.00201190, 1e-5)
