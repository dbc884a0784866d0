"""Loads on a circle."""

from dataclasses import dataclass

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.failures import WorkerError
from sembra.local.worker.loads.load import PressureLoad
from sembra.local.worker.spreading.point_force import integration_points


@dataclass(frozen=True)
class CircularLoad(PressureLoad):
    """A pressure on a circle of some radius in metres around x, z at a level.

    `pressure` is the mean one in kPa. A part `alpha` of it is even; the rest grows with the square
    of the distance r from the centre:

        p = q [alpha + 2 (1 - alpha) r² / R²]
    """

    pressure: float
    alpha: float
    x: float
    level: float
    z: float
    radius: float

    def __post_init__(self) -> None:
        if self.radius <= 0:
            raise WorkerError(f'The radius of the load "{self.name}" is not greater than zero.')

    def stress(self, x: float, z: float, levels: Floats, /) -> Floats:
        """Return the vertical stress below x, z at some levels; there is none at its own and above.

        The ring between r and r + dr, whose force is 2 pi r p dr, gives at a distance d from the
        axis, with P = r² + d² + z² and Q = 2 r d,

            ds = 2 r p z^4 (2 P² + Q²) / (P² - Q²)^2.5 dr
        """
        stress = np.zeros_like(levels)
        below = levels < self.level
        depth = (self.level - levels[below])[:, np.newaxis]
        distance = float(np.hypot(x - self.x, z - self.z))
        beside, weight = integration_points(-distance, self.radius - distance, depth)
        radius = distance + beside
        pressure = self.pressure * (self.alpha + 2 * (1 - self.alpha) * (radius / self.radius) ** 2)
        near = beside**2 + depth**2
        far = (radius + distance) ** 2 + depth**2
        middle, spread = (near + far) / 2, (far - near) / 2
        # P² - Q² = near · far, each taken with depth so that no power gets out of range.
        ratio = (2 * middle**2 + spread**2) / far**2
        ring = ratio * (depth / np.sqrt(near)) ** 4 / np.sqrt(near * far)
        stress[below] = (2 * radius * pressure * ring * weight).sum(axis=1)
        return stress
