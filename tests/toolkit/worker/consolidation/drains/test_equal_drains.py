"""Where drains act, and how much beside the outermost one and above their tip."""

import pytest
from sembra.local.worker.consolidation.drains.flow import PlaneFlow

from tests.toolkit.worker.consolidation.drains.made_drains import FLOW, RATE, drains


@pytest.mark.parametrize("x", [-10.0, 0.0, 10.0])
def test_rate_among_the_drains(x: float) -> None:
    assert drains().rate(x) == pytest.approx(RATE, rel=1e-6)


@pytest.mark.parametrize("side", [-1, 1])
def test_beside_the_outermost_drain_it_acts_by_four_times_the_distance(side: int) -> None:
    found = drains()
    # Drains at 2 m: from half a metre beside the outermost one they seem to stand further apart.
    assert found.rate(side * 10.5) == pytest.approx(RATE, rel=1e-6)
    # At 1 m they seem to stand 4 m apart, with Barron's factor for a ratio of 20.
    assert found.rate(side * 11.0) == pytest.approx(8 / (4.0**2 * 2.253865), rel=1e-6)
    assert found.rate(side * 35.0) == pytest.approx(FLOW.rate(100.0))


def test_beside_the_outermost_wall() -> None:
    found = drains(flow=PlaneFlow(1.7, 0.2))
    assert found.rate(10.4) == pytest.approx(12 / 1.5**2)
    assert found.rate(-12.0) == pytest.approx(12 / 7.8**2)


@pytest.mark.parametrize(
    ("top", "bottom", "part"), [(0, -2, 1), (-1, -3, 1), (-2, -4, 0.5), (-3, -5, 0), (-4, -6, 0)]
)
def test_reach(top: float, bottom: float, part: float) -> None:
    assert drains(bottom=-3.0).reach(top, bottom) == pytest.approx(part)


def test_drainage_starts_with_the_schedule() -> None:
    assert drains(start=7.0).start == 7.0
