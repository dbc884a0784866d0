"""Small faults put into C++ code, one at a time, as somebody might make them by mistake.

The code is formatted, so operators with blanks around them are operators: `a < b` is a comparison
and `vector<int>` is none. Comments and texts are left alone.
"""

import re
from collections.abc import Iterator
from dataclasses import dataclass
from pathlib import Path

SWAPS = {
    " < ": (" <= ", " > "),
    " <= ": (" < ",),
    " > ": (" >= ", " < "),
    " >= ": (" > ",),
    " == ": (" != ",),
    " != ": (" == ",),
    " && ": (" || ",),
    " || ": (" && ",),
    " + ": (" - ",),
    " - ": (" + ",),
    " * ": (" / ",),
    " / ": (" * ",),
    " += ": (" = ", " -= "),
    " -= ": (" += ",),
    "++": ("--",),
    "--": ("++",),
    "true": ("false",),
    "false": ("true",),
}
NUMBER = re.compile(r"(?<![\w.'])(\d+)(?![\w.'])")
NEGATION = re.compile(r"(?<=[(\s])!(?=[\w(:])")
CONDITION = re.compile(r"\b(?:if|while) \((?!.*\bconst\b.* = )(.+)\) (?=[\w{+*])")
STATEMENT = re.compile(
    r"^\s+(?!return\b|throw\b|const\b|case\b|using\b|auto\b|static_assert\b)"
    r"[\w:.>*&(\[\]-]+(?:\(.*\)|(?:\+\+|--)| [-+|&]?= .+);$"
)
DECLARATION = re.compile(r"^\s+(?:[\w:]+(?:<.*>)?[&*]? )+\w+(?: = .+|\{.*\}|\(.*\))?;$")
HIDDEN = re.compile(
    r'R"(?P<end>\w*)\(.*?\)(?P=end)"'
    r'|//[^\n]*|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])\'|^\s*#[^\n]*',
    re.DOTALL | re.MULTILINE,
)


@dataclass(frozen=True)
class Mutant:
    """One changed line of one file."""

    path: Path  # below the root of the sources
    line: int  # counted from 1
    before: str
    after: str

    def __str__(self) -> str:
        return f"{self.path}:{self.line}: `{self.before.strip()}` -> `{self.after.strip()}`"

    def apply(self, root: Path) -> None:
        """Put the fault into the file below `root`."""
        lines = (root / self.path).read_text().splitlines(keepends=True)
        assert lines[self.line - 1] == self.before + "\n"
        lines[self.line - 1] = self.after + "\n"
        (root / self.path).write_text("".join(lines))


def changed_lines(code: str, line: str) -> Iterator[str]:
    """Return all changes of a line; `code` is the line with comments and texts blanked out."""
    for operator, others in SWAPS.items():
        word = rf"\b{operator}\b" if operator.isalpha() else re.escape(operator)
        for found in re.finditer(word, code):
            for other in others:
                yield line[: found.start()] + other + line[found.end() :]
    for found in NUMBER.finditer(code):
        yield line[: found.start()] + str(int(found[1]) + 1) + line[found.end() :]
    for found in NEGATION.finditer(code):
        yield line[: found.start()] + line[found.end() :]
    for found in CONDITION.finditer(code):
        for value in ("true", "false"):
            if f"{found[0][:7]}{value}" != "while (true":  # would only run into the time limit
                yield line[: found.start(1)] + value + line[found.end(1) :]
    if STATEMENT.match(code) and not DECLARATION.match(code):
        yield line[: len(line) - len(line.lstrip())] + ";"


def blanked(text: str) -> str:
    """Return a text of C++ with underscores in the place of comments and texts."""
    return HIDDEN.sub(lambda found: re.sub(r"[^\n]", "_", found[0]), text)


def mutants_of(root: Path, path: Path) -> list[Mutant]:
    """Return all mutants of a file."""
    text = (root / path).read_text()
    found = []
    for number, (line, code) in enumerate(
        zip(text.splitlines(), blanked(text).splitlines(), strict=True), start=1
    ):
        if re.match(r"\s*(template|static_assert|constexpr \w+ \w+\[\])", line):
            continue
        afters = dict.fromkeys(changed_lines(code, line))
        found += [Mutant(path, number, line, after) for after in afters if after != line]
    return found
