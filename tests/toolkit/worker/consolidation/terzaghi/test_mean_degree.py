"""The mean degree of consolidation of a layer, against the textbook's table and by hand."""

from math import exp, pi, sqrt

import numpy as np
import pytest
from sembra.local.worker.consolidation.terzaghi.degrees import mean_degree

# Time factor c_v t / h², h half the distance between drained sides, and degree of consolidation,
# as printed in textbooks of soil mechanics (Terzaghi and Peck).
TABLE = [
    (0.008, 0.10),
    (0.031, 0.20),
    (0.071, 0.30),
    (0.126, 0.40),
    (0.197, 0.50),
    (0.287, 0.60),
    (0.403, 0.70),
    (0.567, 0.80),
    (0.848, 0.90),
    (1.129, 0.95),
]


def degree(factor: float) -> float:
    return float(mean_degree(np.array([factor]))[0])


@pytest.mark.parametrize(("time_factor", "expected"), TABLE)
def test_published_table(time_factor: float, expected: float) -> None:
    assert degree(time_factor / 4) == pytest.approx(expected, abs=0.002)


def test_three_terms_by_hand() -> None:
    # The third term at 0.05, 8 / (25 pi²) exp(-1.25 pi²) = 1.4e-7, is the first below 1e-5.
    terms = [8 / (n * pi) ** 2 * exp(-(n**2) * pi**2 * 0.05) for n in (1, 3, 5)]
    assert terms[1] > 1e-5 > terms[2]
    assert degree(0.05) == pytest.approx(1 - sum(terms), rel=1e-14)
    # Three terms, and not two: they differ by more than what is asked for.
    assert abs(degree(0.05) - (1 - sum(terms[:2]))) > 1e-7


@pytest.mark.parametrize("factor", [1e-9, 1e-6, 1e-4, 1e-3, 0.01, 0.1, 0.3, 1.0, 3.0])
def test_series_ends_with_the_first_term_below_its_least(factor: float) -> None:
    excess, wave, term = 0.0, 1, 1.0
    while term >= 1e-5:
        term = 8 / (wave * pi) ** 2 * exp(-((wave * pi) ** 2) * factor)
        excess += term
        wave += 2
    assert degree(factor) == pytest.approx(1 - excess, abs=1e-13)


def test_early_consolidation_is_that_of_a_half_space_but_for_the_rest_of_the_series() -> None:
    # Without the cut it is 4 sqrt(T / pi). At the beginning 143 terms leave 0.0014 out.
    assert degree(0.01) == pytest.approx(4 * sqrt(0.01 / pi), abs=2e-5)
    assert degree(1e-12) == pytest.approx(2 / (143 * pi**2), rel=1e-4)


def test_nothing_before_the_load_and_all_at_last() -> None:
    with np.errstate(all="raise", under="ignore"):
        found = mean_degree(np.array([-1e9, -1.0, 0.0, 100.0, 1e30]))
    assert found == pytest.approx([0, 0, 0, 1, 1], abs=1e-15)


def test_consolidation_never_goes_back() -> None:
    # The cut makes steps of less than its least term.
    found = mean_degree(np.geomspace(1e-9, 10.0, 2000))
    assert np.all(np.diff(found) > -1e-5)
    assert np.all((found > 0) & (found <= 1))
