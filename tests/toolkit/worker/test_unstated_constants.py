"""Settlement and swelling with constants that nobody has stated."""

import pytest

from tests.toolkit.worker.drain_section import with_drains
from tests.toolkit.worker.input_file import calculated, input_text, refused
from tests.toolkit.worker.result_file import verticals
from tests.toolkit.worker.test_drained_settlement import CLAY, DEEP, HEAD, SIMPLE, START
from tests.toolkit.worker.test_embankment import with_embankment, without_uniform_load
from tests.toolkit.worker.test_geometry import two_dimensional

UNSTATED = {"SoilAp": 1.0, "SoilAsec": 1.0}
UP = ("up", 0, 10.0, 5.0, 0.0)
OFF = ("off", 30, -10.0, 4.0, 0.0)
MESSAGE = (
    "The material Clay is unloaded at {time} days. It would heave far too much, since its "
    "constants Ap and Asec are both 1, their value where none is stated. State them, or have them "
    "follow Cp and Cs."
)


def test_unloading_names_the_material_and_the_time() -> None:
    text = input_text(loads=[UP, OFF], soils={"Clay": UNSTATED})
    assert refused(text) == MESSAGE.format(time=30)


def test_a_removed_load_unloads() -> None:
    text = with_embankment(without_uniform_load(two_dimensional()), 1, 200)
    unstated = text.replace("SoilAp=40.0", "SoilAp=1.00E+00").replace(
        "SoilAsec=250.0", "SoilAsec=1"
    )
    assert calculated(text)
    assert refused(unstated) == MESSAGE.format(time=200)


def test_the_end_of_dewatering_unloads() -> None:
    plain = input_text(soils={"Clay": CLAY["Clay"] | UNSTATED}, phreatic_level=-0.5, end=5000)
    pumping = (SIMPLE, START, HEAD, DEEP)
    for_good = with_drains(plain, *pumping, ("    90.000 = End", "  9000.000 = End"))
    assert calculated(for_good)
    for_a_time = with_drains(plain, *pumping, ("    90.000 = End", "  2000.000 = End"))
    assert refused(for_a_time) == MESSAGE.format(time=2000)


def test_only_the_material_that_is_unloaded_counts() -> None:
    # The load acts from just below the peat on: only the clay bears it, and loses it.
    layers = [(0.0, "Peat"), (-2.0, "Clay")]
    loads = [(*load[:4], -2.000005) for load in (UP, OFF)]
    assert calculated(input_text(layers=layers, loads=loads, soils={"Peat": UNSTATED, "Clay": {}}))
    soils = {"Peat": {}, "Clay": UNSTATED}
    assert refused(input_text(layers=layers, loads=loads, soils=soils)) == MESSAGE.format(time=30)


@pytest.mark.parametrize("stated", [{"SoilAp": 1.0}, {"SoilAsec": 1.0}])
def test_one_stated_constant_is_a_choice(stated: dict[str, float]) -> None:
    assert calculated(input_text(loads=[UP, OFF], soils={"Clay": stated}))


def test_without_unloading_nobody_needs_them() -> None:
    stated, unstated = (
        verticals(calculated(input_text(loads=[UP], soils={"Clay": constants})))
        for constants in ({}, UNSTATED)
    )
    assert unstated == stated


def test_constants_that_follow_those_of_compression_are_stated() -> None:
    soil = UNSTATED | {"SoilApAsApproximationByCpCs": 1}
    assert calculated(input_text(loads=[UP, OFF], soils={"Clay": soil}))


@pytest.mark.parametrize(
    ("constants", "names"),
    [
        ({"SoilCp": 1.0, "SoilCp1": 1.0}, "Cp and Cp'"),
        ({"SoilCs": 1.0, "SoilCs1": 1.0}, "Cs and Cs'"),
    ],
)
def test_loading_names_the_material_and_the_constants(
    constants: dict[str, float], names: str
) -> None:
    assert refused(input_text(loads=[UP], soils={"Clay": constants})) == (
        "The material Clay is loaded at 0 days. It would settle far too much, since its constants "
        f"{names} are both 1, their value where none is stated. State them."
    )


@pytest.mark.parametrize("stated", [{"SoilCp": 1.0}, {"SoilCs1": 1.0}])
def test_one_stated_constant_of_compression_is_a_choice(stated: dict[str, float]) -> None:
    assert calculated(input_text(loads=[UP], soils={"Clay": stated}))
