"""What comes onto the ground, and when."""

from dataclasses import dataclass


@dataclass(frozen=True)
class LoadStep:
    """A load that comes onto the ground, or goes.

    Args:
        name: What it is called.
        time: When it comes or goes, in days.
        pressure: What it brings to the surface, in kPa; below zero if it goes.
    """

    name: str
    time: float
    pressure: float

    @property
    def told(self) -> str:
        """The name, behind a minus sign if the load goes."""
        return f"\N{MINUS SIGN} {self.name}" if self.pressure < 0 else self.name
