"""Solution of symmetric tridiagonal systems by parallel cyclic reduction (Hockney, 1965).

Each row takes away what stands beside it by the rows at both sides, all rows at once. What stands
beside it then belongs to rows twice as far away, until all rows of a chain stand alone. A system of
many short chains, as columns are, takes as many rounds as its longest one.
"""

from sembra.local.worker.arrays import Floats


def solve_tridiagonal(diagonal: Floats, beside: Floats, right: Floats) -> Floats:
    """Return x of the system with a dominant diagonal.

    Args:
        diagonal: The diagonal, shape (n,).
        beside: What stands beside it in both directions, shape (n - 1,); 0 between two chains.
        right: The right-hand side, shape (n,).
    """
    size = len(diagonal)
    while beside.any():
        apart = size - len(beside)
        by_next, by_last = beside / diagonal[apart:], beside / diagonal[:-apart]
        reduced, rest = diagonal.copy(), right.copy()
        reduced[:-apart] -= by_next * beside
        reduced[apart:] -= by_last * beside
        rest[:-apart] -= by_next * right[apart:]
        rest[apart:] -= by_last * right[:-apart]
        beside = -by_next[:-apart] * beside[apart:]
        diagonal, right = reduced, rest
    solution: Floats = right / diagonal
    return solution
