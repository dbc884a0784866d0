"""The method of Koppejan, against its formula worked by hand."""

from itertools import pairwise
from math import exp, log, log10

import numpy as np
import pytest
from sembra.local.worker.ground.preconsolidation import PreconsolidationOption
from sembra.local.worker.soil_models.koppejan import Compressibility, Koppejan, secular_factor
from sembra.local.worker.soil_models.soil_model import StressStep
from sembra.local.worker.soil_models.stress_path import stress_path

from tests.toolkit.worker.input_file import calculated, input_text
from tests.toolkit.worker.made_options import options
from tests.toolkit.worker.result_file import verticals
from tests.toolkit.worker.soil_models.made_elements import Values, consolidated, elements

CONSTANTS = {"cp": 50.0, "cp1": 12.5, "cs": 300.0, "cs1": 75.0, "ap": 40.0, "asec": 250.0}

# From 20 to 90 kPa through 50 kPa: ln(2.5) = 0.916291 below and ln(1.8) = 0.587787 above it.
PRIMARY = 0.916291 / 50 + 0.587787 / 12.5
SECULAR = 0.916291 / 300 + 0.587787 / 75

EVERY_STEP = PreconsolidationOption.CONSTANT_CORRECTED_AT_EVERY_STEP


def model(
    *,
    initial: float = 20.0,
    pc: float = 50.0,
    natural: bool = False,
    reference_time: float = 1.0,
    correction: PreconsolidationOption = PreconsolidationOption.CONSTANT,
) -> Koppejan:
    return Koppejan(
        elements(CONSTANTS, [initial], [pc]),
        options(natural=natural, reference_time=reference_time, preconsolidation=correction),
    )


def steps(*pairs: tuple[float, float]) -> list[StressStep]:
    return [StressStep(time, np.array([stress])) for time, stress in pairs]


def test_strain_of_all_kinds() -> None:
    constants = Compressibility(np.array([40.0]), np.array([50.0]), np.array([12.5]))
    loaded = stress_path(np.array([20.0]), np.array([90.0]), np.array([50.0]))
    assert constants.strain(loaded)[0] == pytest.approx(0.0653487, abs=1e-7)
    unloaded = stress_path(np.array([90.0]), np.array([60.0]), np.array([50.0]))
    assert constants.strain(unloaded)[0] == pytest.approx(log(60 / 90) / 40)


def test_secular_factor_is_one_after_nine_reference_times() -> None:
    factors = secular_factor(np.array([-1.0, 0.0, 36.0, 396.0]), 4.0)
    assert factors == pytest.approx([0, 0, 1, 2])


def test_consolidation_holds_back_primary_strain_alone() -> None:
    times = np.array([0.0, 10.0, 109.0])
    degrees = np.array([[[0.0], [0.0], [0.5]]])
    (found,) = model().strains(steps((10, 90)), times, degrees)
    assert found[:, 0] == pytest.approx([0, 0, 0.5 * PRIMARY + 2 * SECULAR], rel=1e-5)
    assert found[-1, 0] == pytest.approx(0.0544573, abs=1e-7)


def test_secular_strain_goes_by_the_reference_time() -> None:
    times = np.array([99.0])
    degrees = np.zeros((1, 1, 1))
    (found,) = model(reference_time=11.0).strains(steps((0, 90)), times, degrees)
    assert found[0, 0] == pytest.approx(1.0 * SECULAR, rel=1e-5)


def test_load_steps_are_added() -> None:
    times = np.array([9.0, 109.0])
    degrees = np.array([[[0.6], [0.9]], [[0.0], [0.3]]])
    one, both = model().strains(steps((0, 40), (10, 90)), times, degrees)
    first = log(2) / 50, log(2) / 300
    second = log(1.25) / 50 + log(1.8) / 12.5, log(1.25) / 300 + log(1.8) / 75
    early = 0.6 * first[0] + 1 * first[1]
    late = 0.9 * first[0] + log10(110) * first[1]
    assert one[:, 0] == pytest.approx([early, late])
    assert both[:, 0] == pytest.approx([early, late + 0.3 * second[0] + 2 * second[1]])


def test_unloading_swells_by_its_own_constants() -> None:
    times = np.array([9.0])
    degrees = consolidated(times, 0.0)
    (found,) = model(initial=60.0, pc=70.0).strains(steps((0, 30)), times, degrees)
    assert found[0, 0] == pytest.approx(-log(2) * (1 / 40 + 1 / 250))


def test_elements_have_their_own_stresses() -> None:
    soil = elements(CONSTANTS, [20.0, 60.0], [50.0, 60.0])
    after = StressStep(0.0, np.array([40.0, 120.0]))
    degrees = np.array([[[1.0, 0.5]]])
    (found,) = Koppejan(soil, options()).strains([after], np.array([9.0]), degrees)
    below, above = log(2) * (1 / 50 + 1 / 300), log(2) * (0.5 / 12.5 + 1 / 75)
    assert found[0] == pytest.approx([below, above])


