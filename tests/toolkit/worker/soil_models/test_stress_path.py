"""Load steps, split at the preconsolidation pressure."""

from math import log

import numpy as np
import pytest
from sembra.local.worker.soil_models.stress_path import stress_path


def path(before: float, after: float, preconsolidation: float) -> tuple[float, float, float]:
    parts = stress_path(np.array([before]), np.array([after]), np.array([preconsolidation]))
    return float(parts.swelling[0]), float(parts.below[0]), float(parts.above[0])


@pytest.mark.parametrize(
    ("before", "after", "parts"),
    [
        (20.0, 30.0, (0, log(30 / 20), 0)),
        (20.0, 50.0, (0, log(50 / 20), 0)),
        (20.0, 90.0, (0, log(50 / 20), log(90 / 50))),
        (50.0, 90.0, (0, 0, log(90 / 50))),
        (60.0, 90.0, (0, 0, log(90 / 60))),
        (90.0, 60.0, (log(60 / 90), 0, 0)),
        (90.0, 40.0, (log(40 / 90), 0, 0)),
        (60.0, 60.0, (0, 0, 0)),
    ],
)
def test_parts(before: float, after: float, parts: tuple[float, float, float]) -> None:
    assert path(before, after, 50.0) == pytest.approx(parts, abs=1e-15)


def test_elements_go_their_own_ways() -> None:
    found = stress_path(np.array([20.0, 90.0]), np.array([90.0, 45.0]), np.array([50.0, 95.0]))
    assert found.swelling == pytest.approx([0, -log(2)])
    assert found.below == pytest.approx([log(2.5), 0])
    assert found.above == pytest.approx([log(1.8), 0])
