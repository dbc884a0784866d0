"""Non-uniform loads: their strips, and how their stress spreads."""

from math import pi

import numpy as np
import pytest
from sembra.local.worker.errors import WorkerError
from sembra.local.worker.ground.cross_section import Polyline
from sembra.local.worker.loads.non_uniform import Embankment, Site, StripLoad, strip_loads
from sembra.local.worker.loads.spreading import Distribution, strip_share

from tests.toolkit.worker.input_file import calculated, input_text, refused
from tests.toolkit.worker.result_file import verticals
from tests.toolkit.worker.test_geometry import two_dimensional

FLAT = Polyline(((0.0, 0.0), (100.0, 0.0)))
DEEP = Polyline(((0.0, -50.0), (100.0, -50.0)))


def site(phreatic_line: Polyline = DEEP, surface: Polyline = FLAT) -> Site:
    return Site(surface, phreatic_line, 10.0, 0.5, Distribution.BOUSSINESQ)


def embankment(
    *points: tuple[float, float], time: float = 0, removal: float | None = None
) -> Embankment:
    return Embankment("Dike", time, removal, 18.0, 20.0, Polyline(points))


def share(distribution: Distribution, left: float, right: float, depth: float) -> float:
    return float(strip_share(distribution, np.array([left]), np.array([right]), depth)[0])


# Stress below the middle of a strip against depth over width, as tabulated for Boussinesq.
@pytest.mark.parametrize(("depth", "part"), [(0.5, 0.818), (1.0, 0.550), (2.0, 0.306), (4, 0.158)])
def test_published_values_below_a_strip(depth: float, part: float) -> None:
    assert share(Distribution.BOUSSINESQ, -0.5, 0.5, depth) == pytest.approx(part, abs=1e-3)


@pytest.mark.parametrize(
    ("distribution", "factor", "power"),
    [(Distribution.BOUSSINESQ, 2 / pi, 4), (Distribution.BUISMAN, 3 / 4, 5)],
)
def test_a_strip_is_the_sum_of_its_line_loads(
    distribution: Distribution, factor: float, power: int
) -> None:
    depth, count = 3.0, 20000
    places = -1.0 + (np.arange(count) + 0.5) * 5.0 / count
    cosines = depth / np.hypot(places, depth)
    lines = factor / depth * (cosines**power).sum() * 5.0 / count
    assert share(distribution, -1.0, 4.0, depth) == pytest.approx(float(lines), rel=1e-6)


@pytest.mark.parametrize("distribution", Distribution)
def test_an_endless_strip_gives_all_and_its_edge_half(distribution: Distribution) -> None:
    assert share(distribution, -1e9, 1e9, 5.0) == pytest.approx(1.0)
    assert share(distribution, 0.0, 1e9, 5.0) == pytest.approx(0.5)
    assert share(distribution, -1.0, 1.0, 0.0) == 0.0


def test_height_between_outline_and_ground() -> None:
    slope = embankment((20.0, 0.0), (40.0, 4.0), (80.0, 4.0), (100.0, 0.0))
    (load,) = strip_loads([slope], site())
    assert load.area == pytest.approx(240.0)
    assert load.strips.pressure.max() == pytest.approx(4 * 18.0)
    assert load.strips.pressure[0] == pytest.approx(0.05 * 18.0)
    assert load.stress(60.0, np.array([-1e-5])) == pytest.approx([72.0], abs=1e-3)


def test_the_last_strip_may_be_narrower() -> None:
    (load,) = strip_loads([embankment((10.0, 0.0), (10.0, 1.0), (11.2, 1.0), (11.2, 0.0))], site())
    assert load.strips.left.tolist() == [10.0, 10.5, 11.0]
    assert load.strips.right[-1] == 11.2
    assert load.area == pytest.approx(1.2)


def test_a_temporary_load_goes_again() -> None:
    come, gone = strip_loads([embankment((10.0, 2.0), (30.0, 2.0), removal=200)], site())
    levels = np.array([-1.0, -7.0])
    assert (come.time, gone.time, gone.area) == (0, 200, come.area)
    assert come.stress(15.0, levels) + gone.stress(15.0, levels) == pytest.approx([0.0, 0.0])


def test_below_water_the_weight_is_that_of_displaced_water_less() -> None:
    water = Polyline(((0.0, 1.5), (100.0, 1.5)))
    (load,) = strip_loads([embankment((10.0, 4.0), (30.0, 4.0))], site(water))
    assert set(load.strips.pressure.round(9)) == {1.5 * (20 - 10) + 2.5 * 18}


