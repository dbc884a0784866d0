"""The blocks of a vertical that consolidates by Terzaghi's theory."""

from collections.abc import Iterator

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.column_result import TerzaghiStresses
from sembra.local.worker.result.format import FIXED, column_indication, history, row, tables


def stresses_block(stresses: TerzaghiStresses) -> Iterator[str]:
    """Return the stresses at the nodes.

    The preconsolidation pressure is that of the element below the node, so the last one has none.
    No blank stands behind "Depth step count": readers take the line to the letter.
    """
    columns = {
        "Initial total stress": stresses.initial_total,
        "Initial water stress": stresses.initial_water,
    }
    if stresses.preconsolidation is not None:
        columns["Final pre consolidation stress"] = np.append(stresses.preconsolidation, 0.0)
    columns["Final total stress"] = stresses.final_total
    columns["Final water stress"] = stresses.final_water
    yield "[Stresses]"
    yield from column_indication(columns)
    yield "[Stress Data]"
    yield f"{len(stresses.initial_total):7d}  =  Depth step count"
    yield from (row(values) for values in zip(*columns.values(), strict=True))
    yield "[End of Stress Data]"
    yield "[End of Stresses]"


def terzaghi_history(
    times: Floats, settlements: Floats, stresses: TerzaghiStresses
) -> Iterator[str]:
    """Return the settlement and effective stress at the nodes for every time."""
    nodes = np.stack([settlements, stresses.loading], axis=-1)
    texts = tables([f"{FIXED} {FIXED}"] * nodes.shape[1], nodes.reshape(len(times), -1))
    yield from history(("Settlement", "Loading"), times, texts)
