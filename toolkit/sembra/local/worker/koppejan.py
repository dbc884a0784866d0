"""Strain by the method of Koppejan (1948), as in NEN 6744 and NEN 9997-1.

    strain = (U / Cp  + log10(1 + t / t0) / Cs ) ln(min(s1, pc) / s0)     below preconsolidation
           + (U / Cp' + log10(1 + t / t0) / Cs') ln(s1 / max(s0, pc))     above preconsolidation
           + (U / Ap  + log10(1 + t / t0) / As ) ln(s1 / s0)              unloading, s1 < s0

with s0 and s1 the effective stress before and after a load step, pc the preconsolidation
pressure, t the time since the step, t0 the reference time and U the degree of consolidation.
Contributions of load steps are added.
"""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import dataclass

import numpy as np

from .model import Floats, Material


@dataclass(frozen=True)
class StressPath:
    """The logarithms of one load step, per element: unloading (negative), below and above pc."""

    swelling: Floats
    below: Floats
    above: Floats


def stress_path(before: Floats, after: Floats, preconsolidation: Floats) -> StressPath:
    """Splits the step from one effective stress to another at the preconsolidation pressure.

    All stresses must be positive; each array has one value per element.
    """
    loading = after > before
    below = np.log(np.minimum(after, preconsolidation) / before)
    above = np.log(after / np.maximum(before, preconsolidation))
    return StressPath(
        swelling=np.where(loading, 0.0, np.log(after / before)),
        below=np.where(loading, np.maximum(below, 0.0), 0.0),
        above=np.where(loading, np.maximum(above, 0.0), 0.0),
    )


@dataclass(frozen=True)
class Compressibility:
    """Primary or secular constants of each element: Ap, Cp and Cp', or As, Cs and Cs'."""

    swelling: Floats
    below: Floats
    above: Floats

    def parts(self, path: StressPath) -> StressPath:
        """Strain of each kind."""
        return StressPath(
            path.swelling / self.swelling, path.below / self.below, path.above / self.above
        )

    def strain(self, path: StressPath) -> Floats:
        """Strain of all kinds together."""
        parts = self.parts(path)
        return parts.swelling + parts.below + parts.above


def primary_constants(materials: Sequence[Material]) -> Compressibility:
    """Ap, Cp and Cp' of the elements' materials."""
    return Compressibility(
        swelling=np.array([material.ap for material in materials]),
        below=np.array([material.cp for material in materials]),
        above=np.array([material.cp1 for material in materials]),
    )


def secular_constants(materials: Sequence[Material]) -> Compressibility:
    """As, Cs and Cs' of the elements' materials."""
    return Compressibility(
        swelling=np.array([material.asec for material in materials]),
        below=np.array([material.cs for material in materials]),
        above=np.array([material.cs1 for material in materials]),
    )


def secular_factor(time: Floats, reference_time: float) -> Floats:
    """log10(1 + t / t0) for times since the load step, 0 before it."""
    return np.log10(1 + np.maximum(time, 0.0) / reference_time)


def linear_strain(natural: Floats) -> Floats:
    """Strain relative to the initial height, out of natural (Hencky) strain."""
    return -np.expm1(-natural)
