"""Strain by the method of Koppejan, against the formulas worked by hand."""

from itertools import pairwise
from math import log, log10

import numpy as np
import pytest
from sembra.local.worker.soil_models.koppejan import (
    Compressibility,
    secular_factor,
)
from sembra.local.worker.soil_models.stress_path import stress_path

from tests.toolkit.worker.input_file import calculated, input_text
from tests.toolkit.worker.result_file import verticals


def path(before: float, after: float, preconsolidation: float) -> tuple[float, float, float]:
    parts = stress_path(np.array([before]), np.array([after]), np.array([preconsolidation]))
    return float(parts.swelling[0]), float(parts.below[0]), float(parts.above[0])


def test_loading_below_preconsolidation() -> None:
    assert path(20.0, 30.0, 50.0) == pytest.approx((0, log(30 / 20), 0))


def test_loading_above_preconsolidation() -> None:
    assert path(60.0, 90.0, 50.0) == pytest.approx((0, 0, log(90 / 60)))


def test_loading_through_preconsolidation_is_split() -> None:
    assert path(20.0, 90.0, 50.0) == pytest.approx((0, log(50 / 20), log(90 / 50)))


def test_unloading_swells() -> None:
    assert path(90.0, 60.0, 50.0) == pytest.approx((log(60 / 90), 0, 0))


def test_no_change_of_stress_gives_no_strain() -> None:
    assert path(60.0, 60.0, 50.0) == (0, 0, 0)


def test_strain_of_all_kinds() -> None:
    constants = Compressibility(np.array([40.0]), np.array([50.0]), np.array([12.5]))
    parts = stress_path(np.array([20.0]), np.array([90.0]), np.array([50.0]))
    assert constants.strain(parts)[0] == pytest.approx(log(50 / 20) / 50 + log(90 / 50) / 12.5)


def test_secular_factor_is_one_after_nine_reference_times() -> None:
    factors = secular_factor(np.array([-1.0, 0.0, 36.0]), 4.0)
    assert factors == pytest.approx([0, 0, 1])


def test_one_layer_by_hand() -> None:
    text = input_text(loads=[("weight", -1, 10.0, 1.0, 0.0), ("Fill", 0, 20.0, 1.5, 0.0)])
    vertical = verticals(calculated(text))[0]
    levels = vertical["depths"]
    by_hand = 0.0
    for top, bottom in pairwise(levels):
        before = -15 * (top + bottom) / 2 + 10.0
        after = before + 30.0
        pc = max(30.0, before)
        below, above = log(min(after, pc) / before), max(log(after / pc), 0.0)
        decades = log10(1 + 10000)
        strain = below * (1 / 50 + decades / 300) + above * (1 / 12.5 + decades / 75)
        by_hand += (top - bottom) * strain
    assert vertical["per_load"][1][-1] == pytest.approx(by_hand, abs=1e-7)
    assert by_hand > 0.2


def test_natural_strain_is_less_than_linear() -> None:
    linear = verticals(calculated(input_text()))[0]["per_load"][-1][-1]
    natural = verticals(calculated(input_text(model={"Strain type": 1})))[0]["per_load"][-1][-1]
    assert 0 < natural < linear


def test_swelling_constants_out_of_compression_constants() -> None:
    loads = [("up", -1, 10.0, 5.0, 0.0), ("off", 0, -10.0, 4.0, 0.0)]
    approximated = input_text(loads=loads, soils={"Clay": {"SoilApAsApproximationByCpCs": 1}})
    stated = input_text(loads=loads, soils={"Clay": {"SoilAp": 50.0, "SoilAsec": 300.0}})
    heave = verticals(calculated(approximated))[0]["per_load"]
    assert heave == verticals(calculated(stated))[0]["per_load"]
    assert heave[-1][-1] < 0
