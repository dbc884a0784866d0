"""How numbers are written."""

import re

import pytest
from hypothesis import given
from hypothesis import strategies as st
from sembra.local.service.numbers import exponent, fixed

FINITE = st.floats(allow_nan=False, allow_infinity=False)


@pytest.mark.parametrize(
    ("value", "decimals", "width", "text"),
    [
        (0.0, 3, 13, "        0.000"),
        (-0.1, 3, 13, "       -0.100"),
        (-0.0, 2, 0, "0.00"),
        (100, 2, 12, "      100.00"),
        (1.2345, 3, 12, "      1.2345"),
        (0.1 + 0.2, 3, 0, "0.30000000000000004"),
        (123456.789, 2, 4, "123456.789"),
        (1e15, 2, 0, "1000000000000000.00"),
        (1e17, 2, 0, "1E+17"),
        (1e-20, 3, 8, "   1E-20"),
        (1.5e300, 2, 0, "1.5E+300"),
    ],
)
def test_fixed(value: float, decimals: int, width: int, text: str) -> None:
    assert fixed(value, decimals, width) == text


@pytest.mark.parametrize(
    ("value", "decimals", "places", "width", "text"),
    [
        (6.03, 2, 2, 0, "6.03E+00"),
        (1e15, 3, 2, 0, "1.000E+15"),
        (1e-10, 2, 2, 0, "1.00E-10"),
        (0.0, 2, 2, 0, "0.00E+00"),
        (-0.0, 2, 2, 0, "0.00E+00"),
        (0.01, 14, 4, 23, " 1.00000000000000E-0002"),
        (4, 9, 3, 0, "4.000000000E+000"),
        (0.0123456, 2, 2, 0, "1.23456E-02"),
        (1e300, 2, 2, 0, "1.00E+300"),
    ],
)
def test_exponent(value: float, decimals: int, places: int, width: int, text: str) -> None:
    assert exponent(value, decimals, places, width) == text


@given(FINITE, st.integers(0, 7), st.integers(0, 15))
def test_fixed_is_read_back_as_it_was(value: float, decimals: int, width: int) -> None:
    text = fixed(value, decimals, width)
    assert float(text) == value
    assert len(text) >= width
    assert re.fullmatch(r" *-?\d+(\.\d+)?(E[+-]\d+)?", text)


@given(FINITE, st.integers(0, 14), st.integers(2, 4))
def test_exponent_is_read_back_as_it_was(value: float, decimals: int, places: int) -> None:
    text = exponent(value, decimals, places)
    assert float(text) == value
    assert re.fullmatch(rf"-?\d(\.\d{{{decimals},}})?E[+-]\d{{{places},}}", text)
