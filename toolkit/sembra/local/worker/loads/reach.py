"""What of the columns of a load reaches points in the ground.

At a point below all bases the stress is a sum of the pressures on them. At a point above the base
of a column only what of the column lies above the point acts, and nothing acts at a point inside
the load.
"""

from collections.abc import Sequence

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
        shares = np.concatenate([strips.shares(x, levels) for x, levels in points])
        levels = np.concatenate([levels for _, levels in points])
        high = np.flatnonzero(levels > strips.base.min(initial=np.inf))
        level = levels[high, np.newaxis]
        bases = np.stack([strips.bases_at(x) for x, _ in points])
        line = np.repeat(np.arange(len(points)), [len(levels) for _, levels in points])[high]
        inside = level > np.minimum(bases[line], strips.tops) + _LEVEL_TOLERANCE
        shares[high] = np.where(inside, 0.0, shares[high])
        # Few columns reach points above their bases, so these pairs stand apart.
        place, self._columns = np.nonzero((level > strips.base) & (shares[high] != 0))
        self._points = high[place]
        self._cut_off = levels[self._points] - strips.base[self._columns]
        self._shares_of_parts = shares[self._points, self._columns]
        shares[self._points, self._columns] = 0.0
        self._shares = shares.T

    def stress(self, heights: Floats) -> Floats:
        """Return the vertical stress at all points, line by line, for a unit weight of 1 kN/m³.

        Args:
            heights: heights that columns of this weight have above their bases in metres, shape
                (..., columns).

        Returns:
            Stress in kPa, shape (..., points).
        """
        stress: Floats = heights @ self._shares
        if len(self._points):
            parts = np.maximum(heights[..., self._columns] - self._cut_off, 0.0)
            np.add.at(stress.T, self._points, (parts * self._shares_of_parts).T)
        return stress
