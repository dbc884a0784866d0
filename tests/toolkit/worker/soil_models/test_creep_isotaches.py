"""Creep isotaches, on numbers worked by hand and on the isotaches of den Haan (1994).

With a = 0.01, b = 0.1 and c = 0.005 the exponent (b - a) / c is 18.
"""

from collections.abc import Sequence
from math import exp, log, log10

import numpy as np
import pytest
from sembra.local.worker.arrays import Floats
from sembra.local.worker.ground.preconsolidation import PreconsolidationOption
from sembra.local.worker.soil_models.bjerrum import Bjerrum
from sembra.local.worker.soil_models.isotache import Isotache
from sembra.local.worker.soil_models.soil_model import Elements, StressStep

from tests.toolkit.worker.made_material import material
from tests.toolkit.worker.made_options import options
from tests.toolkit.worker.soil_models.made_elements import Values, consolidated, elements

ABC = {"a": 0.01, "b": 0.1, "c": 0.005}


def model(
    initial: float = 50.0,
    preconsolidation: float = 60.0,
    *,
    reference_time: float = 1.0,
    natural: bool = False,
    **changes: float,
) -> Isotache:
    return Isotache(
        elements(ABC | changes, [initial], [preconsolidation]),
        options(reference_time=reference_time, natural=natural),
    )


def drained(soil: Isotache, times: Sequence[float], *steps: tuple[float, float]) -> Floats:
    """Strain at times by all of some load steps, each of a time and a stress, all drained."""
    at = np.array(times)
    loads = [StressStep(time, np.array([stress])) for time, stress in steps]
    degrees = consolidated(at, *(time for time, _ in steps))
    strain: Floats = soil.strains(loads, at, degrees)[-1, :, 0]
    return strain


@pytest.mark.parametrize(("reference_time", "intrinsic"), [(1.0, 26.6233), (4.0, 106.4933)])
def test_intrinsic_time_at_the_start(reference_time: float, intrinsic: float) -> None:
    # (60 / 50)^18 = 26.6233 reference times.
    found = drained(model(reference_time=reference_time), [10.0], (0, 50))
    assert found[0] == pytest.approx(0.005 * log(1 + 10 / intrinsic), rel=1e-5)


def test_creep_under_own_weight() -> None:
    found = drained(model(), [0.0, 10.0], (0, 50))
    assert found == pytest.approx([0, 0.00159449], abs=1e-8)


def test_normally_consolidated_soil_creeps_by_the_time_plus_one() -> None:
    found = drained(model(50.0, 50.0), [1.0, 99.0], (0, 50))
    assert found == pytest.approx([0.005 * log(2), 0.005 * log(100)])


def test_a_load_shortens_the_intrinsic_time() -> None:
    # 26.6233 (50 / 100)^18 = 1.0156e-4 days.
    found = drained(model(), [1e-4, 10.0], (0, 100))
    elastic = 0.01 * log(2)
    assert found[0] == pytest.approx(elastic + 0.005 * log(1 + 1e-4 / 1.01560e-4), rel=1e-5)
    assert found[1] == pytest.approx(0.0644188, abs=1e-7)


@pytest.mark.parametrize("days", [1.0, 10.0, 1000.0])
def test_virgin_compression_lies_on_its_isotache(days: float) -> None:
    # a ln(sp / s0) + b ln(s / sp) + c ln(t / t_ref), once t is long against the intrinsic time.
    (found,) = drained(model(), [days], (0, 100))
    expected = 0.01 * log(60 / 50) + 0.1 * log(100 / 60) + 0.005 * log(days)
    assert found == pytest.approx(expected, abs=1e-6)


def test_unloading_slows_creep_down() -> None:
    # After 10 days at 100 kPa, 10.0001 (100 / 80)^18 = 555.12 days at 80 kPa.
    (found,) = drained(model(), [110.0], (0, 100), (10, 80))
    expected = 0.0644188 + 0.01 * log(80 / 100) + 0.005 * log(655.117 / 555.117)
    assert found == pytest.approx(expected, abs=1e-7)


def test_reloading_below_the_preconsolidation_pressure_is_elastic_at_first() -> None:
    stiff = model(50.0, 200.0)
    (found,) = drained(stiff, [1.0], (0, 100))
    assert found == pytest.approx(0.01 * log(2), abs=1e-7)


def test_loads_by_parts_are_one_load() -> None:
    parts = drained(model(), [5.0, 50.0], (0, 70), (0, 100))
    assert parts == pytest.approx(drained(model(), [5.0, 50.0], (0, 100)))


def test_own_weight_creeps_until_the_first_load_and_counts_with_it() -> None:
    early, late = drained(model(), [100.0, 110.0], (100, 100))
    assert early == 0
    intrinsic = (26.62333 + 100) * 0.5**18
    expected = 0.01 * log(2) + 0.005 * (log(126.62333 / 26.62333) + log(1 + 10 / intrinsic))
    assert late == pytest.approx(expected, rel=1e-6)


# Without creep, and with the highest stress remembered through unloading and reloading.
@pytest.mark.parametrize(
    ("path", "virgin"),
    [
        ((50,), 1.0),
        ((55,), 1.0),
        ((100,), 100 / 60),
        ((100, 70), 100 / 60),
        ((100, 70, 90), 100 / 60),
        ((100, 70, 120), 120 / 60),
    ],
)
def test_without_creep(path: tuple[float, ...], virgin: float) -> None:
    steps = [(float(time), stress) for time, stress in enumerate(path)]
    (found,) = drained(model(c=0.0), [20.0], *steps)
    assert found == pytest.approx(0.01 * log(path[-1] / 50) + 0.09 * log(virgin), abs=1e-15)
    # Creep by 1e-7 for each factor e of time is next to none.
    (limit,) = drained(model(c=1e-7), [20.0], *steps)
    assert limit == pytest.approx(found, abs=2e-6)


