"""How high the columns of a load stand in water, as the ground settles step by step.

A column whose base or top slopes is wet to different heights at its two ends, and on average to
their mean. Where the water gets ahead at one end, since the base lies lower or the other end is
under water already, it gets ahead by no more than the column settles in the step; the lead that
was cut off first stays for good. No theory says so: it is what published results show, to the last
digit printed.
"""

from collections.abc import Sequence

import numpy as np
from numpy.typing import NDArray

from sembra.local.worker.arrays import Floats
from sembra.local.worker.loads.strip_load import StripLoad
from sembra.local.worker.tolerances import LENGTH


class WetColumns:
    """The columns of loads in several runs, from the time step on in which they come.

    Args:
        loads: The loads, whose columns stand side by side in arrays.
        runs: The number of runs, in each of which the columns settle in their own way.
    """

    def __init__(self, loads: Sequence[StripLoad], runs: int) -> None:
        water_levels = np.concatenate([load.water_levels for load in loads])
        base, height = np.concatenate([load.strips.ends for load in loads], axis=-1)
        # Of shape (2, 1, columns): for the two ends of each column, the same in all runs.
        self._above_water, self._height = (base - water_levels)[:, None], height[:, None]
        self._sunk = np.full((runs, len(water_levels)), np.nan)
        self._lead = np.full_like(self._sunk, np.nan)

    def heights(self, settlement: Floats, there: NDArray[np.bool_]) -> Floats:
        """Return how high the columns are wet.

        Args:
            settlement: Settlement of the ground below each column in metres, shape (runs,
                columns), one step after that of the call before.
            there: Whether the column has come by now, in the same shape.
        """
        depths = np.minimum(settlement - self._above_water, self._height)
        ahead, behind = np.maximum(*depths), np.minimum(*depths)
        lead = ahead - behind
        is_first = np.isnan(self._sunk)
        limit = np.where(is_first, lead, np.maximum(settlement - self._sunk, 0.0))
        allowed = np.where(np.isnan(self._lead), np.minimum(lead, limit), self._lead)
        wet = np.maximum(np.minimum(ahead, behind + allowed), 0.0) + np.maximum(behind, 0.0)
        cut_off = there & (wet > 0) & (lead > np.where(is_first, 0.0, limit) + LENGTH)
        self._lead = np.where(cut_off, allowed, self._lead)
        self._sunk = np.where(there, settlement, np.nan)
        heights: Floats = wet / 2
        return heights
