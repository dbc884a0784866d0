"""What the parts of a document are called by whoever made the model.

The document has tables and indices that a user of the models never saw. A material, a load, a layer
or the drain is told by its name instead, or by its number from 1 where it has none.
"""

from collections.abc import Sequence
from typing import Any, NamedTuple

Step = str | int

LONGEST_NAME = 60
"""How much of a name is told."""


class Entry(NamedTuple):
    """How an entry of a table is told.

    Args:
        word: What it is.
        name: The key or position of its name.
        material: The key or position of its material.
        positions: What stands at which position, if it is a list.
    """

    word: str
    name: Step | None = None
    material: Step | None = None
    positions: tuple[str, ...] = ()


TABLES: dict[tuple[Step, ...], Entry] = {
    ("soils",): Entry("material", name="name"),
    ("non_uniform_loads",): Entry("load", name="name"),
    ("other_loads",): Entry("load", name="name"),
    ("geometry", "layers"): Entry("layer", material=1, positions=("top level", "material")),
    ("layers",): Entry("layer", material="material"),
    ("verticals",): Entry("vertical"),
    ("points",): Entry("point", positions=("x", "y")),
    ("curves",): Entry("curve"),
    ("boundaries",): Entry("boundary"),
    ("pl_lines",): Entry("pl-line"),
    ("residual_times",): Entry("calculation time"),
}

OTHER_WORDS = {
    "pop_": "pop",
    "vertical_drain": "vertical drain",
    "pl_top": "pl_line_top",
    "pl_bottom": "pl_line_bottom",
}
"""Keys that are called otherwise where a model is made."""


def place(document: object, path: Sequence[Step]) -> str:
    """Return the words for a place in a document, such as "material 'Clay', gam_dry".

    Args:
        document: The document, whatever it is.
        path: The keys and positions that lead to the place, from the document on.
    """
    for length in (1, 2):
        entry = TABLES.get(tuple(path[:length]))
        if entry is not None and len(path) > length and isinstance(path[length], int):
            words = _told(entry, document, path[: length + 1])
            return _with_steps(words, path[length + 1 :], entry.positions)
    if len(path) > 1 and path[0] == "geometry":
        path = path[1:]
    return _with_steps("", path, ()) or "the document"


def _told(entry: Entry, document: object, path: Sequence[Step]) -> str:
    """Return the words for an entry of a table: with its name, or else with its number."""
    number = f"{entry.word} {int(path[-1]) + 1}"
    if entry.name is not None:
        name = _at(document, [*path, entry.name])
        return f"{entry.word} {quoted(name)}" if isinstance(name, str) else number
    if entry.material is not None:
        name = _at(document, [*path, entry.material])
        return f"{number} of {quoted(name)}" if isinstance(name, str) else number
    return number


def _with_steps(words: str, path: Sequence[Step], positions: Sequence[str]) -> str:
    """Put the steps that lead on behind the words."""
    for step in path:
        if isinstance(step, str):
            is_word = step.isprintable() and 0 < len(step) <= LONGEST_NAME
            word = OTHER_WORDS.get(step, step if is_word else quoted(step))
            words += f", {word}" if words else word
        elif step < len(positions):
            words += f", {positions[step]}"
        else:
            words += f"[{step}]"
    return words


def _at(document: Any, path: Sequence[Step]) -> Any:
    """Return what stands at a place, or None where the document has no such place."""
    for step in path:
        try:
            document = document[step]
        except (LookupError, TypeError):
            return None
    return document


def quoted(name: str) -> str:
    """Return a name in quotation marks, cut off where it is too long to be one."""
    return repr(name if len(name) <= LONGEST_NAME else f"{name[:LONGEST_NAME]}...")
