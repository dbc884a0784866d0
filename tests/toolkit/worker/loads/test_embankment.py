"""Non-uniform loads: their strips, and how their stress spreads."""

from math import pi

import numpy as np
import pytest
from sembra.local.worker.failures import WorkerError
from sembra.local.worker.ground.polyline import Polyline
from sembra.local.worker.loads.non_uniform import Embankment, Site, strip_loads
from sembra.local.worker.spreading.distribution import Distribution, strip_share

from tests.toolkit.worker.embankments import (
    DEEP,
    FLAT,
    WIDE_EVERYWHERE,
    embankment,
    settlements,
    site,
    spreading,
    with_embankment,
    with_embankments,
    without_uniform_load,
)
from tests.toolkit.worker.input_file import calculated, input_text, refused
from tests.toolkit.worker.input_section import two_dimensional
from tests.toolkit.worker.result_file import verticals


def test_height_between_outline_and_ground() -> None:
    slope = embankment((20.0, 0.0), (40.0, 4.0), (80.0, 4.0), (100.0, 0.0))
    (load,) = strip_loads([slope], site())
    assert load.area == pytest.approx(240.0)
    assert load.pressures.max() == pytest.approx(4 * 18.0)
    assert load.pressures[0] == pytest.approx(0.05 * 18.0)
    assert load.stress(60.0, 0.0, np.array([-1e-5])) == pytest.approx([72.0], abs=1e-3)


def test_the_last_strip_may_be_narrower() -> None:
    (load,) = strip_loads([embankment((10.0, 0.0), (10.0, 1.0), (11.2, 1.0), (11.2, 0.0))], site())
    assert load.strips.left.tolist() == [10.0, 10.5, 11.0]
    assert load.strips.right[-1] == 11.2
    assert load.area == pytest.approx(1.2)


def test_a_temporary_load_goes_again() -> None:
    come, gone = strip_loads([embankment((10.0, 2.0), (30.0, 2.0), removal=200)], site())
    levels = np.array([-1.0, -7.0])
    assert (come.time, gone.time, gone.area) == (0, 200, come.area)
    assert come.stress(15.0, 0.0, levels) + gone.stress(15.0, 0.0, levels) == pytest.approx(
        [0.0, 0.0]
    )


def test_below_water_the_weight_is_that_of_displaced_water_less() -> None:
    water = Polyline(((0.0, 1.5), (100.0, 1.5)))
    (load,) = strip_loads([embankment((10.0, 4.0), (30.0, 4.0))], site(water))
    assert set(load.pressures.round(9)) == {1.5 * (20 - 10) + 2.5 * 18}


def test_no_stress_inside_the_load() -> None:
    surface = Polyline(((0.0, -3.0), (100.0, -3.0)))
    (load,) = strip_loads([embankment((10.0, 0.0), (30.0, 0.0))], site(surface=surface))
    assert load.stress(20.0, 0.0, np.array([-1.0, -2.9999])).tolist() == [0.0, 0.0]
    assert load.stress(20.0, 0.0, np.array([-3.0]))[0] == pytest.approx(54)


@pytest.mark.parametrize(("slope", "margin"), [(0.0, 0.02), (0.003, 0.03), (-0.05, 0.5)])
@pytest.mark.parametrize("x", [50.0, 50.3])
def test_on_a_gentle_slope_an_even_load_gives_its_weight(
    slope: float, margin: float, x: float
) -> None:
    surface = Polyline(((0.0, 0.0), (100.0, -100.0 * slope)))
    water = Polyline(((0.0, -200.0), (100.0, -200.0)))
    (load,) = strip_loads(
        [embankment((0.0, 2.0), (100.0, 2.0 - 100.0 * slope))], site(water, surface)
    )
    depths = np.array([1e-5, 0.1, 1.0, 5.0])
    assert load.stress(x, 0.0, surface.level(x) - depths) == pytest.approx([36.0] * 4, abs=margin)


def test_depth_counts_from_the_base_of_the_column() -> None:
    surface = Polyline(((0.0, 0.0), (50.0, 0.0), (50.0, -4.0), (100.0, -4.0)))
    (load,) = strip_loads([embankment((49.0, 0.0), (49.0, 2.0), (49.5, 2.0))], site(DEEP, surface))
    angles = [float(np.arctan2(side, 9.0)) for side in (-2.5, -2.0)]
    lower, upper = ((angle + np.sin(angle) * np.cos(angle)) / pi for angle in angles)
    stress = load.stress(51.5, 0.0, np.array([-9.0]))
    assert stress == pytest.approx([36.0 * (upper - lower)])


