"""The blocks of a vertical that consolidates by Darcy's law."""

from collections.abc import Iterator

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.column_result import DarcyHistory
from sembra.local.worker.result.format import FIXED, history, table, tables

_HEADERS = (
    "Settlement",
    "Effective stress vertical",
    "Hydraulic head",
    "Initial Stress",
    "Loading",
    "Upper amplitude convolution",
    "Lower amplitude convolution",
    "Normalized consolidation coefficient",
)
_NODE = " ".join([FIXED] * 5)
_NODE_AND_ELEMENT = f"{_NODE} {FIXED} {FIXED} %17.7f "
_LOWEST_NODE = f"{_NODE} -1 -1 -1"
"""The lowest node, which has no element below it."""


def leakages_block(consolidation: DarcyHistory) -> Iterator[str]:
    """Return the flow to the vertical drains, one number for each element."""
    yield "[Leakages]"
    yield f"{len(consolidation.leakages):7d}    =  Leakage count"
    yield from table(FIXED, consolidation.leakages[:, None])
    yield "[End of Leakages]"


def drained_layers_block(consolidation: DarcyHistory) -> Iterator[str]:
    """Return whether an element is drained, 1 or 0 for each."""
    yield "[Drained Layers]"
    yield f"{len(consolidation.drained):7d}    =  Layer count"
    yield from ("1" if drained else "0" for drained in consolidation.drained)
    yield "[End of Drained Layers]"


def darcy_history(times: Floats, settlements: Floats, consolidation: DarcyHistory) -> Iterator[str]:
    """Return settlement, stresses and heads at the nodes, and their elements, for every time."""
    initial = np.broadcast_to(consolidation.initial_effective, settlements.shape)
    nodes = np.stack(
        [settlements, consolidation.effective, consolidation.head, initial, consolidation.loading],
        axis=-1,
    )
    elements = np.stack(
        [
            consolidation.upper_amplitudes,
            consolidation.lower_amplitudes,
            _of_next_steps(consolidation.normalized_coefficients),
        ],
        axis=-1,
    )
    upper = np.concatenate([nodes[:, :-1], elements], axis=-1)
    rows = [_NODE_AND_ELEMENT] * elements.shape[1] + [_LOWEST_NODE]
    values = np.hstack([upper.reshape(len(times), -1), nodes[:, -1]])
    yield from history(_HEADERS, times, tables(rows, values))


def _of_next_steps(coefficients: Floats) -> Floats:
    """Return the same without the last ones: no step begins at the end of the calculation."""
    return np.vstack([coefficients[:-1], np.zeros_like(coefficients[-1:])])
