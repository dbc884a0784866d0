"""What an element lets flow and keeps, against the plain series of Carslaw and Jaeger."""

import numpy as np
import pytest
from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.darcy.kernels import Kernels, Response

LEAKAGES = np.array([0.0, 1e-6, 0.3, 11.0, 400.0])
TIMES = np.array([1e-5, 1e-3, 0.0099, 0.0101, 0.2, 1.5, 60.0])
TERMS = 20000


def kernels(times: Floats, leakages: Floats = LEAKAGES) -> Kernels:
    return Response(leakages).at(np.repeat(times[:, None], len(leakages), axis=1))


def plain_series(time: float, leakage: float) -> tuple[float, float, float]:
    order = np.arange(1, TERMS + 1)
    rate = (np.pi * order) ** 2 + 4 * leakage
    passed = -np.expm1(-rate * time)
    odd = order % 2 == 1
    sign = np.where(odd, -1, 1)
    return (
        float((2 / rate * passed).sum()),
        float((-2 * sign / rate * passed).sum()),
        float((8 / ((np.pi * order) ** 2 * rate) * passed)[odd].sum()),
    )


def test_they_are_the_sums_of_the_series() -> None:
    values = kernels(TIMES).values
    for row, leakage in enumerate(LEAKAGES):
        for column, time in enumerate(TIMES):
            # The terms that the plain series leaves out add up to 2 / (pi² TERMS) at most.
            assert values[:, column, row] == pytest.approx(
                plain_series(float(time), float(leakage)), abs=1.1e-5
            )


def test_both_ways_of_adding_up_meet() -> None:
    at_border = kernels(np.array([0.01 - 1e-12, 0.01 + 1e-12])).values
    assert at_border[:, 0] == pytest.approx(at_border[:, 1], abs=1e-10)


def test_after_a_long_time_without_leakage() -> None:
    values = kernels(np.array([100.0]), np.zeros(1)).values[:, 0, 0]
    assert values == pytest.approx([1 / 3, 1 / 6, 1 / 12])


def test_nothing_has_flowed_at_first() -> None:
    assert np.all(kernels(np.zeros(1)).values == 0)


@pytest.mark.parametrize("time", [0.002, 0.05, 0.4])
def test_what_comes_in_flows_out_leaks_or_stays(time: float) -> None:
    step = 1e-6
    around = kernels(np.array([time - step, time, time + step]))
    growth = (around.mean[2] - around.mean[0]) / (2 * step)
    out_of_the_ends = 2 * (around.direct[1] + around.other[1])
    leaked = 4 * LEAKAGES * around.mean[1]
    assert growth + out_of_the_ends + leaked == pytest.approx(np.ones(len(LEAKAGES)), abs=1e-5)