def test_columns_restart_at_every_vertex_of_outline_ground_and_loads_below() -> None:
    surface = Polyline(((0.0, 0.0), (20.2, 0.0), (100.0, 0.0)))
    lower = embankment((20.0, 0.0), (20.8, 1.0), (21.0, 0.0))
    upper = embankment((20.1, 0.1), (20.1, 3.0), (21.0, 3.0), time=5)
    _, load = strip_loads([lower, upper], site(surface=surface))
    assert load.strips.left == pytest.approx([20.1, 20.2, 20.7, 20.8])
    assert load.strips.right == pytest.approx([20.2, 20.7, 20.8, 21.0])


def test_an_excavation_takes_away_what_lies_above_its_outline() -> None:
    pit = Embankment(
        "Pit", 0, None, -18.0, -20.0, Polyline(((10.0, 0.0), (20.0, -4.0), (40.0, -4.0)))
    )
    (load,) = strip_loads([pit], site(Polyline(((0.0, -1.0), (100.0, -1.0)))))
    assert load.pressures[-1] == pytest.approx(-1 * 18 - 3 * (20 - 10))
    assert load.strips.base[-1] == -4.0
    # The soil in the pit is gone; on its slope it isn't.
    assert load.stress(30.0, 0.0, np.array([-3.9])) == pytest.approx([0.0], abs=0.02)
    assert load.stress(30.0, 0.0, np.array([-4.1])) == pytest.approx([-48.0], abs=0.03)
    assert load.stress(15.25, 0.0, np.array([-2.0])) == pytest.approx([0.0], abs=1.5)
    assert load.stress(15.25, 0.0, np.array([-2.15]))[0] < -15


def test_soil_improvement_fills_an_excavation_of_the_same_time() -> None:
    pit = Embankment("Pit", 0, None, -15.0, -15.0, Polyline(((10.0, -4.0), (40.0, -4.0))))
    sand = Embankment("Sand", 0, None, 18.0, 20.0, Polyline(((10.0, 0.0), (40.0, 0.0))))
    fill = Embankment("Fill", 9, None, 18.0, 20.0, Polyline(((10.0, 2.0), (40.0, 2.0))))
    for order in ([pit, sand, fill], [fill, sand, pit]):
        loads = {load.name: load for load in strip_loads(order, site())}
        assert [set(loads[name].strips.height) for name in ("Pit", "Sand", "Fill")] == [
            {4.0},
            {4.0},
            {2.0},
        ]
        assert set(loads["Sand"].strips.base) == {-4.0}


def test_a_load_beyond_the_ground_is_refused() -> None:
    with pytest.raises(WorkerError, match='"Dike" reaches beyond the limits of the ground'):
        strip_loads([embankment((90.0, 0.0), (95.0, 1.0), (101.0, 0.0))], site())


def test_too_many_columns_are_refused() -> None:
    narrow = Site(FLAT, DEEP, 10.0, spreading(width=1e-4))
    with pytest.raises(WorkerError, match='"Dike" would be cut into 100000 columns'):
        strip_loads([embankment((10.0, 1.0), (20.0, 1.0))], narrow)


def test_more_comes_under_water_as_the_ground_settles() -> None:
    water = Polyline(((0.0, 0.5), (100.0, 0.5)))
    (load,) = strip_loads([embankment((10.0, 4.0), (30.0, 4.0))], site(water))
    settled = load.submerged(lambda x: (x - 10) / 20)
    middle = settled.pressures[np.isclose(settled.strips.middles, 20.25)]
    wet = 0.5 + 10.25 / 20
    assert middle == pytest.approx([wet * (20 - 10) + (4 - wet) * 18])
    assert load.pressures == pytest.approx([0.5 * 10 + 3.5 * 18] * 40)
    assert load.submerged(lambda x: 0 * x + 9).pressures == pytest.approx([4 * (20 - 10)] * 40)


def test_slices_spread_from_within_the_load() -> None:
    slices = Site(FLAT, DEEP, 10.0, spreading(width=1.0, within=True))
    (load,) = strip_loads([embankment((50.0, 2.4), (51.0, 2.4))], slices)
    half = np.full(2, 0.5)
    shares = strip_share(Distribution.BOUSSINESQ, -half, half, np.array([3.0, 4.2]))
    stress = load.stress(50.5, 0.0, np.array([-3.0]))
    assert stress == pytest.approx([2.4 * 18 * shares.sum() / 2])


