"""Readers in which an application has put patterns or operations of its own."""

import random
import re
import zlib
from collections.abc import Callable, Mapping
from typing import Any

from benchmarks.plain.output_parser import OutputFileParser as PlainOutputFileParser

Changes = Mapping[str, Any]

ORIGINALS: dict[str, re.Pattern[str]] = {
    name: value
    for name, value in vars(PlainOutputFileParser).items()
    if isinstance(value, re.Pattern)
}

OTHERS: dict[str, re.Pattern[str]] = {
    name: re.compile(text)
    for name, text in {
        "_FILE_NAME_PATTERN": r"FILENAME\s*:\s*(?P<path>[^\r\n]*)",
        "_RESULTS_PATTERN": r"(?s)\[Results\].*\[End of",
        "_VERTICAL_PATTERN": r"\[(?P<results>Vertical|Depths|Stresses)\][^V]*(?:V[^V]*)?",
        "_COORDINATE_PATTERN": r"(?P<coordinate>[^=\n]*)=[ \t]*(?P<axes>[A-Z|])? ?\w",
        "_TIME_SETTLEMENT_PER_LOAD_PATTERN": (
            r"\[Time-Settlement per Load\]\s+(?P<time_step_count>\S+)[^\r\n]*\s+"
            r"(?:(?P<load_step_count>\d+)[^\r\n]*\s+)?(?P<data>[^\[]*)"
        ),
        "_DEPTHS_PATTERN": r"\[Depths\](?P<data>[^\[]*)",
        "_LEAKAGES_PATTERN": r"\[Leakages\](?:\n(?P<data>[^\[]*))?",
        "_DRAINED_LAYERS_PATTERN": r"(?P<data>(?:[0-9.]+\s){2,})",
        "_STRESSES_PATTERN": (
            r"\[Column Indication\]\s(?P<headers>[^\[]*)\[End of Column Indication\]"
            r"[^=]*=[^\r\n]*\s(?P<data>[^\[]*)"
        ),
        "_TIME_DEPENDENT_DATA_PATTERN": (
            r"\[Column Indication\]\s(?P<headers>[^\[]*)(?P<data>\[.*)?"
        ),
        "_VERTICAL_DATA_AT_TIME": r"(?P<time>\d+\.\d*)\s+=[^\r\n]*(?:\s(?P<data>[^\[]*))?",
        "_RESIDUAL_SETTLEMENTS_PATTERN": (
            r"\[Column Indication\]\s(?P<headers>[^\[]*)\[[^\d-]*(?P<data>[^\[]*)"
        ),
    }.items()
}
"""One in each place that finds other things than the pattern defined for it."""

EVERYWHERE = (
    re.compile(""),
    re.compile(r"(?P<data>never)?(?P<headers>A)?(?P<time>1)?"),
    *ORIGINALS.values(),
    *OTHERS.values(),
)
"""What may stand in any place, whatever groups it has."""


def changed(parser_class: Any, changes: Changes) -> Any:
    """Derive a class from a reader in which something else stands under some names."""
    return type("Changed", (parser_class,), dict(changes))


class Lookups(type):
    """A class that notes the names looked up in it, and refuses some."""

    refused: dict[str, Exception]
    seen: list[str]

    def __getattribute__(cls, name: str) -> Any:
        if name.startswith("_parse") or name.isupper():
            type.__getattribute__(cls, "seen").append(name)
            refused = type.__getattribute__(cls, "refused")
            if name in refused:
                raise refused[name]
        return super().__getattribute__(name)


def watched(parser_class: Any, **refused: Exception) -> Any:
    """Derive a class from a reader that notes what is looked up in it."""
    return Lookups("Watched", (parser_class,), {"refused": refused, "seen": []})


def changes_for(text: str) -> Changes:
    """Choose changes by chance; the same text gives the same ones."""
    chance = random.Random(zlib.crc32(text.encode("utf-8", "surrogatepass")))
    names = chance.sample(list(ORIGINALS), chance.choice((1, 1, 1, 2, 3, 12)))
    changes: dict[str, Any] = {
        name: OTHERS[name] if chance.random() < 0.7 else chance.choice(EVERYWHERE) for name in names
    }
    if chance.random() < 0.2:
        changes["_parse_vertical"] = classmethod(chance.choice(OPERATIONS))
    return changes


def read_less(cls: Any, vertical: str) -> Any:
    """Leave the first tag of a vertical out, and tell which class has read it."""
    result = super(cls, cls)._parse_vertical(vertical[len("[Vertical]") :])
    return {**result, "read by": cls.__name__}


def exchange_patterns(cls: Any, vertical: str) -> Any:
    """Read one vertical by other patterns than the next."""
    cls._DEPTHS_PATTERN, cls._LEAKAGES_PATTERN = cls._LEAKAGES_PATTERN, cls._DEPTHS_PATTERN
    return super(cls, cls)._parse_vertical(vertical)


OPERATIONS: tuple[Callable[[Any, str], Any], ...] = (read_less, exchange_patterns)
