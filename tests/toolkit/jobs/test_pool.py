"""Calls in worker processes."""

import importlib
import os
import signal
import subprocess
import sys
import tempfile
from concurrent.futures import CancelledError, Executor, as_completed
from pathlib import Path

import pytest
from sembra.local.jobs.pool import WorkerPool
from sembra.local.jobs.worker_process import ProcessCrashError

from tests.toolkit import fake_jobs
from tests.toolkit.jobs.pools import CONTENT, pool
from tests.toolkit.processes import (
    application,
    await_that,
    folders_of_workers,
    is_alive,
    sleeping_processes,
)


def test_is_an_executor() -> None:
    assert issubclass(WorkerPool, Executor)


def test_runs_in_another_process_that_is_kept() -> None:
    with pool() as executor:
        pids = {executor.submit(os.getpid).result(30) for _ in range(5)}
    assert len(pids) == 1
    assert pids != {os.getpid()}


def test_arguments_and_results_pass_through() -> None:
    with pool() as executor:
        assert executor.submit(fake_jobs.echo, CONTENT).result(30)["files"] == {".sld": "é"}
        assert executor.submit(int, "ff", base=16).result(30) == 255
        assert list(executor.map(abs, [-1, -2])) == [1, 2]


def test_large_values_pass_through() -> None:
    data = os.urandom(3_000_000)
    with pool() as executor:
        assert executor.submit(bytes.upper, data).result(30) == data.upper()


def test_progress_comes_while_the_call_runs() -> None:
    seen: list[float] = []
    with pool() as executor:
        for _ in range(2):
            executor.submit_reporting(seen.append, fake_jobs.report_steps, CONTENT).result(30)
    assert seen == [0.25, 0.5, 0.75, 1.0] * 2


def test_progress_that_nobody_listens_to_is_not_sent() -> None:
    with pool(1) as executor:
        assert executor.submit(fake_jobs.is_listened_to).result(30) is False
        assert executor.submit_reporting(print, fake_jobs.is_listened_to).result(30) is True


def test_prints_of_the_call_do_no_harm() -> None:
    with pool() as executor:
        assert executor.submit(fake_jobs.print_a_lot, CONTENT).result(30)["error"] is None


def test_futures_work_with_the_standard_library() -> None:
    with pool() as executor:
        futures = [executor.submit(abs, -number) for number in range(3)]
        assert sorted(future.result() for future in as_completed(futures, 30)) == [0, 1, 2]


def test_exception_of_the_call() -> None:
    with pool() as executor, pytest.raises(ProcessCrashError) as caught:
        executor.submit(fake_jobs.raise_error, CONTENT).result(30)
    assert str(caught.value).startswith("ValueError: out of sand\n")
    assert "in raise_error" in str(caught.value)


def test_death_by_a_signal() -> None:
    with (
        pool() as executor,
        pytest.raises(ProcessCrashError, match="ended with signal 9: last words"),
    ):
        executor.submit(fake_jobs.kill_itself, CONTENT).result(30)


def test_leaving_without_a_result() -> None:
    with (
        pool() as executor,
        pytest.raises(ProcessCrashError, match=r"ended with exit code 3$"),
    ):
        executor.submit(fake_jobs.leave, CONTENT).result(30)


@pytest.mark.parametrize(("code", "told"), [(3, "3"), (None, "0"), ("words", "1")])
def test_leaving_by_the_exit_of_python(code: object, told: str) -> None:
    with (
        pool() as executor,
        pytest.raises(ProcessCrashError, match=rf"ended with exit code {told}$"),
    ):
        executor.submit(sys.exit, code).result(30)


def test_development_mode_has_nothing_to_say_of_a_process_that_leaves(
    monkeypatch: pytest.MonkeyPatch,
) -> None:
    monkeypatch.setenv("PYTHONDEVMODE", "1")
    with pool() as executor, pytest.raises(ProcessCrashError, match=r"ended with exit code 3$"):
        executor.submit(sys.exit, 3).result(30)


def test_earlier_calls_are_not_told_of() -> None:
    seen: list[float] = []
    with pool(1) as executor:
        with pytest.raises(ProcessCrashError, match="out of sand"):
            executor.submit(fake_jobs.raise_error, CONTENT).result(30)
        executor.submit_reporting(seen.append, fake_jobs.report_steps, CONTENT).result(30)
        assert seen[-1] == 1.0
        with pytest.raises(ProcessCrashError, match=r"^the process ended with exit code 3$"):
            executor.submit(sys.exit, 3).result(30)


