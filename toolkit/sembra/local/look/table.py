"""Tables of the page."""

from collections.abc import Sequence
from dataclasses import dataclass, field

from sembra.core import Color

MINUS = "\N{MINUS SIGN}"


@dataclass(frozen=True)
class Column:
    """A column: what stands above it, its unit, and whether it holds numbers."""

    label: str
    unit: str = ""
    numbers: bool = True


@dataclass(frozen=True)
class Name:
    """A name at the beginning of a row, with the colour that pictures have for it."""

    text: str
    color: Color | None = None

    @property
    def css(self) -> str:
        """The colour as a style sheet has it."""
        return f"rgb({self.color.r} {self.color.g} {self.color.b})" if self.color else ""


@dataclass(frozen=True)
class Table:
    """A table.

    Args:
        title: Stands above it.
        columns: What stands above the columns.
        rows: One entry per column, the first of which names the row.
        note: Stands below it.
    """

    title: str
    columns: Sequence[Column]
    rows: Sequence[Sequence[Name | str]] = field(repr=False)
    note: str = ""


def number(value: float, digits: int = 6) -> str:
    """Return a number as people write it, with as many digits as it needs."""
    text = f"{value:.{digits}g}"
    mantissa, e, power = text.partition("e")
    if e:
        raised = str(int(power)).translate(str.maketrans("-0123456789", "⁻⁰¹²³⁴⁵⁶⁷⁸⁹"))
        text = f"{mantissa}·10{raised}"
    return text.replace("-", MINUS)


def day(time: float) -> str:
    """Return the time of a load."""
    return "initial" if time < 0 else f"day {number(time)}"
