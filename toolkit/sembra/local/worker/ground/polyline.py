"""Lines through points."""

import itertools
from dataclasses import dataclass

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.failures import WorkerError


@dataclass(frozen=True)
class Polyline:
    """A line through points from left to right.

    Raises:
        ValueError: There are fewer than two points, or x decreases.
    """

    points: tuple[tuple[float, float], ...]

    def __post_init__(self) -> None:
        if len(self.points) < 2:
            raise ValueError("a line needs at least two points")
        if any(a[0] > b[0] for a, b in itertools.pairwise(self.points)):
            raise ValueError("a line should run from left to right")

    @property
    def start(self) -> float:
        """Where the line begins on the left."""
        return self.points[0][0]

    @property
    def end(self) -> float:
        """Where the line ends on the right."""
        return self.points[-1][0]

    def levels(self, x: Floats) -> Floats:
        """Return the levels at some places, those of the ends beyond them.

        At a vertical part of the line, that is the level of its first point.
        """
        places, levels = np.array(self.points).T
        first = np.minimum(np.searchsorted(places, x), len(places) - 1)
        found: Floats = np.where(places[first] == x, levels[first], np.interp(x, places, levels))
        return found

    def lowest(self, x: Floats) -> Floats:
        """Return the levels at some places; at a vertical part of the line, that of its foot."""
        found = self.levels(x)
        for (x1, y1), (x2, y2) in itertools.pairwise(self.points):
            if x1 == x2:
                found = np.where(x == x1, np.minimum(found, min(y1, y2)), found)
        return found

    def level(self, x: float) -> float:
        """Return the level at x; at a vertical part of the line, the level of its first point.

        Raises:
            WorkerError: The line has no point at x.
        """
        if not self.covers(x):
            raise WorkerError(f"The vertical at x = {x:g} m lies outside the geometry.")
        return float(self.levels(np.array(x)))

    def covers(self, x: float) -> bool:
        """Return whether the line has a point at x."""
        return self.start <= x <= self.end
