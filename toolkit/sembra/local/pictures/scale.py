"""Scales of a cross-section, which is often much longer than high."""

from dataclasses import dataclass
from math import floor, log10

STEPS = (1.0, 1.5, 2.0, 2.5, 3.0, 4.0, 5.0, 6.0, 8.0)
"""Exaggerations that can be told in a word, within a decade."""


@dataclass(frozen=True)
class Scale:
    """How a length and a height [m] are brought into a picture of a width and height [inches].

    exaggeration: how many times larger heights are drawn than lengths, at least once.
    """

    width: float
    height: float
    exaggeration: float


def fit(length: float, rise: float, width: float, height: float) -> Scale:
    """Find the largest round exaggeration with which a cross-section fits, at least 1.

    length, rise: size of the cross-section, in metres.
    width, height: room for it, in inches; it takes the whole width if its height allows that.
    """
    exaggeration = _round_down(max(1.0, height / rise * length / width))
    inches_per_metre = min(width / length, height / rise / exaggeration)
    return Scale(inches_per_metre * length, inches_per_metre * rise * exaggeration, exaggeration)


def _round_down(value: float) -> float:
    decade = 10.0 ** floor(log10(value) + 1e-9)
    return decade * max(step for step in STEPS if step * decade <= value * (1 + 1e-9))
