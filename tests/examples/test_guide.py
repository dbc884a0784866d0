"""The snippets of the documentation that make up a whole program."""

import inspect
import json
import re
import textwrap
from pathlib import Path

import pytest
from sembra.external.dsettlement import Model1D, Model2D

from .conftest import ROOT, Run

GUIDE = (ROOT / "docs" / "guide.md").read_text(encoding="utf-8")
PREAMBLE = "import sembra.external.dsettlement as ds\nfrom sembra.core import Color\n"


def snippets(heading: str) -> str:
    """The Python code of a section, with that of its subsections."""
    section = GUIDE.partition(f"\n## {heading}\n")[2].partition("\n## ")[0]
    found: list[str] = re.findall(r"^```python\n(.*?)^```$", section, re.DOTALL | re.MULTILINE)
    return "\n".join(found)


@pytest.mark.parametrize("model", [Model1D, Model2D])
def test_the_example_of_a_class_makes_an_input_file(model: type, run_example: Run) -> None:
    lines = (inspect.getdoc(model) or "").splitlines()
    example = textwrap.dedent("\n".join(line for line in lines if line.startswith("    ")))
    program = f"{PREAMBLE}from sembra.external.dsettlement import *\n{example}"
    printed = run_example("-", given=f"{program}\nprint(input_file.getvalue().decode())")
    assert "[SOIL COLLECTION]" in printed
    assert re.search(r"my_load|dam", printed)


def test_the_one_dimensional_model_runs_and_its_files_can_be_kept(
    run_example: Run, tmp_path: Path
) -> None:
    before, after = snippets("From a model to its results").split("\n...\n")
    sections = (
        "Materials",
        "Soil model and consolidation",
        "One-dimensional geometry",
        "Loads",
        "Calculation times",
    )
    program = "\n".join(
        [
            f"{PREAMBLE}import os\nos.chdir({str(tmp_path)!r})",
            before,
            *(snippets(section) for section in sections),
            after,
            snippets("Keeping and reading files"),
            snippets("Results"),
            "analysis.execute(timeout=60)",
            "print(parser.residual_times[1]['Settlement'])",
            "print(analysis.get_sld_file().getvalue() == Path('road.sld').read_bytes().decode())",
        ]
    )
    printed = run_example("-", given=program).splitlines()
    settlements = json.loads(printed[0])
    assert len(settlements) == 5
    assert settlements == sorted(settlements)
    assert 0.3 < settlements[-1] < 1.5
    assert printed[1] == "True"


def test_the_two_dimensional_model_runs_and_prints_its_settlements(run_example: Run) -> None:
    program = snippets("Two-dimensional geometry")
    assert program.count("create_non_uniform_load") == 3
    printed = run_example("-", given=PREAMBLE + program)
    lines = re.findall(r"^x = (\d+) m: (\d\.\d{3}) m$", printed, re.MULTILINE)
    assert [int(x) for x, _ in lines] == [10, 20, 40]
    beside, toe, axis = (float(settlement) for _, settlement in lines)
    assert 0 <= beside < toe < axis
    assert 0.2 < axis < 3.0


def test_the_study_runs_and_its_files_can_be_read_by_a_pool(
    run_example: Run, tmp_path: Path
) -> None:
    here = f"import os\nos.chdir({str(tmp_path)!r})\n"
    lines = run_example("-", given=here + snippets("Many variants")).splitlines()
    values = [tuple(float(number) for number in re.findall(r"\d+\.\d+", line)) for line in lines]
    assert [value[:2] for value in values] == [(h, c) for h in (1, 1.5, 2) for c in (8, 9, 10)]
    assert all(final > residual > 0 for _, _, final, residual in values)

    keep = (
        "for number, variant in enumerate(variants):\n"
        "    analysis = ds.DSettlementAnalysis(build_model(variant).generate_input_file())\n"
        "    analysis.execute()\n"
        "    analysis.get_sld_file(as_file=True).write_to(f'results/{number}.sld')\n"
    )
    (tmp_path / "results").mkdir()
    run_example("-", given=f"{here}{snippets('Many variants')}\n{keep}")
    script = tmp_path / "read.py"
    script.write_text(here + snippets("Reading thousands of files"))
    printed = run_example(str(script)).splitlines()
    assert printed == [f"{n}: {value[2]:.3f} m" for n, value in enumerate(values)]
