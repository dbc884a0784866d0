"""Degree of consolidation of a part of a homogeneous layer (Terzaghi and Fröhlich, 1936).

The excess pressure after a sudden uniform load is known as a Fourier series and, for early times,
as a series of images.
"""

import math

import numpy as np

from sembra.local.worker.arrays import Floats

_EARLY = 0.05
_TERMS = 25
_IMAGES = 4
_erfc = np.vectorize(math.erfc, otypes=[np.float64])


def local_degree(factor: Floats, upper: float, lower: float) -> Floats:
    """Return the mean degree of consolidation between two depths of a layer drained at both sides.

    Args:
        factor: time factor c_v t / length², shape (times,); up to 0 the degree is 0.
        upper: depth of the part's top, in parts of the distance between the drained sides.
        lower: depth of the part's bottom in the same measure.
    """
    degrees = np.zeros_like(factor)
    early = (factor > 0) & (factor < _EARLY)
    late = factor >= _EARLY
    degrees[early] = _by_images(factor[early], upper, lower)
    degrees[late] = 1 - _by_series(factor[late], upper, lower)
    return degrees


def _by_series(factor: Floats, upper: float, lower: float) -> Floats:
    """Return the mean excess pressure; relative depths, factor = cv t / length²."""
    wave = (2 * np.arange(_TERMS) + 1)[:, None] * math.pi
    shape = (np.cos(wave * upper) - np.cos(wave * lower)) * 4 / wave**2
    total: Floats = (shape * np.exp(-(wave**2) * factor)).sum(axis=0)
    return total / (lower - upper)


def _by_images(factor: Floats, upper: float, lower: float) -> Floats:
    """Return the mean degree of consolidation; relative depths, factor = cv t / length²."""
    width = 2 * np.sqrt(factor)
    total = np.zeros_like(factor)
    for n in range(_IMAGES):
        sign = 1 if n % 2 == 0 else -1
        from_top = _ierfc((n + upper) / width) - _ierfc((n + lower) / width)
        from_bottom = _ierfc((n + 1 - lower) / width) - _ierfc((n + 1 - upper) / width)
        total += sign * width * (from_top + from_bottom)
    return total / (lower - upper)


def _ierfc(x: Floats) -> Floats:
    """The repeated integral of erfc from x to infinity."""
    result: Floats = np.exp(-(x**2)) / math.sqrt(math.pi) - x * _erfc(x)
    return result