def test_leaving_by_what_is_no_error() -> None:
    with (
        pool() as executor,
        pytest.raises(
            ProcessCrashError, match=r"(?s)exit code 1: .*KeyboardInterrupt: not the user"
        ),
    ):
        executor.submit(fake_jobs.interrupt, CONTENT).result(30)


def test_result_that_cannot_be_sent() -> None:
    with pool() as executor, pytest.raises(ProcessCrashError, match="pickle"):
        executor.submit(fake_jobs.return_unpicklable, CONTENT).result(30)


def test_call_that_cannot_be_sent() -> None:
    with pool() as executor, pytest.raises(Exception, match="pickle"):
        executor.submit(lambda: None)


def test_listener_that_fails_does_not_hang_the_call() -> None:
    def listener(_fraction: float) -> None:
        raise RuntimeError("bad listener")

    with pool(1) as executor:
        with pytest.raises(RuntimeError, match="bad listener"):
            executor.submit_reporting(listener, fake_jobs.report_steps, CONTENT).result(30)
        assert executor.submit(abs, -1).result(30) == 1


def test_cancel_ends_the_process_and_its_children(tmp_path: Path) -> None:
    note = tmp_path / "pids"
    with pool() as executor:
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
    with pool() as executor:
        future = executor.submit(abs, -1)
        assert future.result(30) == 1
        assert not future.cancel()
        assert future.result() == 1


def test_shutdown_can_end_what_runs(tmp_path: Path) -> None:
    executor = pool()
    future = executor.submit(fake_jobs.sleep_long, {"body": str(tmp_path / "pids")})
    pids = sleeping_processes(tmp_path / "pids")
    executor.shutdown(cancel_futures=True)
    assert future.cancelled()
    assert await_that(lambda: not any(map(is_alive, pids)))


def test_shutdown_may_leave_calls_to_their_end() -> None:
    executor = pool()
    future = executor.submit(abs, -1)
    executor.shutdown(wait=False)
    assert future.result(30) == 1


def test_no_calls_after_shutdown() -> None:
    executor = pool()
    executor.shutdown()
    with pytest.raises(RuntimeError, match="after shutdown"):
        executor.submit(abs, 1)


def test_no_process_and_no_thread_stays_behind(tmp_path: Path) -> None:
    code = """if True:
        import os, threading, time
        from sembra.local.jobs.pool import WorkerPool
        from tests.toolkit.processes import await_that
        with WorkerPool(lambda: 1) as executor:
            pid = executor.submit(os.getpid).result()
            during = threading.active_count()
        await_that(lambda: threading.active_count() == 1)  # a timer may be about to end
        print(pid, during, threading.active_count(), flush=True)
        time.sleep(300)  # the worker has to be gone before this is
    """
    # In an application of its own: the tests' libraries start threads whenever they like.
    with application(code, tmp_path) as program:
        assert program.stdout is not None
        pid, during, after = map(int, program.stdout.readline().split())
        assert during > after == 1
        assert not is_alive(pid)


def test_process_ends_with_its_parent(tmp_path: Path) -> None:
    note = tmp_path / "pids"
    parent = subprocess.Popen(
        [
            sys.executable,
            "-c",
            f"import sys; sys.path[:] = {sys.path!r}\n"
            "from sembra.local.jobs.pool import WorkerPool\n"
            "from tests.toolkit.fake_jobs import sleep_long\n"
            f"WorkerPool(lambda: 1).submit(sleep_long, {{'body': {str(note)!r}}}).result()",
        ]
    )
    pids = sleeping_processes(note)
    parent.kill()
    parent.wait()
    assert await_that(lambda: not any(map(is_alive, pids)))


