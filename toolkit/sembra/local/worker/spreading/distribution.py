"""Stress below a uniform strip load of endless length on an elastic half-space.

With a and b the angles between the vertical and the lines from the point to the left and right
edge of the strip, and q its pressure,

    Boussinesq (1885):  s = q / pi [ t + sin t cos t ]     from t = a to t = b
    Buisman (1940):     s = q / 4  [ 3 sin t - sin^3 t ]   from t = a to t = b

These are the distributions of Fröhlich (1934) with the concentration factors 3 and 4.
"""

import math
from dataclasses import dataclass
from enum import IntEnum

import numpy as np

from sembra.local.worker.arrays import Floats


class Distribution(IntEnum):
    """How the stress below a load of limited width spreads with depth."""

    BUISMAN = 0
    BOUSSINESQ = 1


@dataclass(frozen=True)
class Spreading:
    """How the stress by loads spreads.

    `within_loads` tells that it spreads within non-uniform loads as well as below them. The widths
    in metres are those of the columns that loads and the soil above an imaginary surface are cut
    into.
    """

    distribution: Distribution
    within_loads: bool
    non_uniform_width: float
    trapeziform_width: float
    imaginary_surface_width: float


def strip_share(distribution: Distribution, left: Floats, right: Floats, depth: Floats) -> Floats:
    """Return the part of a strip's pressure that reaches a point below it.

    At no depth that is all of it below the strip and nothing beside it.

    Args:
        distribution: How the stress spreads.
        left: Horizontal distance from the point to the left edge, positive to the right, in metres.
        right: The same for the right edge.
        depth: Depth of the point below the strip, in metres, not negative.
    """
    primitive = _buisman if distribution is Distribution.BUISMAN else _boussinesq
    return primitive(np.arctan2(right, depth)) - primitive(np.arctan2(left, depth))


def _boussinesq(angle: Floats) -> Floats:
    primitive: Floats = (angle + np.sin(angle) * np.cos(angle)) / math.pi
    return primitive


def _buisman(angle: Floats) -> Floats:
    sine = np.sin(angle)
    primitive: Floats = sine * (3 - sine * sine) / 4
    return primitive
