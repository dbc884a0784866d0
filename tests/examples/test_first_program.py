"""The first program that a newcomer pastes."""

import re
from itertools import pairwise
from pathlib import Path

from tests.examples.conftest import ROOT, Run

PROGRAM = ROOT / "examples" / "first_program.py"


def settlements(output: str) -> dict[int, float]:
    """The settlement [m] printed for each day."""
    lines = [re.fullmatch(r" *(\d+) days: (\d\.\d{3}) m", line) for line in output.splitlines()]
    assert all(lines), output
    return {int(line[1]): float(line[2]) for line in lines if line}


def test_it_prints_settlements_that_grow(run_example: Run) -> None:
    found = settlements(run_example(str(PROGRAM)))
    assert list(found) == [10, 100, 1000, 10000]
    assert all(early < late for early, late in pairwise(found.values()))
    assert 0.2 < found[10000] < 1.0


def test_it_runs_when_pasted(run_example: Run) -> None:
    pasted = run_example("-", given=PROGRAM.read_text(encoding="utf-8"))
    assert settlements(pasted) == settlements(run_example(str(PROGRAM)))


def test_it_has_at_most_twenty_lines() -> None:
    assert len(Path(PROGRAM).read_text(encoding="utf-8").splitlines()) <= 20


def test_the_readme_shows_this_program() -> None:
    program = PROGRAM.read_text(encoding="utf-8")
    readme = (ROOT / "README.md").read_text(encoding="utf-8")
    shown = readme.split("```python\n")[1].split("```")[0]
    assert shown == program.split('"""\n\n', 1)[1]
