"""Loads on a rectangle."""

from dataclasses import dataclass

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.failures import WorkerError
from sembra.local.worker.loads.load import PressureLoad
from sembra.local.worker.spreading.point_force import integration_points


@dataclass(frozen=True)
class RectangularLoad(PressureLoad):
    """A pressure on a rectangle of some widths in metres along x and z around x, z at a level.

    `pressure` is the mean one in kPa. A part `alpha` of it is even; the rest grows with the squares
    of the distances u and w from the middle, in parts of half the widths a and b:

        p = q [alpha + 1.5 (1 - alpha) (u² / a² + w² / b²)]
    """

    pressure: float
    alpha: float
    x: float
    level: float
    z: float
    width_x: float
    width_z: float

    def __post_init__(self) -> None:
        if self.width_x <= 0 or self.width_z <= 0:
            raise WorkerError(f'A width of the load "{self.name}" is not greater than zero.')

    def stress(self, x: float, z: float, levels: Floats, /) -> Floats:
        """Return the vertical stress below x, z at some levels; there is none at its own and above.

        Along z the point force is integrated in closed form, along x numerically.
        """
        stress = np.zeros_like(levels)
        below = levels < self.level
        depth = (self.level - levels[below])[:, np.newaxis]
        half_x, half_z = self.width_x / 2, self.width_z / 2
        away_x, away_z = self.x - x, self.z - z
        along_x, weight = integration_points(away_x - half_x, away_x + half_x, depth)
        zeroth, first, second = _moments(np.hypot(along_x, depth), away_z - half_z, away_z + half_z)
        squares_z = (second - 2 * away_z * first + away_z**2 * zeroth) / half_z**2
        squares_x = zeroth * ((along_x - away_x) / half_x) ** 2
        parts = self.alpha * zeroth + 1.5 * (1 - self.alpha) * (squares_x + squares_z)
        stress[below] = 2 / np.pi * self.pressure * (depth**4 * parts * weight).sum(axis=1)
        return stress


def _moments(distance: Floats, start: float, end: float) -> tuple[Floats, Floats, Floats]:
    """Return the integrals of w^n / (c² + w²)³ over w for n = 0, 1 and 2, with a distance c."""
    zeroth, first, second = (
        np.subtract(*pair)
        for pair in zip(_primitives(distance, end), _primitives(distance, start), strict=True)
    )
    return zeroth, first, second


def _primitives(c: Floats, w: float) -> tuple[Floats, Floats, Floats]:
    square = c**2 + w**2
    angle = np.arctan2(w, c)
    return (
        w / (4 * c**2 * square**2) + 3 * w / (8 * c**4 * square) + 3 * angle / (8 * c**5),
        -1 / (4 * square**2),
        -w / (4 * square**2) + w / (8 * c**2 * square) + angle / (8 * c**3),
    )
