"""The progress bar: on a terminal, and nowhere else."""

import os
import re
import subprocess
import sys
from contextlib import suppress

import pytest
from sembra.local.jobs.progress import show_progress
from sembra.local.jobs.reporting import ignore

PROGRAM = """if True:
    from sembra.local.jobs.progress import show_progress
    with show_progress("job") as report:
        for fraction in {fractions}:
            report(fraction)
"""


def shown_on_a_terminal(*fractions: float) -> str:
    """Run a program with a terminal as its standard error; return what it shows."""
    pty = pytest.importorskip("pty")
    ours, theirs = pty.openpty()
    program = subprocess.Popen(
        [sys.executable, "-c", PROGRAM.format(fractions=fractions)],
        stderr=theirs,
        env={**os.environ, "TERM": "xterm", "PYTHONPATH": os.pathsep.join(filter(None, sys.path))},
    )
    os.close(theirs)
    shown = b""
    with suppress(OSError):  # the terminal's end, on Linux
        while chunk := os.read(ours, 4096):
            shown += chunk
    os.close(ours)
    assert program.wait(30) == 0
    return shown.decode()


def test_nothing_without_a_terminal(capfd: pytest.CaptureFixture[str]) -> None:
    with show_progress("job") as report:
        assert report is ignore
        report(0.5)
    assert capfd.readouterr() == ("", "")


def test_nothing_without_a_stream(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(sys, "stderr", None)
    with show_progress("job") as report:
        report(0.5)


def test_fraction_on_a_terminal() -> None:
    shown = shown_on_a_terminal(0.25, 1.0)
    assert "job" in shown
    assert "100%" in shown


def test_elapsed_time_on_a_terminal_until_a_fraction_is_known() -> None:
    shown = shown_on_a_terminal()
    assert re.search(r"0:0\d:\d\d", shown)
    assert "100%" not in shown
