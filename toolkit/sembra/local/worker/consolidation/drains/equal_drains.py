"""Equal drains at equal distances, from the surface down."""

from dataclasses import dataclass

from sembra.local.worker.consolidation.drains.flow import HorizontalFlow
from sembra.local.worker.consolidation.drains.water import Schedule

BESIDE = 4.0
"""Beside the outermost drain the others act as if they stood apart by this times its distance.

Published results show it; no theory was found for it.
"""


@dataclass(frozen=True)
class Drains:
    """The drains of a file.

    Args:
        left: x of the leftmost drain, in metres.
        right: x of the rightmost drain, in metres.
        bottom: Level of their lower end, in metres.
        flow: The flow of water to them.
        schedule: The water in them.
    """

    left: float
    right: float
    bottom: float
    flow: HorizontalFlow
    schedule: Schedule

    @property
    def start(self) -> float:
        """Start of drainage, in days."""
        return self.schedule.start

    def rate(self, x: float) -> float:
        """Return the flow to the drains at x, in parts of c_h (u - w) m_v, in 1/m²."""
        beside = max(self.left - x, x - self.right, 0.0)
        return self.flow.rate(max(self.flow.distance, BESIDE * beside))

    def reach(self, top: float, bottom: float) -> float:
        """Return the part of what lies between two levels that the drains go through."""
        return min(max((top - self.bottom) / (top - bottom), 0.0), 1.0)
