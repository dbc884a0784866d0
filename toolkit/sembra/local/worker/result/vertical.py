"""The results of one vertical: which blocks it has, and in which order."""

from collections.abc import Iterator

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.column_result import ColumnResult, DarcyHistory, TerzaghiStresses
from sembra.local.worker.result.darcy import (
    darcy_history,
    drained_layers_block,
    leakages_block,
)
from sembra.local.worker.result.fixed_times import fixed_time_block
from sembra.local.worker.result.format import END_OF_HISTORY, FIXED, fixed, table
from sembra.local.worker.result.koppejan import NO_SETTLEMENT, koppejan_block
from sembra.local.worker.result.terzaghi import stresses_block, terzaghi_history


def vertical_block(number: int, result: ColumnResult) -> Iterator[str]:
    """Return the block of a vertical, tags included; `number` counts from 1.

    What is yielded is a line, or all rows of a table with line feeds between them.
    """
    yield "[Vertical]"
    yield f"{number:7d}     =  Vertical count"
    yield f"{fixed(result.column.x)}     =  X co-ordinate"
    yield f"{fixed(result.column.z)}     =  Z co-ordinate"
    if result.load_settlements is not None:
        yield from _time_settlement(result.times, result.load_settlements)
    if isinstance(result.consolidation, TerzaghiStresses):
        yield from _depths(result.mesh.levels)
        yield from stresses_block(result.consolidation)
        if result.layer_settlements is not None:
            yield from koppejan_block(result.layer_settlements)
        yield from terzaghi_history(result.times, result.settlements, result.consolidation)
    else:
        if result.layer_settlements is not None:
            # By Darcy the kinds of settlement are not told apart.
            yield from koppejan_block([NO_SETTLEMENT] * len(result.layer_settlements))
        yield from _depths(result.mesh.levels)
        yield from leakages_block(result.consolidation)
        yield from drained_layers_block(result.consolidation)
        yield from darcy_history(result.times, result.settlements, result.consolidation)
    yield from fixed_time_block(result)
    if isinstance(result.consolidation, DarcyHistory):
        # Only by Darcy has the second block of time-dependent data an end.
        yield END_OF_HISTORY
    yield "[End of Vertical]"


def _time_settlement(times: Floats, load_settlements: Floats) -> Iterator[str]:
    """Return the settlement of the surface by the first load step, the first two, and so on."""
    yield "[Time-Settlement per Load]"
    yield f"{len(times):7d}  =  Time step count "
    yield f"{load_settlements.shape[1]:7d}  =  Load step count "
    rows = np.column_stack([times, load_settlements])
    yield from table(f"{FIXED}   " * rows.shape[1], rows)
    yield "[End of Time-Settlement per Load]"


def _depths(levels: Floats) -> Iterator[str]:
    yield "[Depths]"
    yield f"{len(levels):7d}    =  Depth count"
    yield from table(FIXED, levels[:, None])
    yield "[End of Depths]"
