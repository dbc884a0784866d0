"""Degree of consolidation of a part of a homogeneous layer (Terzaghi and Fröhlich, 1936).

The excess pressure after a sudden uniform load is a Fourier series, whose mean between two depths
a and b, in parts of the distance between the drained sides, is

    sum over n of 4 (cos(w a) - cos(w b)) / (w² (b - a)) exp(-w² T),     w = (2n + 1) pi
"""

import math

import numpy as np

from sembra.local.worker.arrays import Floats

TERMS = 1000
"""As many the tool adds up. At time 0 they fall short of 1, by most where layers are thin."""

_WAVE = (2 * np.arange(TERMS) + 1) * math.pi


def local_degree(factor: Floats, upper: float, lower: float) -> Floats:
    """Return the mean degree of consolidation between two depths of a layer drained at both sides.

    Args:
        factor: Time factor c_v t / length², not below 0, shape (times,).
        upper: Depth of the part's top, in parts of the distance between the drained sides.
        lower: Depth of the part's bottom in the same measure.
    """
    share = (np.cos(_WAVE * upper) - np.cos(_WAVE * lower)) * 4 / (_WAVE**2 * (lower - upper))
    with np.errstate(under="ignore"):
        excess: Floats = np.exp(-(_WAVE**2) * factor[:, None]) @ share
    return 1 - excess
