"""Columns and drains made for the tests of the worker."""

from sembra.local.worker.consolidation.drains import Drains, DrainWater
from sembra.local.worker.consolidation.horizontal_flow import HorizontalFlow, RadialFlow
from sembra.local.worker.ground.column import Column, Layer
from sembra.local.worker.ground.material import Material
from sembra.local.worker.ground.preconsolidation import PreconsolidationOption
from sembra.local.worker.options import Options

FLOW = RadialFlow(influence_diameter=2.0, drain_diameter=0.2)


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
