"""Stress below a point force, in the distribution of Buisman (1940).

At a depth z below a force P and a distance rho from it,

    s = 2 P z^4 / (pi rho^6)

which is the distribution of Fröhlich (1934) with the concentration factor 4. Loads on a limited
area are integrals over it, and always spread so, whatever is chosen for endless strips.

Integrals run over the angle t from the vertical, by the substitution u = z tan t for a distance u,
which leaves them smooth at any depth.
"""

import numpy as np

from sembra.local.worker.arrays import Floats

_NODES, _WEIGHTS = np.polynomial.legendre.leggauss(96)


def integration_points(start: float, end: float, depth: Floats) -> tuple[Floats, Floats]:
    """Return where to evaluate an integral over a distance, and the weight of each value.

    Args:
        start: Where the integral begins, relative to the point, in metres.
        end: Where it ends.
        depth: Depths of the points, in metres, greater than zero; shape (depths, 1).

    Returns:
        Distances and weights, shape (depths, points).
    """
    first, last = np.arctan2(start, depth), np.arctan2(end, depth)
    angle = (first + last) / 2 + (last - first) / 2 * _NODES
    distance = depth * np.tan(angle)
    weight = (last - first) / 2 * _WEIGHTS * depth / np.cos(angle) ** 2
    return distance, weight
