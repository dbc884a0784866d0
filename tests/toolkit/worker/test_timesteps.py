"""Times of a calculation."""

import pytest
from sembra.local.worker.timesteps import calculation_times, step_times


def test_steps_of_one_day() -> None:
    expected = [0.1, 0.205061218966, 0.338702261693, 0.508697703179, 0.724937037565, 1.0]
    assert step_times(1.0) == pytest.approx(expected, abs=1e-12)


def test_ten_steps_to_a_decade() -> None:
    assert len(step_times(1000.0)) - len(step_times(100.0)) == 10
    assert step_times(10000.0)[-1] == 10000.0


@pytest.mark.parametrize("duration", [0.01, 0.1, 0.11, 0.15, 0.2, 7.0, 123.4])
def test_times_ascend_to_the_end(duration: float) -> None:
    times = step_times(duration)
    assert times == sorted(set(times))
    assert times[-1] == duration


def test_every_load_starts_anew() -> None:
    times = calculation_times([0.0, 1.0, 0.0], 2.0).tolist()
    assert times[:2] == [0.0, 0.1]
    assert times[6:9] == pytest.approx([1.0, 1.1, 1.205061218966])
    assert times[-1] == 2.0


def test_wanted_times_are_put_in_once() -> None:
    plain = calculation_times([0.0], 100.0).tolist()
    times = calculation_times([0.0], 100.0, [50.0, 7.0, 0.0, 100.0]).tolist()
    assert sorted([*plain, 7.0, 50.0]) == times
