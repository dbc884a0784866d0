"""How high the columns of a load stand in water, as the ground settles step by step.

A column whose base or top slopes is wet to different heights at its two ends, and on average to
their mean. Where the water gets ahead at one end, since the base lies lower or the other end is
under water already, it gets ahead by no more than the column settles in the step; the lead that
was cut off first stays for good. No theory says so: it is what published results show, to the last
digit printed.
"""

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.loads.strip_load import StripLoad

_ROUNDING = 1e-9


class WetColumns:
    """The columns of a load in several runs, from the time step on in which it comes.

    Args:
        load: the load.
        runs: the number of runs, in each of which the columns settle in their own way.
    """

    def __init__(self, load: StripLoad, runs: int) -> None:
        base, height = load.strips.ends
        # Of shape (2, 1, columns): for the two ends of each column, the same in all runs.
        self._above_water, self._height = (base - load.water_levels)[:, None], height[:, None]
        self._sunk: Floats | None = None
        self._lead = np.full((runs, len(load.water_levels)), np.nan)

    def heights(self, settlement: Floats) -> Floats:
        """Return how high the columns are wet.

        Args:
            settlement: settlement of the ground below each column in metres, shape (runs,
                columns), one step after that of the call before.
        """
        depths = np.minimum(settlement - self._above_water, self._height)
        ahead, behind = np.maximum(*depths), np.minimum(*depths)
        lead = ahead - behind
        limit = lead if self._sunk is None else np.maximum(settlement - self._sunk, 0.0)
        allowed = np.where(np.isnan(self._lead), np.minimum(lead, limit), self._lead)
        wet = np.maximum(np.minimum(ahead, behind + allowed), 0.0) + np.maximum(behind, 0.0)
        is_first = self._sunk is None
        cut_off = (lead > _ROUNDING) if is_first else (lead > limit + _ROUNDING)
        self._lead = np.where(cut_off & (wet > 0), allowed, self._lead)
        self._sunk = settlement
        heights: Floats = wet / 2
        return heights
