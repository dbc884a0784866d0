"""Solution of symmetric tridiagonal systems by elimination (Thomas)."""

import numpy as np

from sembra.local.worker.arrays import Floats


def solve_tridiagonal(diagonal: Floats, beside: Floats, right: Floats) -> Floats:
    """Return x of the system with a dominant diagonal.

    Plain numbers are faster than arrays here, as each row waits for the one before.

    Args:
        diagonal: the diagonal, shape (n,).
        beside: what stands beside it in both directions, shape (n - 1,).
        right: the right-hand side, shape (n,).
    """
    factors: list[float] = []
    values: list[float] = []
    before = factor = value = 0.0
    for centre, following, target in zip(
        diagonal.tolist(), [*beside.tolist(), 0.0], right.tolist(), strict=True
    ):
        pivot = centre - before * factor
        value = (target - before * value) / pivot
        factor = following / pivot
        before = following
        factors.append(factor)
        values.append(value)
    for row in range(len(values) - 2, -1, -1):
        value = values[row] - factors[row] * value
        values[row] = value
    return np.array(values)
