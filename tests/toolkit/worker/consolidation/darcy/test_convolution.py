"""What elements remember of earlier steps, against Terzaghi's theory of one layer."""

from math import exp, pi

import numpy as np
import pytest
from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.darcy.convolution import Convolution

ENDS = np.ones((2, 1))
NONE = np.zeros((2, 1))


def inside_after(times: Floats, diffusivity: Floats, leakage: float = 0.0) -> float:
    """Mean pressure in an element between drained ends, by a load of 1 in its first step."""
    memory = Convolution(times, 1)
    for number, value in enumerate(diffusivity):
        _, remembered = memory.begin(np.array([value]), np.array([leakage]))
        memory.end(ENDS if number == 0 else NONE, NONE)
    return float(remembered.inside[0])


def mean_pressure(factor: float) -> float:
    """1 - U of Terzaghi and Fröhlich (1936), by the time factor of both-sided drainage."""
    orders = range(1, 400, 2)
    return sum(8 / (m * pi) ** 2 * exp(-((m * pi) ** 2) * factor) for m in orders)


@pytest.mark.parametrize("factor", [0.02, 0.1, 0.4])
def test_a_load_dissipates_as_terzaghi_has_it(factor: float) -> None:
    early = 1e-5
    times = np.array([0.0, early, factor / 2, factor])
    assert inside_after(times, np.ones(3)) == pytest.approx(mean_pressure(factor), rel=1e-4)


def test_a_load_grows_within_its_step() -> None:
    times = np.array([0.0, 0.1, 0.3])
    moments = 0.2 + 0.1 * (np.arange(2000) + 0.5) / 2000
    mean = np.mean([mean_pressure(moment) for moment in moments])
    assert inside_after(times, np.ones(2)) == pytest.approx(mean, rel=1e-5)


def test_leakage_takes_its_share() -> None:
    times = np.array([0.0, 1e-5, 0.1])
    expected = mean_pressure(0.1) * exp(-4 * 2.0 * 0.1)
    assert inside_after(times, np.ones(2), leakage=2.0) == pytest.approx(expected, rel=2e-4)


def test_time_runs_by_diffusivity() -> None:
    slow = inside_after(np.array([0.0, 1e-3, 10.0]), np.full(2, 0.01))
    fast = inside_after(np.array([0.0, 1e-4, 1.0]), np.full(2, 0.1))
    assert slow == pytest.approx(fast)


def test_a_step_that_takes_over_at_the_same_age_leaves_the_rate_of_flow() -> None:
    # x_1 = x_2 = 0.2, where the mean would be divided by nothing.
    times = np.array([0.0, 1.0, 2.0])
    equal = inside_after(times, np.array([0.1, 0.2]))
    nearly = inside_after(times, np.array([0.1, 0.2001]))
    assert equal == pytest.approx(mean_pressure(0.2), rel=1e-4)
    assert equal == pytest.approx(nearly, rel=1e-3)


def test_changes_of_pressure_are_taken_away() -> None:
    memory = Convolution(np.array([0.0, 0.1, 0.2]), 1)
    memory.begin(np.ones(1), np.zeros(1))
    memory.end(ENDS, ENDS)
    _, remembered = memory.begin(np.ones(1), np.zeros(1))
    assert remembered.flow == pytest.approx(np.zeros((2, 1)), abs=1e-15)
    assert remembered.inside == pytest.approx(np.zeros(1), abs=1e-15)


def test_what_is_forgotten_changes_nothing() -> None:
    times = np.array([0.0, 1.0, 1000.0, 1001.0])
    assert inside_after(times, np.ones(3)) == pytest.approx(0, abs=1e-15)
