"""Loads on loads: which of them another one rests on."""

from dataclasses import replace
from itertools import permutations

import numpy as np
import pytest
from sembra.local.worker.ground.polyline import Polyline
from sembra.local.worker.loads.non_uniform import strip_loads

from tests.toolkit.worker.embankments import (
    embankment,
    settlements,
    site,
    wide,
    with_embankments,
    without_uniform_load,
)
from tests.toolkit.worker.input_section import two_dimensional


def test_a_load_on_a_load() -> None:
    lower = embankment((10.0, 0.0), (10.0, 1.0), (30.0, 1.0), (30.0, 0.0))
    upper = embankment((10.0, 1.0), (10.0, 3.0), (30.0, 3.0), (30.0, 1.0), time=5)
    first, second = strip_loads([lower, upper], site())
    assert (first.area, second.area) == pytest.approx((20.0, 40.0))
    assert (first.time, second.time) == (0, 5)


def test_columns_beside_a_step_of_the_ground_stand_on_a_slope_to_its_foot() -> None:
    ground = Polyline(
        ((0.0, 0.0), (10.0, 0.0), (10.0, -2.0), (20.0, -2.0), (20.0, 0.0), (40.0, 0.0))
    )
    (load,) = strip_loads([embankment((9.5, 1.0), (22.0, 1.0))], replace(site(), surface=ground))
    # Columns of half a metre: one before the pit, twenty in it, four behind. That before it and the
    # first behind it stand on slopes of 2 m.
    assert load.strips.height == pytest.approx([2.0, *[3.0] * 20, 2.0, 1.0, 1.0, 1.0])
    assert load.area == pytest.approx(0.5 * (2.0 + 20 * 3.0 + 2.0 + 3.0))


@pytest.mark.parametrize("order", list(permutations(range(3))))
def test_loads_stack_by_time_and_level_whatever_their_order(order: tuple[int, ...]) -> None:
    stacked = [
        embankment((10.0, 1.0), (30.0, 1.0)),
        embankment((10.0, 3.0), (30.0, 3.0)),
        embankment((10.0, 3.5), (30.0, 3.5), time=5),
    ]
    loads = strip_loads([stacked[number] for number in order], site())
    assert [load.area for load in loads] == pytest.approx([(20.0, 40.0, 10.0)[n] for n in order])


def test_loads_of_one_time_may_cross() -> None:
    rising = embankment((10.0, 0.0), (30.0, 4.0))
    falling = embankment((10.0, 4.0), (30.0, 0.0))
    for pair in ([rising, falling], [falling, rising]):
        first, second = strip_loads(pair, site())
        middles = (first.strips.left + first.strips.right) / 2
        higher = 2 + np.abs(middles - 20) / 5
        assert first.strips.height + second.strips.height == pytest.approx(higher)


def test_where_loads_of_one_time_have_the_same_top_the_first_fills_the_space() -> None:
    wide = embankment((10.0, 2.0), (30.0, 2.0))
    narrow = embankment((20.0, 2.0), (30.0, 2.0))
    assert [load.area for load in strip_loads([wide, narrow], site())] == pytest.approx([40, 0])
    assert [load.area for load in strip_loads([narrow, wide], site())] == pytest.approx([20, 20])


@pytest.mark.parametrize("removal", [100, 200])
@pytest.mark.parametrize("order", [1, -1])
def test_a_removed_load_is_no_ground(removal: float, order: int) -> None:
    preload = embankment((10.0, 2.0), (30.0, 2.0), removal=removal)
    road = embankment((10.0, 0.5), (30.0, 0.5), time=200)
    loads = strip_loads([preload, road][::order], site())
    areas = {load.time: load.area for load in loads if load.pressures[0] > 0}
    assert areas == pytest.approx({0: 40.0, 200: 10.0})


@pytest.mark.parametrize("removal", [None, 200.1])
@pytest.mark.parametrize("order", [1, -1])
def test_a_load_within_one_that_still_lies_there_reaches_up_to_its_outline(
    removal: float | None, order: int
) -> None:
    preload = embankment((10.0, 2.0), (30.0, 2.0), removal=removal)
    road = embankment((10.0, 0.5), (30.0, 0.5), time=200)
    loads = strip_loads([preload, road][::order], site())
    (within,) = (load for load in loads if load.time == 200)
    assert set(within.strips.base) == {0.5}
    assert set(within.strips.height) == {1.5}


def test_a_load_after_a_removed_one_settles_the_same_in_either_order() -> None:
    preload, road = wide(temporary=1, end=100), wide(time=200, top=0.5)
    bare = without_uniform_load(two_dimensional())
    found = settlements(with_embankments(bare, preload, road))
    assert found == settlements(with_embankments(bare, road, preload))
    assert found[-1][-1] > settlements(with_embankments(bare, preload))[-1][-1] + 0.01
