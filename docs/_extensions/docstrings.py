"""Docstrings of the module as reStructuredText.

They are written to be read in `help()` and an editor: arguments as `name: text` with further lines
indented, examples indented by four columns. Here the first become lists, the second literal blocks.
"""

import re
from typing import Any

from sphinx.application import Sphinx

_ITEM = re.compile(r"(?P<names>\w+(?:\.\.\.)?(?:, \w+(?:\.\.\.)?)*):(?: (?P<text>.*))?")
_STEM = re.compile(r"\w+_\.\.\.")
_MODULE = "sembra.external.dsettlement"


def to_restructured(lines: list[str]) -> list[str]:
    """Return a docstring of the module as reStructuredText."""
    paragraphs: list[str] = []
    for paragraph in "\n".join(lines).strip("\n").split("\n\n"):
        first, *rest = paragraph.split("\n")
        if first.startswith("    "):
            # The blocks of one example are parts of one paragraph.
            if not (paragraphs and paragraphs[-1].startswith(".. code-block")):
                paragraphs.append(".. code-block:: python\n")
            paragraphs[-1] += f"\n{paragraph}\n"
        elif _ITEM.fullmatch(first) and all(
            line.startswith(" ") or _ITEM.fullmatch(line) for line in rest
        ):
            paragraphs.append("\n".join(map(_item, [first, *rest])))
        else:
            paragraphs.append(_STEM.sub(lambda stem: f"``{stem[0]}``", paragraph))
    return [*"\n\n".join(paragraphs).split("\n"), ""]


def _item(line: str) -> str:
    found = _ITEM.fullmatch(line)
    if found is None:
        return f"  {line.strip()}"
    names = ", ".join(f"``{name}``" for name in found["names"].split(", "))
    return f"- {names}: {found['text'] or ''}".rstrip()


def _process(
    app: Sphinx, what: str, name: str, target: Any, options: Any, lines: list[str]
) -> None:
    if name.startswith(_MODULE):
        lines[:] = to_restructured(lines)


def setup(app: Sphinx) -> dict[str, bool]:
    """Let Sphinx know."""
    # Ahead of the sections of other docstrings, which these don't have.
    app.connect("autodoc-process-docstring", _process, priority=400)
    return {"parallel_read_safe": True, "parallel_write_safe": True}
