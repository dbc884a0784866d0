"""What every load has in common."""

from collections.abc import Callable
from dataclasses import dataclass
from typing import Protocol, Self

from sembra.local.worker.arrays import Floats

type SurfaceSettlement = Callable[[Floats], Floats]
"""Settlement of the surface in metres at places along the x axis."""


class Load(Protocol):
    """Something that changes the vertical stress in the ground at one time, in days."""

    @property
    def name(self) -> str:
        """Name of the load in the input."""

    @property
    def time(self) -> float:
        """When the stress changes; -1 for a load of the initial state."""

    @property
    def is_initial(self) -> bool:
        """Whether the load belongs to the initial state."""

    @property
    def sinks_in_the_end(self) -> bool:
        """Whether it comes under water with the settlement of the end of the calculation."""

    def stress(self, x: float, z: float, levels: Floats, /) -> Floats:
        """Change of the vertical stress below the point x, z at each of the levels, in kPa."""

    def submerged(self, settlement: SurfaceSettlement, /) -> Self:
        """Return the load after the ground below it has settled, with more of it under water."""


@dataclass(frozen=True)
class PressureLoad:
    """What loads that are stated as a pressure have in common.

    A load at time -1 is an initial load: it is part of the initial stress and causes no settlement.
    """

    name: str
    time: float

    @property
    def is_initial(self) -> bool:
        """Whether the load belongs to the initial state."""
        return self.time < 0

    @property
    def sinks_in_the_end(self) -> bool:
        """Never: a pressure has no height that could come under water."""
        return False

    def submerged(self, _settlement: SurfaceSettlement, /) -> Self:
        """Return the load as it is."""
        return self
