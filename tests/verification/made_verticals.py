"""Verticals to compare, made of few numbers."""

from typing import Any

import numpy as np

from verification.reading import Vertical


def vertical(scale: float = 1.0, **changes: Any) -> Vertical:
    """Return a vertical of three times and two nodes that settles `scale` metres in the end."""
    values: dict[str, Any] = {
        "x": 0.0,
        "times": np.array([0.0, 1.0, 10.0]),
        "depths": np.array([0.0, -2.0]),
        "settlements": scale * np.array([[0.0, 0.0], [0.5, 0.0], [1.0, 0.0]]),
        "stresses": np.array([[0.0, 20.0], [50.0, 70.0], [50.0, 70.0]]),
        "loads": scale * np.array([[0.0, 0.0], [0.25, 0.5], [0.5, 1.0]]),
        "initial_stress": np.array([0.0, 20.0]),
        "final_stress": np.array([50.0, 70.0]),
        "preconsolidation": np.array([10.0, 0.0]),
        "kinds": scale * np.array([[0.0, 0.0, 0.3, 0.1, 0.5, 0.1]]),
        "dissipation": np.array([[0.0, 0.0, 0.0], [1.0, 0.3, 0.4], [10.0, 0.9, 1.0]]),
        "residual": scale * np.array([[1.0, 0.5, 0.5]]),
    }
    return Vertical(**values | changes)
