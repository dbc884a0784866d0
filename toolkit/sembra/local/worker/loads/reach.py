"""What of the columns of a load reaches points in the ground.

At a point below all bases the stress is a sum of the pressures on them. At a point above the base
of a column only what of the column lies above the point acts, and nothing acts at a point inside
the load.
"""

from collections.abc import Sequence

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.spreading.strips import Strips
from sembra.local.worker.tolerances import LENGTH


class Reach:
    """What reaches points, whatever the columns weigh.

    Args:
        strips: The columns, of one load or of several.
        points: x and levels of the points, for each upright line of them, in metres.
    """

    def __init__(self, strips: Sequence[Strips], points: Sequence[tuple[float, Floats]]) -> None:
        shares = np.block([[one.shares(x, levels) for one in strips] for x, levels in points])
        standing = np.block([[one.bases_at(x) for one in strips] for x, _ in points])
        base = np.concatenate([one.base for one in strips])
        top = np.concatenate([one.tops for one in strips])
        levels = np.concatenate([levels for _, levels in points])
        line = np.repeat(np.arange(len(points)), [len(levels) for _, levels in points])
        high = np.flatnonzero(levels > base.min(initial=np.inf))
        level = levels[high, np.newaxis]
        inside = level > np.minimum(standing[line[high]], top) + LENGTH
        shares[high] = np.where(inside, 0.0, shares[high])
        # Few columns reach points above their bases, so these pairs stand apart.
        place, self._columns = np.nonzero((level > base) & (shares[high] != 0))
        self._points = high[place]
        self._cut_off = levels[self._points] - base[self._columns]
        self._shares_of_parts = shares[self._points, self._columns]
        shares[self._points, self._columns] = 0.0
        self._shares = shares.T

    def stress(self, heights: Floats, unit_weights: Floats | float) -> Floats:
        """Return the vertical stress at all points, line by line, in kPa.

        Args:
            heights: How high the columns stand above their bases in metres, shape (..., columns).
            unit_weights: What they weigh in kN/m³, for each column or for all.

        Returns:
            An array of shape (..., points).
        """
        stress: Floats = (heights * unit_weights) @ self._shares
        if len(self._points):
            heights, weights = (
                each[..., self._columns] for each in np.broadcast_arrays(heights, unit_weights)
            )
            parts = np.maximum(heights - self._cut_off, 0.0) * weights
            np.add.at(stress.T, self._points, (parts * self._shares_of_parts).T)
        return stress
