"""Numbers and lists as they stand in a result file."""

from collections.abc import Iterable, Iterator


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
