"""All mutants in one build, each behind a switch: compiling takes longer than running the tests.

The switch is a number that the module reads from the environment when it is loaded. A statement
becomes `if (it is this one's) { the fault } else { the statement }`, a condition or the value of a
declaration becomes a choice between the two. A fault that doesn't fit in there, in the middle of a
statement of several lines for instance, is not tried.
"""

import re
from collections import defaultdict
from collections.abc import Iterable, Mapping, Sequence
from pathlib import Path

from mutants.source import DECLARATION, Mutant, blanked

VARIABLE = "SEMBRA_MUTANT"
"""The environment variable with the number of the mutant; unset for none."""

SWITCH = f"""#pragma once
#include <cstdlib>
inline const int mutant_number = [] {{
  const char* const text = std::getenv("{VARIABLE}");
  return text == nullptr ? 0 : std::atoi(text);
}}();
"""

FULL = re.compile(
    r"^\s++(?!const\b|constexpr\b|auto\b|using\b|static|case\b|else\b|for\b|do\b|friend\b)"
)
HEADER = re.compile(r"^(\s*(?:\} else )?(?:if|while) \()(.+)(\) (?:\[\[\w+\]\] )?\{)$")
LOOP = re.compile(r"^(\s*for \([^;]*; )([^;]+)(; [^;]+\) .*)$")
STEP = re.compile(r"^(\s*for \([^;]*; [^;]+; )([^;]+)(\) (?:\{|[^;]*;))$")
VALUE = re.compile(r"^(\s+(?:[\w:]+(?:<.*>)?[&*]? )+\w+ = )([^{]+)(;)$")
RETURN = re.compile(r"^(\s+return )([^{]+)(;)$")
CHOICES = (
    (HEADER, "static_cast<bool>({})"),
    (LOOP, "static_cast<bool>({})"),
    (STEP, "({})"),
    (VALUE, "({})"),
    (RETURN, "({})"),
)


def numbered(mutants: Iterable[Mutant]) -> dict[int, Mutant]:
    """Return the mutants by their numbers, from 1."""
    return dict(enumerate(mutants, start=1))


def switched(text: str, mutants: Mapping[int, Mutant], header: Path) -> tuple[str, set[int]]:
    """Return a file with its mutants behind switches, and the numbers of those that fit in.

    Args:
        text: The file.
        mutants: Its mutants by their numbers.
        header: Where `SWITCH` stands.
    """
    by_line: dict[int, dict[int, Mutant]] = defaultdict(dict)
    for number, mutant in mutants.items():
        by_line[mutant.line][number] = mutant
    lines = text.splitlines()
    codes = blanked(text).splitlines()
    placed: set[int] = set()
    for line, those in by_line.items():
        lines[line - 1], fitting = _switched_line(codes, line - 1, those)
        placed |= fitting
    return f'#include "{header}"\n#line 1\n' + "\n".join(lines) + "\n", placed


def _switched_line(
    codes: Sequence[str], index: int, mutants: Mapping[int, Mutant]
) -> tuple[str, set[int]]:
    before = next(iter(mutants.values())).before
    code = codes[index]
    if _is_statement(codes, index):
        cases = (f"if (mutant_number == {n}) {{ {m.after} }} else" for n, m in mutants.items())
        return f"{' '.join(cases)} {{ {before} }}", set(mutants)
    choices: dict[tuple[int, int], str] = {}
    placed: set[int] = set()
    for pattern, form in CHOICES:
        found = pattern.match(code) if _stands_alone(codes, index) else None
        if found is None or _unbalanced(found[2]) or re.search(r"\bconst\b.* = ", found[2]):
            continue
        begin, end = found.span(2)
        head, tail = before[:begin], before[end:]
        parts = {
            number: mutant.after[begin : len(mutant.after) - len(tail)]
            for number, mutant in mutants.items()
            if number not in placed
            and mutant.after.startswith(head)
            and mutant.after.endswith(tail)
            and len(mutant.after) > len(head) + len(tail)
        }
        faults = (f"mutant_number == {n} ? {form.format(part)} : " for n, part in parts.items())
        choices[begin, end] = "".join(faults) + form.format(before[begin:end])
        placed |= parts.keys()
    line = before
    for (begin, end), choice in sorted(choices.items(), reverse=True):
        line = line[:begin] + choice + line[end:]
    return line, placed


def _is_statement(codes: Sequence[str], index: int) -> bool:
    """Return whether a line is a statement, all of it, that can be put between braces."""
    code = codes[index]
    following = next((text for text in codes[index + 1 :] if text.strip("_ ")), "")
    return bool(
        code.endswith(";")
        and FULL.match(code)
        and not DECLARATION.match(code)
        and not _unbalanced(code)
        and _stands_alone(codes, index)
        and not following.lstrip().startswith("else")
    )


def _stands_alone(codes: Sequence[str], index: int) -> bool:
    """Return whether a statement begins with this line."""
    previous = next((text for text in codes[index - 1 :: -1] if text.strip("_ ")), "")
    return previous.rstrip("_ ").endswith((";", "{", "}", ":"))


def _unbalanced(code: str) -> bool:
    return any(code.count(pair[0]) != code.count(pair[1]) for pair in ("()", "{}", "[]"))
