"""Degree of consolidation of a homogeneous layer (Terzaghi and Fröhlich, 1936).

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


def mean_degree(times: Floats, length: float, upper: float, lower: float) -> Floats:
    """Mean degree of consolidation between two depths of a layer drained at both sides.

    Args:
        times: times since the load; up to 0 the degree is 0.
        length: thickness of the layer divided by sqrt(cv), the distance between drained sides.
        upper: depth of the part's top in the same measure.
        lower: depth of the part's bottom in the same measure.
    """
    degrees = np.zeros_like(times)
    factor = times / length**2
    early = (times > 0) & (factor < _EARLY)
    late = factor >= _EARLY
    degrees[early] = _by_images(factor[early], upper / length, lower / length)
    degrees[late] = 1 - _by_series(factor[late], upper / length, lower / length)
    return degrees


def _by_series(factor: Floats, upper: float, lower: float) -> Floats:
    """Mean excess pressure; relative depths, factor = cv t / length²."""
    wave = (2 * np.arange(_TERMS) + 1)[:, None] * math.pi
    shape = (np.cos(wave * upper) - np.cos(wave * lower)) * 4 / wave**2
    total: Floats = (shape * np.exp(-(wave**2) * factor)).sum(axis=0)
    return total / (lower - upper)


def _by_images(factor: Floats, upper: float, lower: float) -> Floats:
    """Mean degree of consolidation; relative depths, factor = cv t / length²."""
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
