"""Numbers and lists as they stand in a result file."""

from collections.abc import Iterable, Iterator

END_OF_HISTORY = "[End of Time dependent Data]"


def fixed(value: float, width: int = 12) -> str:
    """A number with seven decimals; a negative zero loses its sign."""
    text = f"{value:{width}.7f}"
    return f"{0.0:{width}.7f}" if float(text) == 0 else text


def row(values: Iterable[float]) -> str:
    """The numbers of a wide table, three blanks behind each."""
    return "".join(f"{fixed(value)}   " for value in values)


def column_indication(headers: Iterable[str]) -> Iterator[str]:
    """The names of the columns of a table, one a line."""
    yield "[Column Indication]"
    yield from headers
    yield "[End of Column Indication]"


def history(
    headers: Iterable[str], times: Iterable[float], tables: Iterable[Iterable[str]]
) -> Iterator[str]:
    """A table for each time, with one set of headers."""
    yield "[Time-dependent Data]"
    yield from column_indication(headers)
    for time, rows in zip(times, tables, strict=True):
        yield "[Vertical Data at Time]"
        yield f"{time:17.12f}    =  Time in days"
        yield from rows
        yield "[End of Vertical Data at Time]"
    yield END_OF_HISTORY
