"""What an element lets flow and keeps, by a pressure that is put on it (Carslaw and Jaeger, 1959).

In an element of height 1 whose ends are held at zero, and whose water flows to drains too, the
pressure follows du/dθ = d²u/dz² - 4 l u + source, with θ the time in heights² / diffusivity and l
the leakage. For a source of 1 at one end that falls to 0 at the other,

    D = sum 2 / Q (1 - exp(-Q θ))              what flows out at the same end
    O = -sum 2 (-1)^m / Q (1 - exp(-Q θ))      what flows out at the other end
    P = sum over odd m of 8 / ((m pi)² Q) (1 - exp(-Q θ))     the mean pressure, for 1 at both ends

each since the source began, with Q = (m pi)² + 4 l and m = 1, 2, 3...; without the exponentials the
sums are known in closed form. Early on the ends don't feel each other, and D, O and P are those of
two half-spaces.
"""

import math
from dataclasses import dataclass

import numpy as np
from numpy.typing import NDArray

from sembra.local.worker.arrays import Floats

# From here on sixteen terms are enough, and up to here the two ends don't feel each other: what
# either leaves out is exp(-25).
_EARLY = 0.01
_TERMS = 16
_ORDERS = np.arange(1, _TERMS + 1)
_SIGNS = np.where(_ORDERS % 2 == 0, 1.0, -1.0)
_WAVES = (np.pi * _ORDERS) ** 2
# What each term is multiplied by in D, O and P, besides 1 / Q.
_SHARES = np.stack([np.full(_TERMS, 2.0), -2 * _SIGNS, np.where(_SIGNS < 0, 8 / _WAVES, 0)])
_NO_LEAKAGE = 1e-9
# exp(-pi² 4) is 1e-17: by then an element has forgotten.
FORGOTTEN = 4.0
# As the exponentials of term m are those of the first one after m² times the time, four terms are
# enough from a time on that most are later than.
_FEW_TERMS = 4
_FEW_TERMS_FROM = FORGOTTEN / (_FEW_TERMS + 1) ** 2
_erf = np.vectorize(math.erf, otypes=[np.float64])


@dataclass(frozen=True)
class Kernels:
    """D, O and P of elements, at one time or at several: the first axis of `values`."""

    values: Floats

    @property
    def direct(self) -> Floats:
        """D."""
        direct: Floats = self.values[0]
        return direct

    @property
    def other(self) -> Floats:
        """O."""
        other: Floats = self.values[1]
        return other

    @property
    def mean(self) -> Floats:
        """P."""
        mean: Floats = self.values[2]
        return mean


class Response:
    """The kernels of elements.

    Args:
        leakages: Leakage l of each element, 0 without drains.
    """

    def __init__(self, leakages: Floats) -> None:
        self._leakages = leakages
        self._leaks = bool(leakages.any())
        self._rates = _WAVES[:, None] + 4 * leakages
        self._limits = np.stack(_limits(leakages))[:, None, :]

    def at(self, times: Floats) -> Kernels:
        """Return the kernels at times of shape (times, elements)."""
        values = self._limits - self._held(times)
        early = times < _EARLY
        if early.any():
            leakages = np.broadcast_to(self._leakages, times.shape)[early]
            values[:, early] = _of_half_spaces(times[early], leakages)
        return Kernels(values)

    def _held(self, times: Floats) -> Floats:
        """Return the terms with exponentials, by which the kernels are below their limits."""
        ages = times.ravel()
        held = np.zeros((3, ages.size))
        early, late = ages < _FEW_TERMS_FROM, ages < FORGOTTEN
        for count, there in ((_TERMS, early), (_FEW_TERMS, late & ~early)):
            places = np.flatnonzero(there)
            terms = _exponentials(ages[places], count)
            if self._leaks:
                terms /= self._rates[:count, places % times.shape[1]]
                held[:, places] = _SHARES[:, :count] @ terms
            else:
                held[:, places] = (_SHARES / _WAVES)[:, :count] @ terms
        held = held.reshape(3, *times.shape)
        if self._leaks:
            held *= np.exp(-4 * self._leakages * times)
        return held


def _exponentials(times: Floats, count: int) -> Floats:
    """Return exp(-(m pi)² θ) for the first m as the first axis, each out of the one before."""
    terms = np.empty((count, *times.shape))
    growth = terms[0] = np.exp(-_WAVES[0] * times)
    square = growth * growth
    for order in range(1, count):
        growth = growth * square
        np.multiply(terms[order - 1], growth, out=terms[order])
    return terms


def _limits(leakages: Floats) -> tuple[Floats, Floats, Floats]:
    """Return D, O and P after a long time."""
    none = leakages < _NO_LEAKAGE
    s = 2 * np.sqrt(np.where(none, 1.0, leakages))
    # coth s = 1 + 2 / (e^2s - 1), 1 / sinh s = 2 e^-s / (1 - e^-2s)
    direct = (s / np.tanh(s) - 1) / s**2
    other = 1 / s**2 - 2 * np.exp(-s) / (-np.expm1(-2 * s) * s)
    mean = (1 - 2 / s * np.tanh(s / 2)) / s**2
    return (
        np.where(none, 1 / 3, direct),
        np.where(none, 1 / 6, other),
        np.where(none, 1 / 12, mean),
    )


def _of_half_spaces(times: Floats, leakages: Floats) -> tuple[Floats, Floats, Floats]:
    """Return D, O and P as long as the ends of an element don't feel each other."""
    roots = np.sqrt(times / np.pi)
    flow, kept, mean = 2 * roots, times.copy(), times - 8 / 3 * times * roots
    leaking: NDArray[np.bool_] = leakages * times > _NO_LEAKAGE
    if leaking.any():
        rate, time = 4 * leakages[leaking], times[leaking]
        gone = np.exp(-rate * time)
        flow[leaking] = _erf(np.sqrt(rate * time)) / np.sqrt(rate)
        kept[leaking] = -np.expm1(-rate * time) / rate
        mean[leaking] = kept[leaking] - 2 / rate * (flow[leaking] - 2 * roots[leaking] * gone)
    return flow - kept, kept, mean
