"""The console edition of D-Settlement in the worker's place, with a script that plays it."""

import shlex
import sys
from base64 import b64decode
from pathlib import Path
from typing import Any

import pytest
from sembra.local.worker.console import SETTING
from sembra.local.worker.job import run_job

from tests.toolkit.worker.input_file import job

PROGRAM = """
import sys
from pathlib import Path

mark, name = sys.argv[1:]
assert mark == "/b"
text = Path(name).read_text()
if "fail" in text:
    Path("input.err").write_text("The phreatic line is missing.")
    sys.exit(3)
if "silent" not in text:
    Path("input.sld").write_text("results of " + text)
    Path("input.slo").write_text("log")
"""


@pytest.fixture
def _console(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    program = tmp_path / "con sole.py"
    program.write_text(PROGRAM)
    monkeypatch.setenv(SETTING, shlex.join([sys.executable, str(program)]))


def run(text: str) -> dict[str, Any]:
    return run_job(job(text))


@pytest.mark.usefixtures("_console")
def test_results_are_those_of_the_program() -> None:
    result = run("anything")
    assert result["error"] is None
    files = {name: b64decode(data) for name, data in result["files"].items()}
    assert files == {".sld": b"results of anything", ".slo": b"log"}


@pytest.mark.usefixtures("_console")
def test_its_reason_is_the_error() -> None:
    result = run("fail")
    message = "The D-Settlement console fails with code 3: The phreatic line is missing."
    assert result["error"] == message
    assert list(result["files"]) == [".err"]


@pytest.mark.usefixtures("_console")
def test_no_results_are_an_error() -> None:
    assert run("silent")["error"] == (
        "The D-Settlement console fails with code 0: it gives no reason"
    )


def test_path_of_a_program_with_blanks(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    program = tmp_path / "D Settlement"
    program.write_text('#!/bin/sh\ncp "$2" input.sld\n')
    program.chmod(0o755)
    monkeypatch.setenv(SETTING, str(program))
    assert b64decode(run("text")["files"][".sld"]) == b"text"


def test_program_that_is_not_there(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv(SETTING, "/no/such/program")
    assert run("text")["error"].startswith("The D-Settlement console does not start: ")


def test_setting_that_is_no_command_line(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv(SETTING, "'unclosed")
    assert run("text")["error"] == f"{SETTING} is not a command line: No closing quotation."


def test_blank_setting_is_none(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv(SETTING, " ")
    assert run("text")["error"].startswith("The input file is not readable")
