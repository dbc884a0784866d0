"""Flow to drains, against published values and against the flow itself, integrated."""

import math

import numpy as np
import pytest
from sembra.local.worker.consolidation.drains.flow import PlaneFlow, RadialFlow, strip_diameter

# Time factors c_h t / D² for radial flow under equal strain, as tabulated after Leonards (1962).
DEGREES = (0.10, 0.20, 0.30, 0.40, 0.50, 0.60, 0.80, 0.90, 0.95)
TABLE = {
    5: (0.012, 0.026, 0.042, 0.060, 0.081, 0.107, 0.188, 0.270, 0.351),
    10: (0.021, 0.044, 0.070, 0.101, 0.137, 0.180, 0.317, 0.455, 0.590),
    15: (0.026, 0.055, 0.088, 0.126, 0.170, 0.226, 0.397, 0.567, 0.738),
    20: (0.030, 0.063, 0.101, 0.144, 0.195, 0.258, 0.453, 0.649, 0.844),
    25: (0.032, 0.069, 0.110, 0.158, 0.214, 0.283, 0.498, 0.712, 0.926),
}


def radial(ratio: float, distance: float = 1.0) -> RadialFlow:
    """Flow to a drain whose cylinder, of 1.5 m for each metre of distance, is wider by a ratio."""
    return RadialFlow(distance, 1.5, 1.5 * distance / ratio)


@pytest.mark.parametrize("ratio", TABLE)
def test_barron_against_the_published_table(ratio: int) -> None:
    coefficient, diameter = 0.02, 1.5
    times = np.array(TABLE[ratio]) * diameter**2 / coefficient
    degrees = 1 - np.exp(-radial(ratio).rate(1.0) * coefficient * times)
    assert degrees == pytest.approx(DEGREES, abs=0.004)


# F(n) = n² / (n² - 1) ln n - (3 n² - 1) / (4 n²): for n = 10 it is 100 / 99 · 2.302585 - 0.7475.
@pytest.mark.parametrize(
    ("ratio", "factor"), [(5, 0.936497), (10, 1.578344), (20, 2.253865), (100, 3.855656)]
)
def test_rate_by_the_factor_of_barron(ratio: float, factor: float) -> None:
    assert radial(ratio).rate(1.0) == pytest.approx(8 / (1.5**2 * factor), rel=1e-6)


def test_barron_is_the_steady_flow_to_a_drain_in_a_cylinder() -> None:
    """The mean pressure of a cylinder that gives off water evenly, by integration."""
    outer, inner, coefficient = 1.0, 0.1, 0.3
    edges = np.geomspace(inner, outer, 20001)
    middles = (edges[1:] + edges[:-1]) / 2
    slopes = (outer**2 - middles**2) / (2 * coefficient * middles)
    pressures = np.cumsum(slopes * np.diff(edges))
    mean = (pressures * middles * np.diff(edges)).sum() * 2 / (outer**2 - inner**2)
    # The strain of the whole cylinder takes the drain's part of its area too.
    flow = RadialFlow(2 * outer, 1.0, 2 * inner)
    assert flow.rate(2 * outer) * coefficient * mean == pytest.approx(1.0, rel=2e-4)


def test_a_greater_distance_widens_the_cylinder_of_the_same_drain() -> None:
    # From n = 10 to n = 20.
    assert radial(10).rate(2.0) == pytest.approx(8 / (3.0**2 * 2.253865), rel=1e-6)


def test_diameter_of_a_strip_has_its_circumference() -> None:
    assert strip_diameter(0.100, 0.004) == pytest.approx(0.0662085, abs=1e-7)
    assert strip_diameter(0.3, 0.0) * math.pi == pytest.approx(0.6)


def test_rate_of_walls() -> None:
    # Walls of 0.2 m at 1.7 m leave 1.5 m between them.
    flow = PlaneFlow(1.7, 0.2)
    assert flow.rate(flow.distance) == pytest.approx(12 / 2.25)
    assert flow.rate(6.2) == pytest.approx(12 / 36)


def test_rate_of_walls_is_that_of_a_parabola() -> None:
    """The mean pressure of soil between walls that gives off water evenly, by integration."""
    width, coefficient = 3.0, 0.02
    places = (np.arange(10000) + 0.5) / 10000 * width
    parabola = places * (width - places) / (2 * coefficient)
    assert parabola.mean() == pytest.approx(2 / 3 * parabola.max(), rel=1e-6)
    rate = PlaneFlow(3.4, 0.4).rate(3.4)
    assert rate * coefficient * parabola.mean() == pytest.approx(1.0, rel=1e-6)


def test_drains_without_soil_between_them() -> None:
    # A drain that takes 99 % of its cylinder leaves (almost) nothing for Barron's factor.
    for diameter in (1.4851, 1.5, 1.6):
        with pytest.raises(ValueError, match="the drains leave no soil between them"):
            RadialFlow(1.0, 1.5, diameter)
    assert RadialFlow(1.0, 1.5, 1.4849).rate(1.0) > 0
    for thickness in (1.0, 1.1):
        with pytest.raises(ValueError, match="the drains leave no soil between them"):
            PlaneFlow(1.0, thickness)
