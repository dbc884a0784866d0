"""The load by which a profile is maintained, against areas and weights worked out by hand."""

from collections.abc import Sequence

import numpy as np
import pytest
from sembra.local.worker.ground.polyline import Polyline
from sembra.local.worker.loads.non_uniform import Embankment
from sembra.local.worker.loads.strip_load import StripLoad
from sembra.local.worker.loads.superelevation import MaintainedProfile
from sembra.local.worker.options import Superelevation

from tests.toolkit.worker.embankments import DEEP, embankment, site

FILL = embankment((10.0, 0.0), (10.0, 2.0), (30.0, 2.0), (30.0, 0.0))


def superelevation(
    places: Sequence[float],
    heights: Sequence[float],
    *,
    embankments: Sequence[Embankment] = (FILL,),
    water: Polyline = DEEP,
    time: float = 50.0,
) -> StripLoad:
    """The load at some verticals, of 16 and 19 kN/m³ above and below water."""
    profile = MaintainedProfile(Superelevation(time, 16.0, 19.0, 0.1), embankments, site(water))
    return profile.load(np.array(places), np.array(heights))


def height(load: StripLoad, x: float) -> float:
    """The height of the column at x, in its middle."""
    strips = load.strips
    (found,) = strips.height[(strips.left < x) & (x < strips.right)]
    return float(found)


def test_it_is_there_only_where_a_load_is() -> None:
    load = superelevation([20.0], [0.4])
    middles = load.strips.middles
    covered = (middles > 10.0) & (middles < 30.0)
    assert covered.any()
    assert not covered.all()
    assert load.strips.height == pytest.approx(np.where(covered, 0.4, 0.0))
    assert load.area == pytest.approx(0.4 * 20)
    assert load.pressures == pytest.approx(np.where(covered, 0.4 * 16, 0.0))


def test_between_verticals_it_is_linear_and_beyond_them_level() -> None:
    load = superelevation([15.0, 25.0], [0.2, 0.6])
    for x, expected in ((10.25, 0.2), (14.75, 0.2), (15.25, 0.21), (20.25, 0.41), (29.75, 0.6)):
        assert height(load, x) == pytest.approx(expected)
    assert load.area == pytest.approx(5 * 0.2 + 10 * 0.4 + 5 * 0.6)


def test_columns_restart_at_verticals() -> None:
    load = superelevation([20.2], [0.4])
    assert 20.2 in load.strips.left
    assert 20.2 in load.strips.right


def test_verticals_outside_the_load_count_too() -> None:
    load = superelevation([5.0, 20.0, 45.0], [0.1, 0.4, 0.0])
    assert height(load, 10.25) == pytest.approx(0.1 + 5.25 * 0.02)
    assert height(load, 29.75) == pytest.approx(0.4 - 9.75 * 0.016)
    assert load.area == pytest.approx(10 * 0.3 + 10 * 0.32)


@pytest.mark.parametrize("order", [(2, 1, 0), (1, 2, 0), (0, 2, 1)])
def test_the_order_of_the_verticals_does_not_matter(order: tuple[int, ...]) -> None:
    places, heights = (12.0, 18.0, 27.0), (0.3, 0.7, 0.1)
    load = superelevation(places, heights)
    other = superelevation([places[n] for n in order], [heights[n] for n in order])
    assert other.strips.left.tolist() == load.strips.left.tolist()
    assert other.strips.height.tolist() == load.strips.height.tolist()
    assert other.pressures.tolist() == load.pressures.tolist()
    ends, others = load.strips.ends, other.strips.ends
    assert [part.tolist() for part in others] == [part.tolist() for part in ends]


def test_its_ends_are_those_of_the_line_through_the_heights() -> None:
    load = superelevation([15.0, 25.0], [0.2, 0.6])
    _, heights = load.strips.ends
    (column,) = np.flatnonzero(load.strips.left == 20.0)
    assert heights[:, column] == pytest.approx([0.4, 0.42])


def test_where_the_ground_rises_there_is_none() -> None:
    load = superelevation([15.0, 25.0], [-0.3, 0.4])
    assert load.strips.height.min() == 0.0
    assert height(load, 12.25) == 0.0
    # From nothing at the vertical that rises, not from below it.
    assert height(load, 20.25) == pytest.approx(5.25 * 0.04)
    assert load.area == pytest.approx(10 * 0.2 + 5 * 0.4)
    assert superelevation([20.0], [-0.3]).area == 0.0


def test_it_stands_on_the_load() -> None:
    slope = embankment((10.0, 0.0), (20.0, 4.0), (30.0, 4.0), (30.0, 0.0))
    strips = superelevation([20.0], [0.5], embankments=[slope]).strips
    (on_slope,) = np.flatnonzero(strips.left == 12.5)
    (on_top,) = np.flatnonzero(strips.left == 25.0)
    assert strips.base[[on_slope, on_top]] == pytest.approx([2.75 * 0.4, 4.0])
    assert strips.slope[[on_slope, on_top]] == pytest.approx([0.4, 0.0])
    assert strips.tops[[on_slope, on_top]] == pytest.approx([1.6, 4.5])
    assert superelevation([20.0], [0.5], embankments=[slope]).area == pytest.approx(10.0)


def test_it_stands_on_the_highest_of_the_loads_that_lie_there() -> None:
    preload = embankment((10.0, 3.0), (20.0, 3.0), time=20.0, removal=40.0)
    upper = embankment((20.0, 2.5), (30.0, 2.5), time=50.0)
    later = embankment((10.0, 6.0), (30.0, 6.0), time=60.0)
    load = superelevation([20.0], [0.5], embankments=[later, preload, upper, FILL])
    strips = load.strips
    bases = {12.25: 2.0, 20.25: 2.5, 29.75: 2.5}
    for x, base in bases.items():
        (found,) = strips.base[(strips.left < x) & (x < strips.right)]
        assert found == pytest.approx(base)
    earlier = superelevation([20.0], [0.5], embankments=[preload, FILL], time=30.0).strips
    assert earlier.base[(earlier.left >= 10.0) & (earlier.right <= 20.0)] == pytest.approx(3.0)


def test_where_the_load_has_not_come_or_is_gone_there_is_none() -> None:
    gone = embankment((10.0, 2.0), (30.0, 2.0), removal=49.0)
    later = embankment((10.0, 2.0), (30.0, 2.0), time=51.0)
    for one in (gone, later):
        assert superelevation([20.0], [0.5], embankments=[one]).area == 0.0


def test_on_an_excavation_there_is_none() -> None:
    pit = embankment((10.0, 0.0), (10.0, -2.0), (30.0, -2.0), (30.0, 0.0))
    assert superelevation([20.0], [0.5], embankments=[pit]).area == 0.0


def test_what_of_it_stands_under_water_weighs_less() -> None:
    water = Polyline(((0.0, 2.0), (100.0, 3.0)))
    load = superelevation([20.0], [0.5], water=water)
    covered = load.strips.height > 0
    wet = load.strips.middles[covered] / 100
    expected = wet * (19 - 10) + (0.5 - wet) * 16
    assert load.pressures[covered] == pytest.approx(expected)
    assert load.time == 50.0
    assert not load.is_initial
