"""Docstrings and signatures of the module as the documentation has them.

Docstrings are written to be read in `help()` and an editor: arguments as `name: text` with further
lines indented, members of enumerations likewise, examples indented by four columns. Here the first
become lists, the second entries of their own, the third literal blocks. Signatures name types
without their modules, some by names of the module's own, and leave `None` out where an argument is
None by default; here they are as annotations have them.

Of the local edition's worker it is the docstrings of modules, whose indented lines are equations.
"""

import ast
import re
from enum import EnumType
from typing import Any

from sphinx.application import Sphinx

_ITEM = re.compile(r"(?P<names>\w+(?:\.\.\.)?(?:, \w+(?:\.\.\.)?)*):(?: (?P<text>.*))?")
_STEM = re.compile(r"\w+_\.\.\.")
_MODULE = "sembra.external.dsettlement"
_WORKER = "sembra.local.worker."
_OF_CORE = {"Color", "File"}
"""Types that stand in `sembra.core`."""


def to_restructured(lines: list[str], language: str = "python") -> list[str]:
    """Return a docstring as reStructuredText; what is indented in it is of a language."""
    paragraphs: list[str] = []
    for paragraph in "\n".join(lines).strip("\n").split("\n\n"):
        first, *rest = paragraph.split("\n")
        if first.startswith("    "):
            # The blocks of one example are parts of one paragraph.
            if not (paragraphs and paragraphs[-1].startswith(".. code-block")):
                paragraphs.append(f".. code-block:: {language}\n")
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


def to_members(lines: list[str], enumeration: EnumType) -> list[str]:
    """Return an enumeration's docstring with what it says of each member at the member's place."""
    said: list[str] = []
    for line in lines:
        found = _ITEM.fullmatch(line)
        if found is None or found["names"] not in enumeration.__members__:
            said.append(line)
        else:
            name, text = found.group("names", "text")
            value: object = enumeration.__members__[name].value
            said += [f".. py:attribute:: {name}", f"   :value: {value!r}", ""]
            said += [f"   {text[:1].upper()}{text[1:]}", ""]
    return said


def _process(
    app: Sphinx, what: str, name: str, target: Any, options: Any, lines: list[str]
) -> None:
    if name.startswith(_WORKER):
        summary, *rest = lines
        lines[:] = to_restructured([f"**{summary}**", *rest], "text")
    if not name.startswith(_MODULE):
        return
    lines[:] = to_members(lines, target) if isinstance(target, EnumType) else to_restructured(lines)


class _PublicNames(ast.NodeTransformer):
    """Gives types the names that annotations have for them, with modules where they need them."""

    def visit_Name(self, node: ast.Name) -> ast.Name:
        name = node.id.removeprefix("_")
        return ast.Name(f"sembra.core.{name}" if name in _OF_CORE else name)


def to_public_types(signature: str) -> str:
    """Return a signature with types as annotations have them, None by default among them."""
    [function] = ast.parse(f"def function{signature}: ...").body
    assert isinstance(function, ast.FunctionDef)
    given = function.args
    positional = [*given.posonlyargs, *given.args]
    defaults: list[ast.expr | None] = [None] * (len(positional) - len(given.defaults))
    defaults += [*given.defaults, *given.kw_defaults]
    for argument, default in zip([*positional, *given.kwonlyargs], defaults, strict=True):
        nothing = isinstance(default, ast.Constant) and default.value is None
        if nothing and argument.annotation:
            argument.annotation = ast.BinOp(argument.annotation, ast.BitOr(), ast.Constant(None))
    return f"({ast.unparse(_PublicNames().visit(given))})"


def to_public_type(returned: str) -> str:
    """Return the type of what a function gives back as annotations have it."""
    return ast.unparse(_PublicNames().visit(ast.parse(returned, mode="eval")))


def _process_signature(
    app: Sphinx, what: str, name: str, target: Any, options: Any, signature: str, returned: str
) -> tuple[str, str] | None:
    if name.startswith(_MODULE) and signature:
        return to_public_types(signature), returned and to_public_type(returned)
    return None


def setup(app: Sphinx) -> dict[str, bool]:
    """Let Sphinx know."""
    # Ahead of the sections of other docstrings, which these don't have.
    app.connect("autodoc-process-docstring", _process, priority=400)
    app.connect("autodoc-process-signature", _process_signature)
    return {"parallel_read_safe": True, "parallel_write_safe": True}
