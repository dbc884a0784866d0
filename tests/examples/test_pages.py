"""Programs of the documentation that need a process of their own.

All others are run where they stand, page by page.
"""

import inspect
import re
import subprocess
import sys
import textwrap
from pathlib import Path

import pytest
from sembra.external.dsettlement import Model1D, Model2D

from tests.examples.conftest import ROOT, Run

PAGE = (ROOT / "docs" / "how-to" / "many-variants.md").read_text(encoding="utf-8")
PREAMBLE = "import sembra.external.dsettlement as ds\nfrom sembra.core import Color\n"


STUDY, POOL = re.findall(r"^```python\n(.*?)^```$", PAGE, re.DOTALL | re.MULTILINE)


@pytest.mark.parametrize("model", [Model1D, Model2D])
def test_the_example_of_a_class_makes_an_input_file(model: type, run_example: Run) -> None:
    lines = (inspect.getdoc(model) or "").splitlines()
    example = textwrap.dedent("\n".join(line for line in lines if line.startswith("    ")))
    program = f"{PREAMBLE}from sembra.external.dsettlement import *\n{example}"
    printed = run_example("-", given=f"{program}\nprint(input_file.getvalue().decode())")
    assert "[SOIL COLLECTION]" in printed
    assert re.search(r"my_load|dam", printed)


def test_the_study_runs_and_its_files_can_be_read_by_a_pool(
    run_example: Run, tmp_path: Path
) -> None:
    here = f"import os\nos.chdir({str(tmp_path)!r})\n"
    lines = run_example("-", given=here + STUDY).splitlines()
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
    run_example("-", given=f"{here}{STUDY}\n{keep}")
    script = tmp_path / "read.py"
    script.write_text(here + POOL)
    printed = run_example(str(script)).splitlines()
    assert printed == [f"{n}: {value[2]:.3f} m" for n, value in enumerate(values)]


def test_the_pool_says_so_where_there_is_nothing_to_read(tmp_path: Path) -> None:
    done = subprocess.run(
        [sys.executable, "-c", POOL], cwd=tmp_path, capture_output=True, text=True, timeout=60
    )
    assert done.returncode == 1
    assert done.stderr == "There is no result file (.sld) in the folder results.\n"