@pytest.mark.parametrize(
    ("correction", "below", "above"),
    [
        (PreconsolidationOption.CONSTANT, log(50 / 40), log(90 / 50)),
        (PreconsolidationOption.CONSTANT_CORRECTED_AT_START, log(50 / 40), log(90 / 50)),
        (EVERY_STEP, log(60 / 40), log(90 / 60)),
        (PreconsolidationOption.VARIABLE_CORRECTED_AT_EVERY_STEP, log(60 / 40), log(90 / 60)),
    ],
)
def test_correction_at_every_step_remembers_the_highest_stress(
    correction: PreconsolidationOption, below: float, above: float
) -> None:
    stresses = [np.array([stress]) for stress in (60.0, 40.0, 90.0)]
    first, off, again = model(correction=correction).paths(stresses)
    assert (first.below[0], first.above[0]) == pytest.approx((log(50 / 20), log(60 / 50)))
    assert off.swelling[0] == pytest.approx(log(40 / 60))
    assert (again.below[0], again.above[0]) == pytest.approx((below, above))


def test_strain_is_corrected_with_its_paths() -> None:
    times = np.array([12.0])
    loads = steps((0, 60), (1, 40), (3, 90))
    found = model(correction=EVERY_STEP).strains(loads, times, consolidated(times, 0, 1, 3))
    assert found[2, 0, 0] - found[1, 0, 0] == pytest.approx(
        log(60 / 40) * (1 / 50 + 1 / 300) + log(90 / 60) * (1 / 12.5 + 1 / 75)
    )


def test_natural_strain_is_turned_into_linear_strain_after_all() -> None:
    times = np.array([9.0])
    loads, degrees = steps((0, 40), (0, 90)), np.array([[[0.8]], [[0.5]]])
    linear = model().strains(loads, times, degrees)
    natural = model(natural=True).strains(loads, times, degrees)
    assert natural.ravel() == pytest.approx([1 - exp(-strain) for strain in linear.ravel()])


def test_layer_settlements_by_kind() -> None:
    # Two elements of 0.5 m and 1.5 m in the upper layer, and one of 2 m in the lower.
    soil = elements(CONSTANTS, [20.0, 40.0, 100.0], [50.0, 50.0, 120.0])
    stresses = [np.array([90.0, 80.0, 120.0]), np.array([45.0, 80.0, 60.0])]
    upper, lower = Koppejan(soil, options()).layer_settlements(
        stresses, np.array([0.5, 1.5, 2.0]), np.array([0, 0, 1])
    )
    below = 0.5 * log(2.5) + 1.5 * log(1.25)
    above = 0.5 * log(1.8) + 1.5 * log(1.6)
    for found, constants in ((upper.primary, (40, 50, 12.5)), (upper.secular, (250, 300, 75))):
        expected = (-0.5 * log(2) / constants[0], below / constants[1], above / constants[2])
        assert (found.swelling, found.below, found.above) == pytest.approx(expected)
    for found, constants in ((lower.primary, (40, 50, 12.5)), (lower.secular, (250, 300, 75))):
        expected = (-2 * log(2) / constants[0], 2 * log(1.2) / constants[1], 0.0)
        assert (found.swelling, found.below, found.above) == pytest.approx(expected)


def test_parameters() -> None:
    stated = {
        "SoilCp": 50.0,
        "SoilCp1": 12.5,
        "SoilCs": 300.0,
        "SoilCs1": 75.0,
        "SoilAp": 40.0,
        "SoilAsec": 250.0,
        "SoilApAsApproximationByCpCs": 0,
    }
    assert Koppejan.read(Values(**stated)) == CONSTANTS
    approximated = Koppejan.read(Values(**stated | {"SoilApAsApproximationByCpCs": 1}))
    assert approximated == CONSTANTS | {"ap": 50.0, "asec": 300.0}


def test_preconsolidation_stands_in_the_result_file() -> None:
    assert model().printed_preconsolidation == pytest.approx([50.0])


def test_one_layer_by_hand() -> None:
    text = input_text(loads=[("weight", -1, 10.0, 1.0, 0.0), ("Fill", 0, 20.0, 1.5, 0.0)])
    vertical = verticals(calculated(text))[0]
    by_hand = 0.0
    for top, bottom in pairwise(vertical["depths"]):
        before = -15 * (top + bottom) / 2 + 10.0
        after = before + 30.0
        pc = max(30.0, before)
        below, above = log(min(after, pc) / before), max(log(after / pc), 0.0)
        decades = log10(1 + 10000)
        strain = below * (1 / 50 + decades / 300) + above * (1 / 12.5 + decades / 75)
        by_hand += (top - bottom) * strain
    assert vertical["per_load"][1][-1] == pytest.approx(by_hand, abs=1e-7)
    assert by_hand > 0.2


def test_swelling_constants_out_of_compression_constants() -> None:
    loads = [("up", -1, 10.0, 5.0, 0.0), ("off", 0, -10.0, 4.0, 0.0)]
    approximated = input_text(loads=loads, soils={"Clay": {"SoilApAsApproximationByCpCs": 1}})
    stated = input_text(loads=loads, soils={"Clay": {"SoilAp": 50.0, "SoilAsec": 300.0}})
    heave = verticals(calculated(approximated))[0]["per_load"]
    assert heave == verticals(calculated(stated))[0]["per_load"]
    assert heave[-1][-1] < 0