@pytest.mark.parametrize("distribution", Distribution)
def test_what_passes_a_level_is_the_weight_of_the_load(distribution: Distribution) -> None:
    ground = Polyline(((-5000.0, 0.0), (5000.0, 0.0)))
    place = Site(ground, Polyline(((-9e3, -9.0), (9e3, -9.0))), 10.0, spreading(distribution, 1.0))
    (load,) = strip_loads([embankment((-10.0, 0.0), (0.0, 4.0), (6.0, 0.0))], place)
    level = np.array([-7.0])
    passing = sum(load.stress(float(x), 0.0, level)[0] for x in np.arange(-2000, 2000, 0.5)) / 2
    assert passing == pytest.approx(18.0 * load.area, rel=1e-4)
    assert load.area == pytest.approx(32.0)


def test_initial_loads_know_themselves() -> None:
    loads = strip_loads([embankment((1.0, 1.0), (2.0, 1.0), time=-1)], site())
    assert loads[0].is_initial


def test_a_wide_load_settles_like_a_uniform_one() -> None:
    uniform = settlements(two_dimensional())
    wide = settlements(with_embankment(without_uniform_load(two_dimensional())))
    assert wide[-1][-1] == pytest.approx(uniform[-1][-1], rel=1e-3)
    assert wide[-1][-1] < uniform[-1][-1]


def test_a_wide_load_on_a_slope_settles_like_one_on_level_ground() -> None:
    level = with_embankment(without_uniform_load(two_dimensional()))
    slope = level.replace("  2        100.000          0.000", "  2        100.000         -5.000")
    slope = slope.replace("  4        100.000         -4.000", "  4        100.000         -9.000")
    slope = slope.replace("     100.000        2.000 = X", "     100.000       -3.000 = X")
    slope = slope.replace("     100.000        0.000 = X", "     100.000       -5.000 = X")
    found, expected = (verticals(calculated(text)) for text in (slope, level))
    for ours, theirs in zip(found, expected, strict=True):
        assert ours["per_load"][-1][-1] == pytest.approx(theirs["per_load"][-1][-1], rel=2e-3)


def test_a_temporary_load_leaves_less() -> None:
    bare = without_uniform_load(two_dimensional())
    for_good = settlements(with_embankment(bare))
    removed = settlements(with_embankment(bare, 1, 200))
    after_the_end = settlements(with_embankment(bare, 1, 10000))
    assert removed[-1][-1] < 0.8 * for_good[-1][-1]
    assert after_the_end == for_good
    assert len(removed) == len(for_good) + 1


def test_cross_sections_are_told() -> None:
    text = calculated(with_embankment(two_dimensional(), 1, 200))
    amounts = text.partition("[Amounts of Loads]\n")[2].partition("[End of Amounts of Loads]")[0]
    assert amounts.split() == ["2", "number", "of", "loads", "200.0000000", "200.0000000"]


def test_on_level_ground_a_wide_load_acts_like_a_uniform_one() -> None:
    bare = without_uniform_load(input_text())
    wide = with_embankments(bare, WIDE_EVERYWHERE)
    found, expected = (
        verticals(calculated(text))[0]["per_load"][-1][-1] for text in (wide, input_text())
    )
    assert found == pytest.approx(expected, rel=1e-4)


@pytest.mark.parametrize(
    ("temporary", "end", "problem"),
    [
        (2, 0, '"temporary" of load "Wide" should be 0 or 1 and is 2'),
        ("x", 0, 'should be a number and is "x"'),
    ],
)
def test_malformed_loads(temporary: object, end: object, problem: str) -> None:
    message = refused(with_embankment(two_dimensional(), temporary, end))
    assert "section [NON-UNIFORM LOADS], line " in message
    assert problem in message


def test_a_load_is_removed_after_it_has_come() -> None:
    message = refused(with_embankment(two_dimensional(), 1, 0))
    assert message == 'The load "Wide" is removed at 0 days, and comes no earlier.'


@pytest.mark.parametrize(
    ("outline", "problem"),
    [
        (((10, 0),), "a line needs at least two points"),
        (((10, 0), (30, 2), (20, 0)), "a line should run from left to right"),
    ],
)
def test_an_outline_that_is_none_is_refused(
    outline: tuple[tuple[float, float], ...], problem: str
) -> None:
    points = "".join(f"{x} {y} = X, Y\n" for x, y in outline)
    load = f"Dike\n0 18 20 0 0 = Time\n{len(outline)} = Number of co-ordinates\n{points}"
    message = refused(with_embankments(two_dimensional(), load))
    assert message == f'The outline of the load "Dike" can\'t be used: {problem}.'
