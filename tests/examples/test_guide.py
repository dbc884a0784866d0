"""The snippets of the guide that make up a whole program."""

import re

from .conftest import ROOT, Run

GUIDE = (ROOT / "docs" / "guide.md").read_text(encoding="utf-8")
PREAMBLE = "import sembra.external.dsettlement as ds\nfrom sembra.core import Color\n"


def snippets(heading: str) -> str:
    """The Python code of a section, with that of its subsections."""
    section = GUIDE.partition(f"\n## {heading}\n")[2].partition("\n## ")[0]
    found: list[str] = re.findall(r"^```python\n(.*?)^```$", section, re.DOTALL | re.MULTILINE)
    return "\n".join(found)


def test_the_two_dimensional_model_runs_and_prints_its_settlements(run_example: Run) -> None:
    program = snippets("Two-dimensional geometry")
    assert program.count("create_non_uniform_load") == 3
    printed = run_example("-", given=PREAMBLE + program)
    lines = re.findall(r"^x = (\d+) m: (\d\.\d{3}) m$", printed, re.MULTILINE)
    assert [int(x) for x, _ in lines] == [10, 20, 40]
    beside, toe, axis = (float(settlement) for _, settlement in lines)
    assert 0 <= beside < toe < axis
    assert 0.2 < axis < 3.0
