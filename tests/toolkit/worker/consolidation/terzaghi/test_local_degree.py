"""The degree of consolidation of a part of a layer, against other solutions."""

import itertools
from math import erf, pi, sqrt

import numpy as np
import pytest
from sembra.local.worker.consolidation.terzaghi.degrees import mean_degree
from sembra.local.worker.consolidation.terzaghi.local_degree import TERMS, local_degree

FACTORS = np.array([0.001, 0.01, 0.03, 0.049, 0.051, 0.1, 0.5, 2.0])


def test_the_mean_over_all_of_a_layer_is_its_mean_degree() -> None:
    # That ends its series with the first term below 1e-5.
    assert local_degree(FACTORS, 0.0, 1.0) == pytest.approx(mean_degree(FACTORS), abs=3e-4)
    assert local_degree(FACTORS[2:], 0.0, 1.0) == pytest.approx(mean_degree(FACTORS[2:]), abs=1e-6)


def test_at_time_0_the_series_is_cut() -> None:
    # What is left out: the sum over n from N on of 8 / ((2n + 1) pi)², which is about 2 / (N pi²).
    (whole,) = local_degree(np.zeros(1), 0.0, 1.0)
    assert whole == pytest.approx(2 / (TERMS * pi**2), rel=1e-6)
    (thin,) = local_degree(np.zeros(1), 0.0, 1e-5)
    assert thin > 0.95


def test_early_consolidation_at_a_depth_is_that_of_a_half_space() -> None:
    # 1 - U = erf(z / sqrt(4 c_v t)), long before the other side is felt.
    for factor in (0.001, 0.005):
        (found,) = local_degree(np.array([factor]), 0.09999, 0.10001)
        assert 1 - found == pytest.approx(erf(0.1 / sqrt(4 * factor)), abs=1e-6)


def test_late_consolidation_is_half_a_sine() -> None:
    parts = [(0.0, 0.25), (0.25, 0.5), (0.5, 0.75), (0.75, 1.0)]
    outer, inner, inner_below, outer_below = (
        1 - local_degree(np.array([1.0]), *part)[0] for part in parts
    )
    # The means of a sine over its first eighth and its second: 1 - cos 45° to cos 45°.
    assert outer / inner == pytest.approx(sqrt(2) - 1, rel=1e-9)
    assert (outer_below, inner_below) == pytest.approx((outer, inner))


def test_parts_make_up_the_whole() -> None:
    cuts = [0.0, 0.1, 0.45, 1.0]
    parts = [
        (lower - upper) * local_degree(FACTORS, upper, lower)
        for upper, lower in itertools.pairwise(cuts)
    ]
    assert sum(parts) == pytest.approx(local_degree(FACTORS, 0.0, 1.0), abs=1e-12)


def test_nothing_at_first_and_all_at_last() -> None:
    found = local_degree(np.array([0.0, 1e6]), 0.3, 0.6)
    assert found == pytest.approx([0, 1], abs=2e-4)
