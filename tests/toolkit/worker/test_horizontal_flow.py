"""Flow to drains, against published values."""

import math

import numpy as np
import pytest
from sembra.local.worker.consolidation.horizontal_flow import PlaneFlow, RadialFlow, strip_diameter

# Time factors c_h t / D² for radial flow under equal strain, as tabulated after Leonards (1962).
DEGREES = (0.10, 0.20, 0.30, 0.40, 0.50, 0.60, 0.80, 0.90, 0.95)
TABLE = {
    5: (0.012, 0.026, 0.042, 0.060, 0.081, 0.107, 0.188, 0.270, 0.351),
    10: (0.021, 0.044, 0.070, 0.101, 0.137, 0.180, 0.317, 0.455, 0.590),
    15: (0.026, 0.055, 0.088, 0.126, 0.170, 0.226, 0.397, 0.567, 0.738),
    20: (0.030, 0.063, 0.101, 0.144, 0.195, 0.258, 0.453, 0.649, 0.844),
    25: (0.032, 0.069, 0.110, 0.158, 0.214, 0.283, 0.498, 0.712, 0.926),
}


@pytest.mark.parametrize("ratio", TABLE)
def test_barron_against_the_published_table(ratio: int) -> None:
    coefficient, diameter = 0.02, 1.5
    times = np.array(TABLE[ratio]) * diameter**2 / coefficient
    degrees = RadialFlow(diameter, diameter / ratio).degree(times, coefficient)
    assert degrees == pytest.approx(DEGREES, abs=0.004)


@pytest.mark.parametrize(("ratio", "factor"), [(5, 0.936), (10, 1.578), (20, 2.254), (100, 3.855)])
def test_factor_of_the_spacing(ratio: float, factor: float) -> None:
    assert RadialFlow(1.0, 1.0 / ratio).spacing_factor == pytest.approx(factor, abs=1e-3)


def test_barron_is_the_steady_flow_to_a_drain_in_a_cylinder() -> None:
    """The mean pressure of a cylinder that gives off water evenly, by integration."""
    outer, inner, coefficient = 1.0, 0.1, 0.3
    edges = np.geomspace(inner, outer, 20001)
    middles = (edges[1:] + edges[:-1]) / 2
    slopes = (outer**2 - middles**2) / (2 * coefficient * middles)
    pressures = np.cumsum(slopes * np.diff(edges))
    mean = (pressures * middles * np.diff(edges)).sum() * 2 / (outer**2 - inner**2)
    # The strain of the whole cylinder takes the drain's part of its area too.
    leakage = RadialFlow(2 * outer, 2 * inner).leakage(coefficient)
    assert leakage * mean == pytest.approx(1.0, rel=2e-4)


def test_diameter_of_a_strip() -> None:
    assert strip_diameter(0.100, 0.004) == pytest.approx(0.0662, abs=5e-5)
    assert strip_diameter(0.3, 0.0) * math.pi == pytest.approx(0.6)


# Terzaghi's degree of consolidation against the time factor, with half the clear spacing as path.
@pytest.mark.parametrize(("time_factor", "degree"), [(0.031, 0.2), (0.197, 0.5), (0.848, 0.9)])
def test_plane_flow_against_the_published_table(time_factor: float, degree: float) -> None:
    times = np.array([time_factor * 1.5**2 / 0.02])
    assert PlaneFlow(3.0).degree(times, 0.02)[0] == pytest.approx(degree, abs=0.002)


def test_leakage_to_walls_is_that_of_a_parabola() -> None:
    places = (np.arange(10000) + 0.5) / 10000 * 3.0
    parabola = places * (3.0 - places) / (2 * 0.02)
    assert PlaneFlow(3.0).leakage(0.02) * parabola.mean() == pytest.approx(1.0, rel=1e-6)


@pytest.mark.parametrize("flow", [RadialFlow(2.0, 0.2), PlaneFlow(2.0)])
def test_nothing_before_and_all_at_last(flow: RadialFlow | PlaneFlow) -> None:
    assert flow.degree(np.array([-5.0, 0.0, 1e9]), 0.1) == pytest.approx([0, 0, 1])


def test_drains_without_soil_between_them() -> None:
    for diameter in (0.995, 1.0, 1.1):
        with pytest.raises(ValueError, match="no soil between them"):
            RadialFlow(1.0, diameter)
    for spacing in (0.0, -0.1):
        with pytest.raises(ValueError, match="no soil between them"):
            PlaneFlow(spacing)
