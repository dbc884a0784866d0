"""Filling the template of a D-Settlement input file."""

from jinja2 import Environment, PackageLoader, StrictUndefined

from sembra.local.service.frame import Frame
from sembra.local.service.geometry_1d import Document1D
from sembra.local.service.numbers import exponent, fixed
from sembra.local.service.soil import soil_text

NUMBERS_PER_LINE = 10
"""How many numbers of points or curves stand on one line."""


def fill(document: Frame) -> str:
    """Return the text of the input file, lines ended by a line feed.

    The text depends on the document alone: equal documents give equal texts.

    Args:
        document: A checked document.
    """
    return _environment.get_template("input_file.sli.j2").render(
        document=document, is_1d=isinstance(document, Document1D)
    )


def _flag(value: bool) -> str:
    """Return the value of an option with two states, up to its name."""
    return "1" if value else "0"


def _state(value: bool) -> str:
    return "TRUE" if value else "FALSE"


def _number_lines(numbers: list[int]) -> list[str]:
    """Return numbers of points or curves as lines of the geometry."""
    return [
        "    " + "".join(f" {number:5d}" for number in numbers[start : start + NUMBERS_PER_LINE])
        for start in range(0, len(numbers), NUMBERS_PER_LINE)
    ]


def _right(value: int, width: int) -> str:
    return f"{value:{width}d}"


def _make_environment() -> Environment:
    environment = Environment(
        loader=PackageLoader("sembra.local.service"),
        undefined=StrictUndefined,
        autoescape=False,
        trim_blocks=True,
        lstrip_blocks=True,
        keep_trailing_newline=True,
        newline_sequence="\n",
        auto_reload=False,
        # A cache with a limit has a lock, which a forked child finds held for ever where another
        # thread of the parent was just filling.
        cache_size=-1,
    )
    environment.filters |= {
        "fixed": fixed,
        "exponent": exponent,
        "flag": _flag,
        "state": _state,
        "right": _right,
    }
    environment.globals |= {"soil_text": soil_text, "number_lines": _number_lines}
    return environment


_environment = _make_environment()
