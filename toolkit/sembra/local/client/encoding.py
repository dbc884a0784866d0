"""Writing a document as JSON."""

import json
import math
import numbers
import sys
from collections.abc import Iterator, Mapping
from typing import Any

from sembra.local.places import Step, place

DEEPEST = 10
"""How deep the lists and mappings of a document lie in one another at most."""

TOO_LARGE = "a number that is too large"


def encode(body: Mapping[str, Any]) -> bytes:
    """Write a body, whose key "input" holds the document.

    Numbers may be of any type that says of itself to be one (`numbers.Real`), such as those of
    numpy.

    Raises:
        ValueError: It can't be written; the message names the place.
    """
    try:
        text = json.dumps(body, allow_nan=False, ensure_ascii=False, default=_plain)
        return text.encode()
    except (TypeError, ValueError, OverflowError, RecursionError) as error:
        document = body.get("input")
        for path, fault in _faults(document, ()):
            raise ValueError(f"{place(document, path)}: {fault}") from error
        raise ValueError(str(error)) from error


def _plain(value: Any) -> float:
    """Return a number of another type as one of Python's own.

    Raises:
        TypeError: The value is no number.
    """
    if isinstance(value, numbers.Real):
        number = value.item() if hasattr(value, "item") else value
        if isinstance(number, numbers.Integral):
            return int(number)
        if isinstance(number, numbers.Real):
            return float(number)
    raise TypeError(f"{type(value).__name__} is no number")


def _faults(value: object, path: tuple[Step, ...]) -> Iterator[tuple[tuple[Step, ...], str]]:
    """Yield each place that can't be written, and why."""
    match value:
        case None | bool():
            pass
        case int():
            if abs(value) > sys.float_info.max:
                yield path, TOO_LARGE
        case str():
            if not _is_text(value):
                yield path, "a text with a character that can't be encoded as UTF-8"
        case float():
            if not math.isfinite(value):
                yield path, f"{value} is not a finite number"
        case dict() | list() | tuple() if len(path) == DEEPEST:
            yield path, "lists or mappings lie too deep in one another"
        case dict() | list() | tuple():
            steps = value.items() if isinstance(value, dict) else enumerate(value)
            for step, entry in steps:
                yield from _faults(entry, (*path, step if isinstance(step, int) else str(step)))
        case _:
            try:
                yield from _faults(_plain(value), path)
            except OverflowError:
                yield path, TOO_LARGE
            except (TypeError, ValueError):
                yield path, f"a value of the type '{_type_name(value)}' is no number"


def _type_name(value: object) -> str:
    """Return the name of a value's type, such as 'numpy.bool', which isn't Python's own."""
    kind = type(value)
    return kind.__name__ if kind.__module__ == "builtins" else f"{kind.__module__}.{kind.__name__}"


def _is_text(value: str) -> bool:
    try:
        value.encode()
    except UnicodeEncodeError:
        return False
    return True
