"""The pressure of the water in drains, and when it changes."""

import numpy as np
import pytest
from sembra.local.worker.consolidation.drains.water import (
    DrainWater,
    PipeWater,
    Schedule,
    ScheduleKind,
    Stage,
    StandingWater,
)

LEVELS = np.array([1.0, -1.0, -3.0, -6.0])


def test_standing_water_is_hydrostatic_below_its_level() -> None:
    assert StandingWater(-1.0).pressure(LEVELS, 9.81) == pytest.approx([0, 0, 19.62, 49.05])


def test_underpressure_is_taken_off_everywhere() -> None:
    found = StandingWater(-1.0, 40.0).pressure(LEVELS, 10.0)
    assert found == pytest.approx([-40, -40, -20, 10])


def test_water_around_a_pipe() -> None:
    # 5 kPa in a pipe at -3: the water stands up to half a metre above it.
    assert PipeWater(-3.0, 5.0).pressure(LEVELS, 10.0) == pytest.approx([0, 0, 5, 35])


def test_underpressure_is_the_least_pressure_around_a_pipe() -> None:
    found = PipeWater(-3.0, 5.0, 12.0).pressure(LEVELS, 10.0)
    assert found == pytest.approx([-12, -12, 5, 35])
    assert PipeWater(-3.0, -8.0, 12.0).pressure(LEVELS, 10.0) == pytest.approx([-12, -12, -8, 22])


def test_each_stage_lasts_until_the_next() -> None:
    waters: list[DrainWater] = [StandingWater(level) for level in (0.0, -1.0, -2.0)]
    stages = tuple(Stage(time, water) for time, water in zip((5, 10, 90), waters, strict=True))
    schedule = Schedule(ScheduleKind.DETAILED, stages)
    assert schedule.start == 5
    found = [schedule.water(time) for time in (0.0, 5.0, 9.9, 10.0, 50.0, 90.0, 1e6)]
    first, second, third = waters
    assert found == [first, first, first, second, second, third, third]
