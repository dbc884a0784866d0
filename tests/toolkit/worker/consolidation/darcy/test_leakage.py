"""Flow from the elements of a column to vertical drains."""

from math import log

import numpy as np
import pytest
from sembra.local.worker.consolidation.darcy.leakage import leakage
from sembra.local.worker.consolidation.drains.equal_drains import Drains
from sembra.local.worker.consolidation.drains.flow import RadialFlow
from sembra.local.worker.consolidation.drains.water import (
    Schedule,
    ScheduleKind,
    Stage,
    StandingWater,
)

from tests.toolkit.worker.consolidation.darcy.layers import STIFF, material

LEVELS = np.array([0.0, -0.5, -2.5, -3.5])
CLAY = [material(STIFF, horizontal_factor=3.0)] * 3
STAGES = (Stage(20.0, StandingWater(-1.0)), Stage(50.0, StandingWater(-2.0, 30.0)))
DRAINS = Drains(
    left=-10.0,
    right=10.0,
    bottom=-2.5,
    flow=RadialFlow(distance=2.0, grid_factor=1.0, drain_diameter=0.2),
    schedule=Schedule(ScheduleKind.DETAILED, STAGES),
)
# Barron's F for n = 10.
F = 100 / 99 * log(10) - 299 / 400
RATE = 8 / (4 * F)


def test_elements_above_the_tip_leak() -> None:
    found = leakage(DRAINS, 0.0, LEVELS, CLAY)
    assert found.factors == pytest.approx([RATE * 3 * 0.25 / 4, RATE * 3 * 4 / 4, 0])


def test_result_files_know_no_tip() -> None:
    found = leakage(DRAINS, 0.0, LEVELS, CLAY)
    assert found.stated == pytest.approx(RATE * 3 * np.array([0.25, 4.0, 1.0]) / 4)


def test_an_element_that_the_drains_end_in_does_not_leak() -> None:
    found = leakage(DRAINS, 0.0, np.array([0.0, -2.4, -2.6]), CLAY[:2])
    assert found.factors == pytest.approx([RATE * 3 * 2.4**2 / 4, 0])


def test_beside_the_drains_they_act_as_if_they_stood_four_times_as_far_apart() -> None:
    square = (4 * 3.0 / 0.2) ** 2
    factor = square / (square - 1) * log(60) - (3 * square - 1) / (4 * square)
    expected = 8 / (12.0**2 * factor) * 3 * 0.25 / 4
    assert leakage(DRAINS, 13.0, LEVELS, CLAY).factors[0] == pytest.approx(expected)


def test_nothing_leaks_before_the_start_of_drainage() -> None:
    found = leakage(DRAINS, 0.0, LEVELS, CLAY)
    assert np.all(found.factors_at(19.9) == 0)
    assert np.all(found.factors_at(20.0) == found.factors)


def test_the_water_of_the_moment_counts() -> None:
    found = leakage(DRAINS, 0.0, LEVELS, CLAY)
    assert found.pressure_at(49.0, LEVELS, 10.0) == pytest.approx([0, 0, 15, 25])
    assert found.pressure_at(50.0 - 1e-9, LEVELS, 10.0) == pytest.approx([-30, -30, -25, -15])
    assert found.changes == [20.0, 50.0]


def test_without_drains() -> None:
    found = leakage(None, 0.0, LEVELS, CLAY)
    assert np.all(found.factors_at(0.0) == 0)
    assert np.all(found.stated == 0)
    assert found.changes == []
