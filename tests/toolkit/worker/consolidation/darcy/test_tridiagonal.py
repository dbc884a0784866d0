"""Elimination in tridiagonal systems, against that of numpy."""

import numpy as np
import pytest
from sembra.local.worker.consolidation.darcy.tridiagonal import solve_tridiagonal


@pytest.mark.parametrize("size", [1, 2, 17])
def test_as_numpy_solves_it(size: int) -> None:
    random = np.random.default_rng(size)
    beside = random.uniform(-1, 1, size - 1)
    diagonal = random.uniform(2.1, 3, size)
    right = random.uniform(-5, 5, size)
    matrix = np.diag(diagonal) + np.diag(beside, 1) + np.diag(beside, -1)
    expected = np.linalg.solve(matrix, right)
    assert solve_tridiagonal(diagonal, beside, right) == pytest.approx(expected)
