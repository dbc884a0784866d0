"""Times at which settlements are calculated.

Within a load step the times are a tenth of a day, then steps that grow by a constant factor. On
the logarithmic scale of the shifted time t + c there are ten to a decade; c is such that the
second time would be two tenths of a day. The factor is then bent so that the last step ends with
the load step.
"""

import math
from collections.abc import Iterable, Sequence

import numpy as np

from sembra.local.worker.arrays import Floats

FIRST_STEP = 0.1
_FACTOR = 10.0**0.1
_SHIFT = (2 * FIRST_STEP - FIRST_STEP * _FACTOR) / (_FACTOR - 1)
_TOLERANCE = 1e-9


def step_times(duration: float) -> list[float]:
    """Return the times after the start of a load step, in days; the last is its duration."""
    if duration <= FIRST_STEP + _TOLERANCE:
        return [duration]
    span = math.log((duration + _SHIFT) / (FIRST_STEP + _SHIFT))
    count = max(round(span / math.log(_FACTOR)), 1)
    factor = math.exp(span / count)
    times = [(FIRST_STEP + _SHIFT) * factor**k - _SHIFT for k in range(1, count)]
    return [FIRST_STEP, *times, duration]


def calculation_times(
    load_times: Sequence[float], end: float, wanted: Iterable[float] = ()
) -> Floats:
    """Return all times of a calculation in ascending order, from 0 to the end, without repeats.

    Args:
        load_times: Times at which loads come, in days.
        end: End of the calculation, in days.
        wanted: Further times that results are wanted for, in days, from 0 to the end.
    """
    starts = sorted({0.0, *(time for time in load_times if 0 < time < end)})
    times = [0.0]
    for start, stop in zip(starts, [*starts[1:], end], strict=True):
        times.extend(start + time for time in step_times(stop - start)[:-1])
        times.append(stop)
    merged = np.array(sorted([*times, *wanted]))
    keep = np.concatenate([[True], np.diff(merged) > _TOLERANCE])
    kept: Floats = merged[keep]
    return kept
