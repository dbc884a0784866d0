"""What two readers make of one text, in a form that tells every difference."""

from collections.abc import Callable
from io import StringIO
from typing import Any

from sembra.external.dsettlement import OutputFileParser

from benchmarks.plain.output_parser import OutputFileParser as PlainOutputFileParser
from tests.output.changed_readers import Changes, changed, changes_for

Outcome = dict[str, str]


def outcome_of(read: Callable[[], Any]) -> str:
    """Show what a read comes to: the value to the letter, or the exception's type and text.

    The plain text form of nested containers tells key order, `int` from `float`, and the sign of
    zero.
    """
    try:
        return repr(read())
    except Exception as error:
        return f"{type(error).__name__}: {error}"


def outcomes(parser_class: Any, text: str) -> Outcome:
    """Read a text as a file, or as the parts of one where it has no `[Results]`."""
    result: Outcome = {}
    try:
        parser = parser_class(StringIO(text, newline=""))
    except Exception as error:
        result["file"] = f"{type(error).__name__}: {error}"
    else:
        result["raw_results"] = parser.raw_results
        result["vertical_results"] = outcome_of(lambda: parser.vertical_results)
        result["residual_times"] = outcome_of(lambda: parser.residual_times)
    if "[Results]" not in text:
        result["verticals"] = outcome_of(lambda: parser_class._parse_verticals(text))
        result["residuals"] = outcome_of(lambda: parser_class._parse_residual_settlements(text))
        if "[Vertical]" not in text:
            result["vertical"] = outcome_of(lambda: parser_class._parse_vertical(text))
    return result


def difference(text: str) -> str | None:
    """Return a description of the first difference between the two readers, or None.

    They are compared as they are, and with changes that are chosen by chance.
    """
    changes = changes_for(text)
    return difference_with({}, text) or difference_with(changes, text)


def difference_with(changes: Changes, text: str) -> str | None:
    """Return the first difference where both readers have the same changes, or None."""
    expected = outcomes(changed(PlainOutputFileParser, changes), text)
    actual = outcomes(changed(OutputFileParser, changes), text)
    for name in expected.keys() | actual.keys():
        if expected.get(name) != actual.get(name):
            told = f" with {changes}" if changes else ""
            return f"{name}{told}: expected {expected.get(name)!r}, got {actual.get(name)!r}"
    return None
