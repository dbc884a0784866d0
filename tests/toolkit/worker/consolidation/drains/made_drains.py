"""Drains made for the tests of the worker."""

from sembra.local.worker.consolidation.drains.equal_drains import Drains
from sembra.local.worker.consolidation.drains.flow import HorizontalFlow, RadialFlow
from sembra.local.worker.consolidation.drains.water import (
    Schedule,
    ScheduleKind,
    Stage,
    StandingWater,
)

FLOW = RadialFlow(2.0, 1.0, 0.2)
RATE = 8 / (2.0**2 * 1.578344)
"""Of this flow, in parts of c_h: Barron's factor for a ratio of diameters of 10."""


def drains(
    *stages: Stage,
    kind: ScheduleKind = ScheduleKind.SIMPLE,
    bottom: float = -100.0,
    flow: HorizontalFlow = FLOW,
    start: float = 0.0,
) -> Drains:
    """Drains along the whole column; unless stages are given, full to level 0 from `start` on."""
    full = Stage(start, StandingWater(0.0))
    return Drains(-10.0, 10.0, bottom, flow, Schedule(kind, stages or (full,)))