def test_script_needs_no_guard(tmp_path: Path) -> None:
    script = tmp_path / "application.py"
    script.write_text(
        "from sembra.local.jobs.pool import WorkerPool\n"
        "print(WorkerPool(lambda: 1).submit(abs, -5).result())\n"
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
    with pool() as executor:
        assert executor.submit(abs, -5).result(30) == 5


def test_working_folder_that_is_gone(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    folder = tmp_path / "folder"
    folder.mkdir()
    monkeypatch.chdir(folder)
    folder.rmdir()
    with pool() as executor:
        assert executor.submit(abs, -5).result(30) == 5


def test_interpreter_that_is_not_known(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(sys, "executable", "")
    with pool() as executor, pytest.raises(OSError, match=r"sys\.executable is empty"):
        executor.submit(abs, 1)


def test_surroundings_are_those_of_the_moment(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    with pool(1) as executor:
        for value in ("a", "\udcff"):
            monkeypatch.setenv("SEMBRA_TEST", value)
            assert executor.submit(os.getenv, "SEMBRA_TEST").result(30) == value
        monkeypatch.delenv("SEMBRA_TEST")
        assert executor.submit(os.getenv, "SEMBRA_TEST").result(30) is None
        monkeypatch.chdir(tmp_path)
        assert executor.submit(os.getcwd).result(30) == str(tmp_path)
        (tmp_path / "made_later.py").write_text("def answer(): return 42")
        monkeypatch.syspath_prepend(str(tmp_path))
        answer = importlib.import_module("made_later").answer
        assert executor.submit(answer).result(30) == 42


def test_programs_of_a_call_cannot_read_its_stream() -> None:
    with pool(1) as executor:
        assert executor.submit(subprocess.check_output, ["cat"]).result(30) == b""
        assert executor.submit(abs, -1).result(30) == 1


def test_folders_are_removed(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(tempfile, "tempdir", str(tmp_path))
    with pool(2) as executor:
        made = executor.submit(tempfile.mkdtemp).result(30)
        assert Path(made).parent in folders_of_workers(tmp_path)
        crash = executor.submit(fake_jobs.kill_itself, CONTENT)
        with pytest.raises(ProcessCrashError):
            crash.result(30)
    assert list(tmp_path.iterdir()) == []


USE = """
import os, subprocess, sys, threading, time
from sembra.local.jobs.shared_pool import shared_pool
from tests.toolkit.fake_jobs import sleep_long
future = shared_pool().submit(sleep_long, {{"body": {note!r}}})
print(shared_pool().submit(os.getpid).result(), flush=True)
while not os.path.exists({note!r}):
    time.sleep(0.01)
"""


@pytest.mark.parametrize(
    "end",
    [
        "sys.exit()",
        "os._exit(0)",
        "raise KeyboardInterrupt",
        "os.kill(os.getpid(), 9)",
        "os.abort()",
    ],
)
def test_nothing_outlives_the_application(tmp_path: Path, end: str) -> None:
    note, temporary = tmp_path / "pids", tmp_path / "temporary"
    temporary.mkdir()
    environment = "import os; os.environ['SEMBRA_WORKERS'] = '2'"
    with application(environment + USE.format(note=str(note)) + end, temporary) as program:
        output, _ = program.communicate(timeout=120)
    pids = [*sleeping_processes(note), int(output)]
    assert len(pids) == 3
    assert await_that(lambda: not any(map(is_alive, pids)))
    assert await_that(lambda: list(temporary.iterdir()) == [])


@pytest.mark.skipif(not hasattr(os, "fork"), reason="no fork on this system")
def test_forked_child_has_workers_of_its_own(tmp_path: Path) -> None:
    code = """if True:
        import os, time, warnings
        warnings.simplefilter("ignore")
        from sembra.local.jobs.shared_pool import shared_pool
        parents = shared_pool().submit(os.getpid).result()
        child = os.fork()
        if child == 0:
            childs = shared_pool().submit(os.getpid).result()
            print(parents, childs, flush=True)
            time.sleep(300)
        assert shared_pool().submit(os.getpid).result() == parents
        print(child, flush=True)
        os.kill(os.getpid(), 9)
    """
    with application(code, tmp_path) as program:
        assert program.stdout is not None
        lines = [program.stdout.readline() for _ in range(2)]
        program.wait(60)
        (child,) = (int(line) for line in lines if " " not in line)
        (pids,) = ([int(pid) for pid in line.split()] for line in lines if " " in line)
        try:
            # The child lives on, and holds nothing that keeps its parent's worker alive.
            assert await_that(lambda: not is_alive(pids[0]))
            assert is_alive(pids[1])
        finally:
            os.kill(child, signal.SIGKILL)
        assert await_that(lambda: not is_alive(pids[1]))
