"""Calls in processes of their own."""

import os
import subprocess
import sys
import threading
import time
from collections.abc import Callable
from concurrent.futures import CancelledError, Executor, as_completed
from pathlib import Path

import pytest
from sembra.local.jobs.process_executor import ProcessCrashError, ProcessExecutor

from tests.toolkit import fake_jobs

CONTENT = {"name": "x", "version": 1, "body": "é"}


def is_alive(pid: int) -> bool:
    try:
        state = Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()[0]
    except OSError:
        return False
    return state != "Z"


def await_that(condition: Callable[[], bool], limit: float = 10.0) -> bool:
    deadline = time.monotonic() + limit
    while not condition() and time.monotonic() < deadline:
        time.sleep(0.01)
    return condition()


def sleeping_processes(note: Path) -> list[int]:
    """Wait for the note of `sleep_long` and return the processes in it."""
    assert await_that(note.exists)
    return [int(pid) for pid in note.read_text().split()]


def test_is_an_executor() -> None:
    assert issubclass(ProcessExecutor, Executor)


def test_runs_in_another_process() -> None:
    with ProcessExecutor() as executor:
        pids = {executor.submit(os.getpid).result(30) for _ in range(2)}
    assert len(pids | {os.getpid()}) == 3


def test_arguments_and_results_pass_through() -> None:
    with ProcessExecutor() as executor:
        assert executor.submit(fake_jobs.echo, CONTENT).result(30)["files"] == {".sld": "é"}
        assert executor.submit(int, "ff", base=16).result(30) == 255
        assert list(executor.map(abs, [-1, -2])) == [1, 2]


def test_large_values_pass_through() -> None:
    data = os.urandom(3_000_000)
    with ProcessExecutor() as executor:
        assert executor.submit(bytes.upper, data).result(30) == data.upper()


def test_progress_comes_while_the_call_runs() -> None:
    seen: list[float] = []
    with ProcessExecutor(seen.append) as executor:
        executor.submit(fake_jobs.report_steps, CONTENT).result(30)
    assert seen == [0.25, 0.5, 0.75, 1.0]


def test_prints_of_the_call_do_no_harm() -> None:
    with ProcessExecutor() as executor:
        assert executor.submit(fake_jobs.print_a_lot, CONTENT).result(30)["error"] is None


def test_futures_work_with_the_standard_library() -> None:
    with ProcessExecutor() as executor:
        futures = [executor.submit(abs, -number) for number in range(3)]
        assert sorted(future.result() for future in as_completed(futures, 30)) == [0, 1, 2]


def test_exception_of_the_call() -> None:
    with ProcessExecutor() as executor, pytest.raises(ProcessCrashError) as caught:
        executor.submit(fake_jobs.raise_error, CONTENT).result(30)
    assert str(caught.value).startswith("ValueError: out of sand\n")
    assert "in raise_error" in str(caught.value)


def test_death_by_a_signal() -> None:
    with (
        ProcessExecutor() as executor,
        pytest.raises(ProcessCrashError, match="ended with signal 9: last words"),
    ):
        executor.submit(fake_jobs.kill_itself, CONTENT).result(30)


def test_leaving_without_a_result() -> None:
    with (
        ProcessExecutor() as executor,
        pytest.raises(ProcessCrashError, match=r"ended with exit code 3$"),
    ):
        executor.submit(fake_jobs.leave, CONTENT).result(30)


def test_result_that_cannot_be_sent() -> None:
    with ProcessExecutor() as executor, pytest.raises(ProcessCrashError, match="pickle"):
        executor.submit(fake_jobs.return_unpicklable, CONTENT).result(30)


def test_call_that_cannot_be_sent() -> None:
    with ProcessExecutor() as executor, pytest.raises(Exception, match="pickle"):
        executor.submit(lambda: None)


def test_listener_that_fails_does_not_hang_the_call() -> None:
    def listener(_fraction: float) -> None:
        raise RuntimeError("bad listener")

    with ProcessExecutor(listener) as executor, pytest.raises(RuntimeError, match="bad listener"):
        executor.submit(fake_jobs.report_steps, CONTENT).result(30)


def test_cancel_ends_the_process_and_its_children(tmp_path: Path) -> None:
    note = tmp_path / "pids"
    with ProcessExecutor() as executor:
        future = executor.submit(fake_jobs.sleep_long, {"body": str(note)})
        pids = sleeping_processes(note)
        assert all(map(is_alive, pids))
        assert future.running()
        assert future.cancel()
        assert await_that(lambda: not any(map(is_alive, pids)))
        assert future.cancelled()
        with pytest.raises(CancelledError):
            future.result()


def test_cancel_after_the_end_changes_nothing() -> None:
    with ProcessExecutor() as executor:
        future = executor.submit(abs, -1)
        assert future.result(30) == 1
        assert not future.cancel()
        assert future.result() == 1


def test_shutdown_can_end_what_runs(tmp_path: Path) -> None:
    executor = ProcessExecutor()
    future = executor.submit(fake_jobs.sleep_long, {"body": str(tmp_path / "pids")})
    pids = sleeping_processes(tmp_path / "pids")
    executor.shutdown(cancel_futures=True)
    assert future.cancelled()
    assert await_that(lambda: not any(map(is_alive, pids)))


def test_no_calls_after_shutdown() -> None:
    executor = ProcessExecutor()
    executor.shutdown()
    with pytest.raises(RuntimeError, match="after shutdown"):
        executor.submit(abs, 1)


def test_no_process_and_no_thread_stays_behind() -> None:
    before = threading.active_count()
    with ProcessExecutor() as executor:
        future = executor.submit(abs, 1)
        future.result(30)
    assert not is_alive(future.process.pid)
    assert threading.active_count() == before


def test_process_ends_with_its_parent(tmp_path: Path) -> None:
    note = tmp_path / "pids"
    parent = subprocess.Popen(
        [
            sys.executable,
            "-c",
            f"import sys; sys.path[:] = {sys.path!r}\n"
            "from sembra.local.jobs.process_executor import ProcessExecutor\n"
            "from tests.toolkit.fake_jobs import sleep_long\n"
            f"ProcessExecutor().submit(sleep_long, {{'body': {str(note)!r}}}).result()",
        ]
    )
    pids = sleeping_processes(note)
    parent.kill()
    parent.wait()
    assert await_that(lambda: not any(map(is_alive, pids)))


def test_script_needs_no_guard(tmp_path: Path) -> None:
    script = tmp_path / "application.py"
    script.write_text(
        "from sembra.local.jobs.process_executor import ProcessExecutor\n"
        "print(ProcessExecutor().submit(abs, -5).result())\n"
    )
    path = os.pathsep.join(filter(None, sys.path))
    done = subprocess.run(
        [sys.executable, str(script)],
        capture_output=True,
        text=True,
        timeout=60,
        check=True,
        env={**os.environ, "PYTHONPATH": path},
    )
    assert done.stdout == "5\n"


def test_files_in_the_working_folder_do_not_disturb(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    (tmp_path / "json.py").write_text("raise SystemExit('the wrong json')")
    monkeypatch.chdir(tmp_path)
    with ProcessExecutor() as executor:
        assert executor.submit(abs, -5).result(30) == 5


def test_interpreter_that_is_not_known(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(sys, "executable", "")
    with ProcessExecutor() as executor, pytest.raises(OSError, match=r"sys\.executable is empty"):
        executor.submit(abs, 1)
