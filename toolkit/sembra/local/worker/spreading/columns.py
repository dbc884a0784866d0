"""How loads are cut into columns."""

from collections.abc import Sequence

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.failures import WorkerError

# In parts of a column.
_ROUNDING = 1e-9
_MOST_COLUMNS = 10_000


def check_count(count: float, what: str) -> None:
    """Refuse what would take too many columns to calculate with.

    Args:
        count: How many there would be.
        what: What is cut into columns, at the beginning of a sentence.

    Raises:
        WorkerError: There would be too many.
    """
    if count > _MOST_COLUMNS:
        raise WorkerError(
            f"{what} would be cut into {count:.0f} columns, which are more than {_MOST_COLUMNS}. "
            "Make the load column width greater."
        )


def cut(vertices: Floats, width: float, what: str) -> tuple[Floats, Floats]:
    """Return the left and right edges of columns between vertices; the last is what remains.

    Args:
        vertices: Places where columns restart, in ascending order, in metres.
        width: Width of the columns, in metres.
        what: What is cut into columns, at the beginning of a sentence.

    Raises:
        WorkerError: There would be too many columns.
    """
    counts = np.ceil(np.diff(vertices) / width - _ROUNDING)
    check_count(counts.sum(), what)
    edges = [
        start + width * np.arange(count) for start, count in zip(vertices[:-1], counts, strict=True)
    ]
    left = np.concatenate([np.empty(0), *edges])
    return left, np.append(left, vertices[-1:])[1:]


def quarters(left: Floats, right: Floats) -> tuple[Floats, Floats, Floats]:
    """Return the places at a quarter, a half and three quarters of each column's width."""
    width = right - left
    return left + 0.25 * width, left + 0.5 * width, left + 0.75 * width


def slopes(levels: Sequence[Floats], left: Floats, right: Floats) -> Floats:
    """Return the slope of each column by the levels at its quarters."""
    return 2 * (levels[2] - levels[0]) / (right - left)
