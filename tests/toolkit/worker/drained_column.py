"""Columns and drains made for the tests of the worker."""

from sembra.local.worker.drains import Drains, DrainWater
from sembra.local.worker.horizontal_flow import HorizontalFlow, RadialFlow
from sembra.local.worker.model import (
    Column,
    Layer,
    Material,
    Options,
    PreconsolidationOption,
    PreconsolidationType,
)

SECONDS = 86400.0
FLOW = RadialFlow(influence_diameter=2.0, drain_diameter=0.2)


def material(
    *, cv: float = 0.01, drained: bool = False, horizontal_factor: float = 1.0
) -> Material:
    """A material with its coefficient of consolidation in m²/day."""
    kind = PreconsolidationType.PC
    koppejan = (0, 1, 0, 50, 10, 500, 100, 50, 500)
    return Material("Clay", 15, 18, drained, cv / SECONDS, kind, *koppejan, horizontal_factor)


def column(*layers: tuple[float, Material], water: float = 0.0) -> Column:
    """A column from level 0 down, of pairs of thickness and material."""
    top, stacked = 0.0, []
    for thickness, soil in layers:
        stacked.append(Layer(top, top - thickness, soil, water, water))
        top -= thickness
    return Column(0.0, 0.0, tuple(stacked), water)


def drains(
    *water: DrainWater, bottom: float = -100.0, flow: HorizontalFlow = FLOW, start: float = 0.0
) -> Drains:
    """Drains along the whole column; unless water is given, up to level 0 from `start` on."""
    return Drains(-10.0, 10.0, bottom, flow, water or (DrainWater(start, 0.0),))


def options(*, top: bool = True, bottom: bool = True, end: float = 10000.0) -> Options:
    """Options with drained or undrained boundaries."""
    constant = PreconsolidationOption.CONSTANT
    return Options(False, constant, top, bottom, end, 1.0, False, 10.0)
