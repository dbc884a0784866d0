"""Jobs on a console edition: whatever happens to them, nothing of them stays behind."""

import os
import signal
import sys
import threading
from base64 import b64encode
from pathlib import Path

import pytest
from sembra.external.external_program import ExecutionError
from sembra.local.jobs.shared_pool import end_shared_pool

from tests.toolkit.external.test_external_program import Program
from tests.toolkit.processes import application, await_that, is_alive, sleeping_processes

CONSOLE = """
import os, sys, time
from pathlib import Path
Path("input.slo").write_text("half a result")
note = Path(Path("input.sli").read_text())
Path(f"{note}.part").write_text(f"{os.getppid()} {os.getpid()}")
Path(f"{note}.part").rename(note)
time.sleep(300)
"""


@pytest.fixture
def note(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> Path:
    """Where the console notes its worker and itself; its jobs' folders go beside it."""
    program = tmp_path / "console.py"
    program.write_text(CONSOLE)
    temporary = tmp_path / "temporary"
    temporary.mkdir()
    monkeypatch.setattr("tempfile.tempdir", str(temporary))
    monkeypatch.setenv("SEMBRA_DSETTLEMENT_CONSOLE", f"{sys.executable} {program}")
    end_shared_pool()
    return tmp_path / "note"


def job(note: Path) -> Program:
    return Program(b64encode(str(note).encode()).decode())


def assert_nothing_stays(note: Path, temporary: Path) -> None:
    pids = sleeping_processes(note)
    assert await_that(lambda: not any(map(is_alive, pids)))
    assert await_that(lambda: list(temporary.iterdir()) == [])


def test_time_out(note: Path) -> None:
    with pytest.raises(ExecutionError, match="time-out"):
        job(note).execute(timeout=2)
    assert_nothing_stays(note, note.parent / "temporary")


def test_worker_that_is_killed(note: Path) -> None:
    errors: list[str] = []

    def execute() -> None:
        try:
            job(note).execute(timeout=float("inf"))
        except ExecutionError as error:
            errors.append(str(error))

    thread = threading.Thread(target=execute)
    thread.start()
    worker, _ = sleeping_processes(note)
    os.kill(worker, signal.SIGKILL)
    thread.join(60)
    assert errors == ["The worker crashed: the process ended with signal 9"]
    assert_nothing_stays(note, note.parent / "temporary")


EXECUTE = """
import sys
from sembra.external.external_program import ExternalProgram, _JobContent
class Program(ExternalProgram):
    def _generate_job_content(self):
        return _JobContent(body={body!r})
Program("dsettlement", version=1).execute(timeout=float("inf"))
"""


@pytest.mark.parametrize("number", [signal.SIGINT, signal.SIGTERM, signal.SIGKILL])
def test_application_that_is_ended(note: Path, number: signal.Signals) -> None:
    temporary = note.parent / "temporary"
    code = EXECUTE.format(body=b64encode(str(note).encode()).decode())
    with application(code, temporary) as program:
        worker, console = sleeping_processes(note)
        assert is_alive(worker)
        assert is_alive(console)
        program.send_signal(number)
        _, errors = program.communicate(timeout=60)
        assert program.returncode == -number
        assert ("KeyboardInterrupt" in errors) == (number == signal.SIGINT)
    assert_nothing_stays(note, temporary)
