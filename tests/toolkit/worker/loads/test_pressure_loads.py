"""Trapeziform, circular and rectangular loads, against closed forms, sums and equilibrium."""

from math import atan, pi, sqrt

import numpy as np
import pytest
from sembra.local.worker.failures import WorkerError
from sembra.local.worker.loads.circular import CircularLoad
from sembra.local.worker.loads.load import Load
from sembra.local.worker.loads.rectangular import RectangularLoad
from sembra.local.worker.loads.trapeziform import TrapeziformLoad, Trapezium
from sembra.local.worker.spreading.distribution import Distribution

from tests.toolkit.worker.input_file import calculated, input_text, refused
from tests.toolkit.worker.input_section import two_dimensional
from tests.toolkit.worker.result_file import verticals


def circle(alpha: float = 1.0) -> CircularLoad:
    return CircularLoad("Tank", 0, 20.0, alpha, x=3.0, level=-1.0, z=4.0, radius=2.5)


def rectangle(alpha: float = 1.0) -> RectangularLoad:
    return RectangularLoad("Raft", 0, 20.0, alpha, 3.0, -1.0, 4.0, width_x=6.0, width_z=4.0)


def trapezium(
    rising: float,
    level: float,
    falling: float,
    *,
    distribution: Distribution = Distribution.BOUSSINESQ,
    width: float = 0.01,
) -> TrapeziformLoad:
    shape = Trapezium(rising, level, falling, x=10.0, y=-1.0)
    return TrapeziformLoad("Bank", 0, 36.0, shape, width, distribution)


def at(load: Load, x: float, z: float, depth: float) -> float:
    return float(load.stress(x, z, np.array([-1.0 - depth]))[0])


@pytest.mark.parametrize("depth", [1e-5, 0.1, 1.0, 3.0, 20.0])
@pytest.mark.parametrize("alpha", [1.0, 0.6, 0.0])
def test_below_the_centre_of_a_circle(alpha: float, depth: float) -> None:
    radius = 2.5
    expected = 20 * (2 * depth**2 * radius**2 + alpha * radius**4) / (depth**2 + radius**2) ** 2
    assert at(circle(alpha), 3.0, 4.0, depth) == pytest.approx(expected, rel=1e-9)


@pytest.mark.parametrize("depth", [0.5, 2.0, 8.0])
@pytest.mark.parametrize(("a", "b"), [(3.0, 2.0), (6.0, 4.0)])
def test_below_the_middle_and_a_corner_of_a_rectangle(a: float, b: float, depth: float) -> None:
    # The corner of [0, a] x [0, b] for the concentration factor 4, by derivation of that for 3.
    def even(square: float) -> float:
        big_a, big_b = sqrt(a * a + square), sqrt(b * b + square)
        return a / big_a * atan(b / big_a) + b / big_b * atan(a / big_b)

    square, step = depth**2, 1e-4
    slope = (even(square + step) - even(square - step)) / (2 * step)
    corner = 20 * (even(square) - square * slope) / (2 * pi)
    load = rectangle()
    if (a, b) == (6.0, 4.0):
        for x, z in ((0.0, 2.0), (6.0, 2.0), (0.0, 6.0), (6.0, 6.0)):
            assert at(load, x, z, depth) == pytest.approx(corner, rel=1e-6)
    else:
        assert at(load, 3.0, 4.0, depth) == pytest.approx(4 * corner, rel=1e-6)


@pytest.mark.parametrize("alpha", [1.0, 0.6, 0.0])
@pytest.mark.parametrize(("x", "z"), [(3.0, 4.0), (4.0, 4.7), (8.5, 3.0), (-4.0, 12.0)])
@pytest.mark.parametrize("depth", [1.0, 4.0])
def test_a_load_is_the_sum_of_its_point_forces(
    alpha: float, x: float, z: float, depth: float
) -> None:
    places = np.linspace(-3, 3, 1201)[:-1] + 0.0025
    along, across = np.meshgrid(places, places)
    distance = (along + 3 - x) ** 2 + (across + 4 - z) ** 2 + depth**2
    kernel = 0.005**2 * 2 * depth**4 / (pi * distance**3)
    square = along**2 + across**2
    round_pressure = np.where(square < 2.5**2, alpha + 2 * (1 - alpha) * square / 2.5**2, 0.0)
    square_pressure = np.where(
        np.abs(across) < 2,
        alpha + 1.5 * (1 - alpha) * (along**2 / 9 + across**2 / 4),
        0.0,
    )
    for load, pressure in ((circle(alpha), round_pressure), (rectangle(alpha), square_pressure)):
        expected = 20 * float((pressure * kernel).sum())
        assert at(load, x, z, depth) == pytest.approx(expected, rel=2e-3)


