"""What of the columns of a load reaches points in the ground.

At a point below all bases the stress is a sum of the pressures on them. At a point above the base
of a column only what of the column lies above the point acts, and nothing acts at a point inside
the load.
"""

from collections.abc import Callable, Sequence

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.loads.strips import Strips

_LEVEL_TOLERANCE = 1e-9


class Reach:
    """What reaches points, whatever the columns weigh.

    Args:
        strips: the columns of the load.
        points: x and levels of the points, for each upright line of them, in metres.
    """

    def __init__(self, strips: Strips, points: Sequence[tuple[float, Floats]]) -> None:
        self._strips = strips
        self._shares = np.concatenate([strips.shares(x, levels) for x, levels in points])
        levels = np.concatenate([levels for _, levels in points])
        high = levels > strips.base.min(initial=np.inf)
        self._high = np.flatnonzero(high)
        level = levels[high, np.newaxis]
        bases = np.stack([strips.bases_at(x) for x, _ in points])
        line = np.repeat(np.arange(len(points)), [len(levels) for _, levels in points])[high]
        inside = level > np.minimum(bases[line], strips.tops) + _LEVEL_TOLERANCE
        self._bases = np.maximum(strips.base, level)
        self._shares_high = np.where(inside, 0.0, self._shares[high])

    def stress(self, pressures: Callable[[Floats], Floats]) -> Floats:
        """Return the vertical stress at all points, line by line, in kPa.

        Args:
            pressures: tells the pressures of the columns by what of them stands above levels, one
                for each column along the last axis.
        """
        stress: Floats = self._shares @ pressures(self._strips.base)
        if len(self._high):
            stress[self._high] = (self._shares_high * pressures(self._bases)).sum(axis=1)
        return stress
