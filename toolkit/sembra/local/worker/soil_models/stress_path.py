"""Stress paths: a load step split at the preconsolidation pressure."""

from dataclasses import dataclass

import numpy as np

from sembra.local.worker.arrays import Floats


@dataclass(frozen=True)
class StressPath:
    """The logarithms of one load step, per element: unloading (negative), below and above pc."""

    swelling: Floats
    below: Floats
    above: Floats


def stress_path(before: Floats, after: Floats, preconsolidation: Floats) -> StressPath:
    """Split the step from one effective stress to another at the preconsolidation pressure.

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
