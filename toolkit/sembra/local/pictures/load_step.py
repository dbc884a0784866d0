"""What comes onto the ground, and when."""

from dataclasses import dataclass


@dataclass(frozen=True)
class LoadStep:
    """A load that comes at a time [days] and brings a pressure to the surface [kPa].

    One that goes at that time takes its pressure with it: its pressure is below zero.
    """

    name: str
    time: float
    pressure: float

    @property
    def told(self) -> str:
        """The name, behind a minus sign if the load goes."""
        return f"\N{MINUS SIGN} {self.name}" if self.pressure < 0 else self.name
