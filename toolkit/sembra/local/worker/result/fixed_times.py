"""Settlement against depth at round times, interpolated between calculated times and nodes."""

from collections.abc import Iterator

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.column_result import ColumnResult
from sembra.local.worker.result.format import FIXED, column_indication, table

_TIMES = [digit * 10.0**power for power in range(-3, 4) for digit in (1, 2, 5)] + [10000.0]
_INTERVALS = 20


def fixed_time_block(result: ColumnResult) -> Iterator[str]:
    """Return the settlement at twenty equal intervals of depth for times from 0.001 to 10000 days.

    Beyond the end of the calculation the last settlement stays.
    """
    levels = result.mesh.levels
    depths = np.linspace(levels[0], levels[-1], _INTERVALS + 1)
    yield "[Time-dependent Data]"
    yield from column_indication(("Depth", "Settlement"))
    for time in _TIMES:
        at_nodes = settlements_at(time, result)
        at_depths = np.interp(-depths, -levels, at_nodes)
        yield "[Vertical Data at Fixed Time]"
        yield f"{time:17.12f}    =  Time in days"
        yield from table(f"{FIXED} {FIXED}", np.stack([depths, at_depths], axis=-1))
        yield "[End of Vertical Data at Fixed Time]"


def settlements_at(time: float, result: ColumnResult) -> Floats:
    """Return the nodes' settlement at a time: linear in its logarithm from the first step on."""
    history = result.settlements
    later = int(np.searchsorted(result.times, time))
    if later >= len(result.times):
        later, time = len(result.times) - 1, float(result.times[-1])
    start, stop = result.times[later - 1], result.times[later]
    if start > 0:
        time, start, stop = np.log(time), np.log(start), np.log(stop)
    part = (time - start) / (stop - start)
    settlements: Floats = (1 - part) * history[later - 1] + part * history[later]
    return settlements
