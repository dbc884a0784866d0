"""Settlement that is still to come at given times."""

from collections.abc import Iterator, Sequence

import numpy as np

from sembra.local.worker.column_result import ColumnResult
from sembra.local.worker.result.format import column_indication, fixed


def residual_block(results: Sequence[ColumnResult], times: Sequence[float]) -> Iterator[str]:
    """Return a row per vertical and time: settlement, its percentage of the final one, the rest.

    The final settlement is that at the end of the calculation; where it is zero, so is its part.
    """
    yield "[RESIDUAL SETTLEMENTS]"
    yield from column_indication(
        ("Vertical", "Time", "Settlement", "Part of final settlement", "Residual settlement")
    )
    yield from ("[DATA COUNT]", f"{len(results) * len(times):7d} Data count")
    yield from ("[END OF DATA COUNT]", "[RESIDUAL SETTLEMENT DATA]")
    for number, result in enumerate(results, 1):
        history = result.settlements[:, 0]
        final = float(history[-1])
        for time in times:
            settlement = float(np.interp(time, result.times, history))
            part = 100 * settlement / final if final else 0.0
            yield (
                f"{number:7d} {_time(time)} {fixed(settlement)} {fixed(part)} "
                f"{fixed(final - settlement)} "
            )
    yield "[END OF RESIDUAL SETTLEMENT DATA]"
    yield "[END OF RESIDUAL SETTLEMENTS]"


def _time(time: float) -> str:
    return f"{time:7.0f}" if float(time).is_integer() else f"{time:7g}"