@pytest.mark.parametrize("c", [1e-4, 1e-9, 1e-30, 1e-200])
def test_intrinsic_times_beyond_all_numbers(c: float) -> None:
    with np.errstate(over="raise", invalid="raise", divide="raise"):
        loaded = drained(model(c=c), [1e-6, 10.0, 1e6], (0, 100), (20, 40), (30, 150))
    # By less than the creep of thirty factors e of time.
    expected = [0.01 * log(2) + 0.09 * log(100 / 60)] * 2
    expected.append(0.01 * log(3) + 0.09 * log(150 / 60))
    assert loaded == pytest.approx(expected, abs=30 * c + 1e-12)


def test_materials_with_and_without_creep_in_one_column() -> None:
    soils = [material(parameters=ABC | {"c": c}) for c in (0.005, 0.0)]
    both = Isotache(Elements(soils, np.full(2, 50.0), np.full(2, 60.0)), options())
    times = np.array([10.0])
    stress = np.array([100.0, 100.0])
    found = both.strains([StressStep(0.0, stress)], times, consolidated(times, 0.0, count=2))
    alone = [drained(model(c=c), [10.0], (0, 100))[0] for c in (0.005, 0.0)]
    assert found[0, 0] == pytest.approx(alone)


def test_natural_strain() -> None:
    times = [0.5, 10.0, 1000.0]
    linear = drained(model(), times, (0, 100), (5, 200))
    natural = drained(model(natural=True), times, (0, 100), (5, 200))
    assert natural == pytest.approx([1 - exp(-strain) for strain in linear])


@pytest.mark.parametrize("natural", [False, True])
def test_drained_strains_are_superposed(natural: bool) -> None:
    soil = model(natural=natural)
    times = np.array([2.0, 10.0, 40.0])
    loads = [StressStep(0.0, np.array([80.0])), StressStep(5.0, np.array([120.0]))]
    first, second = np.array([0.2, 0.5, 0.8]), np.array([0.0, 0.3, 0.7])
    degrees = np.array([first, second])[:, :, None]
    one, both = soil.strains(loads, times, degrees)[:, :, 0]
    # The strain under the first load alone, and what the second adds to it.
    alone = drained(soil, times.tolist(), (0, 80))
    together = drained(soil, times.tolist(), (0, 80), (5, 120))
    assert one == pytest.approx(first * alone)
    assert both == pytest.approx(first * alone + second * (together - alone))
    # Creep under the first load is held back as well, and the second hastens it.
    assert both[2] > one[2] > 0


@pytest.mark.parametrize("correction", list(PreconsolidationOption))
def test_corrections_of_the_preconsolidation_pressure_change_nothing(
    correction: PreconsolidationOption,
) -> None:
    steps, times = ((0.0, 100.0), (5.0, 60.0), (9.0, 90.0)), [3.0, 20.0]
    soil = elements(ABC, [50.0], [60.0])
    corrected = Isotache(soil, options(preconsolidation=correction))
    assert drained(corrected, times, *steps).tolist() == drained(model(), times, *steps).tolist()


def test_parameters_of_isotaches() -> None:
    stated = Values(SoilPriCompIndex=0.01, SoilSecCompIndex=0.1, SoilSecCompRate=0.005)
    assert Isotache.read(stated) == ABC
    assert Isotache.preconsolidation_key == "SoilPreconIsotacheType"


INDICES = {"SoilCrIndex": 0.06, "SoilCcIndex": 0.6, "SoilInitialVoidRatio": 2.0}
RATIOS = {"SoilRRatio": 0.03, "SoilCRatio": 0.3}


def test_bjerrum_by_ratios() -> None:
    stated = Values(SoilCompRatio=1, SoilCa=0.01, **RATIOS, **INDICES)
    found = Bjerrum.read(stated)
    assert found == pytest.approx({"a": 0.0130288, "b": 0.130288, "c": 0.00434294}, rel=1e-5)
    assert Bjerrum.preconsolidation_key == "SoilPreconIsotacheType"


def test_bjerrum_by_indices_and_void_ratio() -> None:
    # Indices are of void ratio, and C_alpha is of strain all the same.
    stated = Values(SoilCompRatio=0, SoilCa=0.01, SoilRRatio=9.0, SoilCRatio=9.0, **INDICES)
    found = Bjerrum.read(stated)
    assert found == pytest.approx({"a": 0.00868589, "b": 0.0868589, "c": 0.00434294}, rel=1e-5)


def test_bjerrum_by_decimal_logarithms() -> None:
    parameters = Bjerrum.read(Values(SoilCompRatio=1, SoilCa=0.01, **RATIOS))
    soil = Bjerrum(elements(parameters, [50.0], [60.0]), options())
    times = np.array([100.0])
    load = StressStep(0.0, np.array([100.0]))
    found = soil.strains([load], times, consolidated(times, 0.0))[0, 0, 0]
    # RR log10(sp / s0) + CR log10(s / sp) + C_alpha log10(t / t_ref)
    expected = 0.03 * log10(1.2) + 0.3 * log10(100 / 60) + 0.01 * 2
    assert found == pytest.approx(expected, abs=1e-6)


def test_preconsolidation_stands_in_result_files_of_bjerrum_alone() -> None:
    soil = elements(ABC, [50.0], [60.0])
    assert Isotache(soil, options()).printed_preconsolidation is None
    assert Bjerrum(soil, options()).printed_preconsolidation == pytest.approx([60.0])