@pytest.mark.parametrize("load", [circle(0.6), rectangle(0.6)])
def test_just_below_a_load_is_its_own_pressure(load: Load) -> None:
    part = 1.0**2 / 2.5**2 if isinstance(load, CircularLoad) else 1.5 / 2 * 1.0**2 / 9
    assert at(load, 4.0, 4.0, 1e-5) == pytest.approx(20 * (0.6 + 2 * 0.4 * part), rel=1e-4)
    assert at(load, 10.0, 4.0, 1e-5) == pytest.approx(0.0, abs=1e-9)
    assert load.stress(3.0, 4.0, np.array([-1.0, 0.0])).tolist() == [0.0, 0.0]


@pytest.mark.parametrize("alpha", [1.0, 0.5])
def test_what_passes_a_level_is_the_whole_force(alpha: float) -> None:
    step = 1.0
    places = np.arange(-40.0, 41.0, step)
    for load, area in ((circle(alpha), pi * 2.5**2), (rectangle(alpha), 24.0)):
        passing = sum(at(load, 3 + x, 4 + z, 5.0) for x in places for z in places) * step**2
        assert passing == pytest.approx(20 * area, rel=2e-3)


# Below the top of a triangle by Boussinesq, with b half its base: 2 q / pi atan(b / z).
@pytest.mark.parametrize("depth", [0.5, 2.0, 10.0])
def test_below_the_top_of_a_triangle(depth: float) -> None:
    load = trapezium(3.0, 0.0, 3.0)
    assert at(load, 13.0, 0.0, depth) == pytest.approx(36 * 2 / pi * atan(3 / depth), rel=1e-4)


@pytest.mark.parametrize("distribution", Distribution)
def test_below_the_middle_of_an_endless_slope(distribution: Distribution) -> None:
    load = trapezium(4.0, 1e7, 0.0, distribution=distribution, width=1e5)
    assert at(load, 12.0, 0.0, 3.0) == pytest.approx(18.0, rel=1e-4)


def test_slopes_take_one_column_more_than_fit_in_and_the_level_part_takes_one() -> None:
    strips = trapezium(1.0, 5.0, 0.6, width=0.5).strips
    assert strips.left == pytest.approx([10, 10 + 1 / 3, 10 + 2 / 3, 11, 16, 16.3])
    assert strips.right == pytest.approx([*strips.left[1:], 16.6])
    assert strips.height == pytest.approx([1 / 6, 1 / 2, 5 / 6, 1, 3 / 4, 1 / 4])
    assert trapezium(0.0, 5.0, 0.0).strips.height.tolist() == [1.0]


@pytest.mark.parametrize("lengths", [(-1.0, 5.0, 1.0), (0.0, 0.0, 0.0)])
def test_a_trapezium_has_a_length(lengths: tuple[float, float, float]) -> None:
    with pytest.raises(WorkerError, match='"Bank" has no length or a negative one'):
        trapezium(*lengths)


def test_sizes_are_greater_than_zero() -> None:
    with pytest.raises(WorkerError, match='radius of the load "Tank"'):
        CircularLoad("Tank", 0, 20.0, 1.0, 0.0, 0.0, 0.0, 0.0)
    with pytest.raises(WorkerError, match='width of the load "Raft"'):
        RectangularLoad("Raft", 0, 20.0, 1.0, 0.0, 0.0, 0.0, 4.0, -1.0)


KINDS = {
    "trapeziform": """0 : Trapeziform
  0  20.00  1.500 = Time, Gamma, H
  100.0  800.0  100.0  -500.0  0.0 = xl, xm, xr, Xp, Yp
""",
    "circular": """1 : Circular
  0  30.00  1.000 = Time, Weight, Alpha
  0.0  0.0  0.0  500.0 = Xcp, Ycp, Zcp, R
""",
    "rectangular": """2 : Rectangular
  0  30.00  1.000 = Time, Weight, Alpha
  0.0  0.0  0.0  900.0  900.0 = Xcp, Ycp, Zcp, xwidth, zwidth
""",
    "tank": "4 : Tank\n 0 30 1 = Time\n",
}


def with_load(text: str, kind: str) -> str:
    before, _, rest = text.partition("[OTHER LOADS]\n")
    after = rest.partition("[END OF OTHER LOADS]\n")[2]
    block = f"1 = number of items\nBig one\n{KINDS[kind]}"
    return f"{before}[OTHER LOADS]\n{block}[END OF OTHER LOADS]\n{after}"


@pytest.mark.parametrize("kind", ["trapeziform", "circular", "rectangular"])
def test_wide_loads_settle_like_uniform_ones(kind: str) -> None:
    for text in (input_text(), two_dimensional()):
        expected = verticals(calculated(text))[0]["per_load"][-1][-1]
        found = verticals(calculated(with_load(text, kind)))[0]["per_load"][-1][-1]
        assert found == pytest.approx(expected, rel=1e-3)


def test_a_tank_is_refused_by_name() -> None:
    message = refused(with_load(input_text(), "tank"))
    assert message == 'The worker does not cover tank loads (load "Big one").'
