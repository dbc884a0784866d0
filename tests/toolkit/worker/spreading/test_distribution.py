"""Stress below a strip of endless length."""

from math import pi

import numpy as np
import pytest
from sembra.local.worker.spreading.distribution import Distribution, strip_share


def share(distribution: Distribution, left: float, right: float, depth: float) -> float:
    return float(strip_share(distribution, *map(np.array, (left, right, depth))))


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
    assert share(distribution, -1.0, 1.0, 0.0) == pytest.approx(1.0)
    assert share(distribution, 1.0, 2.0, 0.0) == pytest.approx(0.0)
