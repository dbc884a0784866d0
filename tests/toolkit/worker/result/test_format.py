"""Numbers as they stand in a result file."""

import numpy as np
import pytest
from sembra.local.worker.result.format import FIXED, fixed, table


@pytest.mark.parametrize(
    ("value", "text"),
    [
        (1.25, "   1.2500000"),
        (-123456.5, "-123456.5000000"),
        (-0.0, "   0.0000000"),
        (-5e-8, "   0.0000000"),
        (-5.01e-8, "  -0.0000001"),
        (5.01e-8, "   0.0000001"),
    ],
)
def test_seven_decimals_and_no_negative_zero(value: float, text: str) -> None:
    assert fixed(value) == text
    assert table(FIXED, np.array([[value]])) == [text]


def test_rows_by_their_pattern() -> None:
    rows = table(f"{FIXED} {FIXED} %17.7f ", np.array([[1.0, -1e-9, 2.5], [3.0, 4.0, 5.0]]))
    assert rows == [
        "   1.0000000    0.0000000         2.5000000 ",
        "   3.0000000    4.0000000         5.0000000 ",
    ]


def test_a_table_without_rows() -> None:
    assert table(FIXED, np.empty((0, 1))) == []
