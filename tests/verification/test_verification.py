"""The command, from folders to page."""

import base64
import subprocess
import sys
from pathlib import Path

import pytest
from sembra.local.worker.job import run_job

from tests.toolkit.worker.input_file import input_text
from verification.calculating import calculate
from verification.cases import ROOT, Case, find_cases
from verification.judging import Verdict, judge
from verification.page import write_page


def made_case(folder: Path, name: str, **changes: object) -> Case:
    """Write an input file and the worker's own result for it."""
    text = input_text(**changes)  # type: ignore[arg-type]
    body = base64.b64encode(text.encode()).decode()
    answer = run_job({"name": "dsettlement", "version": 1, "body": body})
    (folder / f"{name}.sli").write_text(text, encoding="utf-8")
    (folder / f"{name}.sld").write_bytes(base64.b64decode(answer["files"][".sld"]))
    return Case(folder / f"{name}.sli")


def run(*arguments: object) -> subprocess.CompletedProcess[str]:
    return subprocess.run(
        [sys.executable, "-m", "verification", *map(str, arguments)],
        cwd=ROOT,
        capture_output=True,
        text=True,
        check=False,
    )


def test_cases_are_inputs_with_results_in_natural_order(tmp_path: Path) -> None:
    for name in ("bm3-10a", "bm3-2b", "Alone"):
        (tmp_path / f"{name}.sli").touch()
    for name in ("bm3-10a", "bm3-2b", "Other"):
        (tmp_path / f"{name}.sld").touch()
    assert [case.name for case in find_cases([tmp_path])] == ["bm3-2b", "bm3-10a"]


def test_no_cases(tmp_path: Path) -> None:
    for folder in (tmp_path, tmp_path / "none"):
        finished = run(folder)
        assert finished.returncode == 2
        assert str(folder) in finished.stderr
        assert "Traceback" not in finished.stderr


def test_a_folder_of_ones_own(tmp_path: Path) -> None:
    made_case(tmp_path, "right")
    finished = run(tmp_path)
    assert finished.returncode == 0, finished.stdout + finished.stderr
    assert "1 cases, 1 good or known" in finished.stdout
    wrong = made_case(tmp_path, "wrong")
    wrong.result_file.write_text(made_case(tmp_path, "other", bottom=-3.0).result_file.read_text())
    finished = run(tmp_path)
    assert finished.returncode == 1
    assert "wrong is off: final " in finished.stdout


def test_damaged_results_are_no_failure_of_the_command(tmp_path: Path) -> None:
    case = made_case(tmp_path, "damaged")
    case.result_file.write_text("[Results]\n", encoding="utf-8")
    outcome = calculate(case)
    assert outcome.error is not None
    assert outcome.error.startswith("not comparable: ")
    assert judge(outcome, {}) is Verdict.OFF


def test_a_configured_console_edition_is_not_asked(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    case = made_case(tmp_path, "case")
    monkeypatch.setenv("SEMBRA_DSETTLEMENT_CONSOLE", "/no/such/program")
    assert calculate(case).error is None


def test_the_page(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    outcome = calculate(made_case(tmp_path, "case"))
    monkeypatch.setattr("verification.page.TELLING", {"case": "A made case"})
    write_page(tmp_path / "docs" / "page.md", [(outcome, Verdict.GOOD)], {})
    page = (tmp_path / "docs" / "page.md").read_text(encoding="utf-8")
    assert "| case | NEN-Koppejan, Terzaghi, 1D | 0 | 0 |" in page
    assert "![A made case](verification/case.svg)" in page
    picture = (tmp_path / "docs" / "verification" / "case.svg").read_text(encoding="utf-8")
    assert "Settlement of the surface [m]" in picture
    write_page(tmp_path / "docs" / "page.md", [(outcome, Verdict.GOOD)], {})
    assert (tmp_path / "docs" / "verification" / "case.svg").read_text("utf-8") == picture
