"""Numbers and lists as they stand in a result file."""

from collections.abc import Iterable, Iterator, Sequence

import numpy as np

from sembra.local.worker.arrays import Floats

FIXED = "%12.7f"
"""The number of `fixed` in the pattern of a row for `table`."""

END_OF_HISTORY = "[End of Time dependent Data]"


_LARGEST_ZERO = 5e-8
"""The largest number whose first seven decimals are zeros once it is rounded."""


def fixed(value: float) -> str:
    """Return a number with seven decimals; a negative zero loses its sign."""
    return FIXED % (0.0 if abs(value) <= _LARGEST_ZERO else value)


def row(values: Iterable[float]) -> str:
    """Return the numbers of a wide table, three blanks behind each."""
    return "".join(f"{fixed(value)}   " for value in values)


def table(pattern: str, values: Floats) -> list[str]:
    """Return the rows of a table, as `fixed` writes each number.

    Args:
        pattern: A row, with a `%` conversion of seven decimals for each number.
        values: The numbers, shape (rows, numbers of a row).
    """
    if not len(values):
        return []
    (text,) = tables([pattern] * len(values), values.reshape(1, -1))
    return text.split("\n")


def tables(rows: Sequence[str], values: Floats) -> Iterator[str]:
    """Return the texts of tables with the same rows, which line feeds separate.

    Each is written at once, since most of a result file are numbers of tables.

    Args:
        rows: The rows, with a `%` conversion of seven decimals for each number.
        values: The numbers, shape (tables, numbers of a table).
    """
    pattern = "\n".join(rows)
    for numbers in np.where(np.abs(values) <= _LARGEST_ZERO, 0.0, values).tolist():
        yield pattern % tuple(numbers)


def column_indication(headers: Iterable[str]) -> Iterator[str]:
    """Return the names of the columns of a table, one a line."""
    yield "[Column Indication]"
    yield from headers
    yield "[End of Column Indication]"


def history(headers: Iterable[str], times: Iterable[float], texts: Iterable[str]) -> Iterator[str]:
    """Return a table for each time, with one set of headers."""
    yield "[Time-dependent Data]"
    yield from column_indication(headers)
    for time, text in zip(times, texts, strict=True):
        yield "[Vertical Data at Time]"
        yield f"{time:17.12f}    =  Time in days"
        yield text
        yield "[End of Vertical Data at Time]"
    yield END_OF_HISTORY
