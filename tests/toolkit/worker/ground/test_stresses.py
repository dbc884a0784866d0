"""Stresses in a column, against values worked by hand."""

import numpy as np
import pytest
from sembra.local.worker.ground.column import Column, Layer
from sembra.local.worker.ground.stresses import soil_stress

from tests.toolkit.worker.made_material import material

CLAY = material(drained=True)
SAND = material("Sand", 17, 20, drained=True)


def column(phreatic_level: float) -> Column:
    layers = (
        Layer(0.0, -2.0, CLAY, phreatic_level, phreatic_level),
        Layer(-2.0, -5.0, SAND, phreatic_level, phreatic_level),
    )
    return Column(0.0, 0.0, layers, phreatic_level)


@pytest.mark.parametrize(
    ("phreatic_level", "level", "stress"),
    [
        (-10.0, -1.0, 15.0),
        (-10.0, -4.0, 2 * 15 + 2 * 17),
        (-1.0, -1.5, 15 + 0.5 * 18),
        (-3.0, -4.0, 2 * 15 + 1 * 17 + 1 * 20),
        (0.0, -5.0, 2 * 18 + 3 * 20),
        (2.0, -1.0, 2 * 10 + 18),
        (2.0, 0.0, 20.0),
    ],
)
def test_total_stress(phreatic_level: float, level: float, stress: float) -> None:
    assert soil_stress(column(phreatic_level), np.array([level]), 10.0) == pytest.approx([stress])
