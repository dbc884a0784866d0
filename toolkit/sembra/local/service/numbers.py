"""How numbers are written in a D-Settlement file.

Every field has a width and a count of decimals of its own. The reader of such files splits lines
at white space, so a number may be wider than its field: a value that needs more digits than the
field shows gets them. What is read back is always the number that was given.
"""

from decimal import Decimal
from functools import lru_cache

MOST_DIGITS = 17
"""Places on either side of the point before a fixed-point number is written with an exponent."""

KEPT = 10_000
"""How many texts are kept: most numbers of a file are defaults, the same in every file."""


@lru_cache(KEPT)
def fixed(value: float, decimals: int, width: int = 0) -> str:
    """Write a number in fixed point, right-aligned.

    Args:
        value: A finite number.
        decimals: Decimals at least.
        width: Characters at least.
    """
    exact = Decimal(repr(value + 0.0))
    needed = -min(0, _last_place(exact))
    if needed > MOST_DIGITS or exact.adjusted() >= MOST_DIGITS:
        return exponent(value, 0).rjust(width)
    return f"{exact:.{max(decimals, needed)}f}".rjust(width)


@lru_cache(KEPT)
def exponent(value: float, decimals: int, places: int = 2, width: int = 0) -> str:
    """Write a number with an exponent, right-aligned.

    Args:
        value: A finite number.
        decimals: Decimals of the mantissa at least.
        places: Digits of the exponent at least.
        width: Characters at least.
    """
    exact = Decimal(repr(value + 0.0))
    needed = exact.adjusted() - _last_place(exact)
    # The exponent of a decimal zero depends on its digits: it is written by hand.
    text = f"{exact:.{max(decimals, needed)}E}" if exact else f"{0:.{decimals}f}E+0"
    mantissa, _, power = text.partition("E")
    return f"{mantissa}E{power[0]}{power[1:].zfill(places)}".rjust(width)


def _last_place(exact: Decimal) -> int:
    """Return the power of ten of the last digit that isn't zero."""
    power = exact.normalize().as_tuple().exponent if exact else 0
    assert isinstance(power, int)
    return power
