"""Limits of time that callers give."""

import math


def seconds(limit: float, what: str) -> float:
    """Return a limit as a float: sockets and locks take none of the other kinds of number.

    Args:
        limit: The limit, in seconds, a number of any kind; infinity for no limit.
        what: What it is, as the beginning of a sentence.

    Raises:
        ValueError: It isn't above 0.
    """
    if not limit > 0:
        raise ValueError(f"{what} must be above 0 seconds ({limit})")
    try:
        return float(limit)
    except OverflowError:
        return math.inf
