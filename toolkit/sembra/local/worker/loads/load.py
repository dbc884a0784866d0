"""What every load has in common."""

from typing import Protocol

from sembra.local.worker.arrays import Floats


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

    def stress(self, x: float, levels: Floats, /) -> Floats:
        """Change of the vertical stress at x and each of the levels, in kPa."""
