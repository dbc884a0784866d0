"""Columns made for the tests of the worker."""

from sembra.local.worker.ground.column import Column, Layer
from sembra.local.worker.ground.material import Material


def column(*layers: tuple[float, Material], water: float = 0.0, x: float = 0.0) -> Column:
    """A column from level 0 down, of pairs of thickness and material, with water up to a level."""
    top, stacked = 0.0, []
    for thickness, soil in layers:
        stacked.append(Layer(top, top - thickness, soil, water, water))
        top -= thickness
    return Column(x, 0.0, tuple(stacked), water)