def test_no_stress_above_the_surface_below_the_load() -> None:
    surface = Polyline(((0.0, -3.0), (100.0, -3.0)))
    (load,) = strip_loads([embankment((10.0, 0.0), (30.0, 0.0))], site(surface=surface))
    assert load.stress(20.0, np.array([-1.0, -3.0])).tolist() == [0.0, 0.0]
    assert load.stress(20.0, np.array([-3.1]))[0] > 50


@pytest.mark.parametrize("slope", [-0.5, 0.003, 0.05, 0.2])
@pytest.mark.parametrize("x", [50.0, 50.3])
def test_on_a_slope_an_even_load_gives_all_of_its_weight(slope: float, x: float) -> None:
    surface = Polyline(((0.0, 0.0), (100.0, -100.0 * slope)))
    water = Polyline(((0.0, -200.0), (100.0, -200.0)))
    (load,) = strip_loads(
        [embankment((0.0, 2.0), (100.0, 2.0 - 100.0 * slope))], site(water, surface)
    )
    depths = np.array([1e-5, 0.1, 1.0, 5.0])
    assert load.stress(x, surface.level(x) - depths) == pytest.approx([36.0] * 4, abs=0.02)


def test_beside_a_load_on_higher_ground_the_surface_stays_free_of_stress() -> None:
    surface = Polyline(((0.0, 0.0), (50.0, 0.0), (50.0, -4.0), (100.0, -4.0)))
    (load,) = strip_loads([embankment((30.0, 0.0), (30.0, 2.0), (49.0, 2.0))], site(DEEP, surface))
    assert load.stress(52.0, np.array([-4.0 - 1e-5])) == pytest.approx([0.0], abs=1e-6)
    assert load.stress(52.0, np.array([-9.0]))[0] > 1.0


def test_a_load_below_the_ground_is_refused() -> None:
    with pytest.raises(WorkerError, match=r'"Dike" lies below the ground .* at x = 19.75 m'):
        strip_loads([embankment((10.0, 0.0), (20.0, -1.0), (30.0, 0.0))], site())


def test_initial_loads_know_themselves() -> None:
    loads: list[StripLoad] = strip_loads([embankment((1.0, 1.0), (2.0, 1.0), time=-1)], site())
    assert loads[0].is_initial


WIDE = """Wide
           {time}        15.00        15.00   {temporary}       {end} = Time, Gamma dry, Gamma wet
    4 = Number of co-ordinates
       0.000        0.000 = X, Y
       0.000        {top:.3f} = X, Y
     100.000        {top:.3f} = X, Y
     100.000        0.000 = X, Y
"""


def wide(*, time: float = 0, temporary: object = 0, end: object = 0, top: float = 2.0) -> str:
    return WIDE.format(time=time, temporary=temporary, end=end, top=top)


def with_embankments(text: str, *loads: str) -> str:
    before, _, rest = text.partition("[NON-UNIFORM LOADS]\n")
    after = rest.partition("[END OF NON-UNIFORM LOADS]\n")[2]
    blocks = f"{len(loads)} = number of items\n{''.join(loads)}"
    return f"{before}[NON-UNIFORM LOADS]\n{blocks}[END OF NON-UNIFORM LOADS]\n{after}"


def with_embankment(text: str, temporary: object = 0, end: object = 0) -> str:
    return with_embankments(text, wide(temporary=temporary, end=end))


def settlements(text: str) -> list[list[float]]:
    columns: list[list[float]] = verticals(calculated(text))[1]["per_load"]
    return columns


def without_uniform_load(text: str) -> str:
    before, _, rest = text.partition("[OTHER LOADS]\n")
    after = rest.partition("[END OF OTHER LOADS]\n")[2]
    return f"{before}[OTHER LOADS]\n0\n[END OF OTHER LOADS]\n{after}"


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
        assert ours["per_load"][-1][-1] == pytest.approx(theirs["per_load"][-1][-1], abs=1e-6)


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


def test_level_ground_has_no_place_for_them() -> None:
    message = refused(with_embankment(input_text()))
    assert message == "The worker does not cover non-uniform loads on one-dimensional models."


@pytest.mark.parametrize(
    ("temporary", "end", "problem"),
    [
        (2, 0, '"temporary" of load "Wide" should be 0 or 1 and is 2'),
        (1, 0, 'the load "Wide" is removed before it comes'),
        ("x", 0, 'should be a number and is "x"'),
    ],
)
def test_malformed_loads(temporary: object, end: object, problem: str) -> None:
    message = refused(with_embankment(two_dimensional(), temporary, end))
    assert "section [NON-UNIFORM LOADS], line " in message
    assert problem in message
