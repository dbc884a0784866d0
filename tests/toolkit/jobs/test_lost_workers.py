"""Worker processes that can't be started, ended or cleared away as usual."""

import os
import pickle
import shutil
import signal
import threading
from collections.abc import Sequence
from pathlib import Path

import pytest
from sembra.local.jobs import dask_engine, worker_process
from sembra.local.jobs import pool as pool_module
from sembra.local.jobs.pool import PoolFuture
from sembra.local.jobs.reporting import ignore
from sembra.local.jobs.shared_pool import shared_pool
from sembra.local.jobs.worker_process import NotTakenError, ProcessCrashError, WorkerProcess

from tests.toolkit import fake_jobs
from tests.toolkit.jobs.pools import pool
from tests.toolkit.processes import await_that, is_alive, sleeping_processes


def test_thread_that_cannot_be_started(monkeypatch: pytest.MonkeyPatch) -> None:
    def refuse(_: threading.Thread) -> None:
        raise RuntimeError("can't start new thread")

    with pool(1) as executor:
        with monkeypatch.context() as patch:
            patch.setattr(threading.Thread, "start", refuse)
            with pytest.raises(RuntimeError, match="can't start new thread"):
                executor.submit(abs, -1)
        assert executor.submit(abs, -2).result(30) == 2


def test_call_that_is_cancelled_while_its_worker_starts(monkeypatch: pytest.MonkeyPatch) -> None:
    started, cancelled = threading.Event(), threading.Event()

    class Slow(WorkerProcess):
        def __init__(self, preload: Sequence[str] = ()) -> None:
            super().__init__(preload)
            started.set()
            cancelled.wait(30)

    monkeypatch.setattr(pool_module, "WorkerProcess", Slow)
    with pool(1) as executor:
        future: PoolFuture = executor.submit(fake_jobs.raise_error, {})
        assert started.wait(30)
        assert future.cancel()
        cancelled.set()
        assert executor.submit(abs, -1).result(30) == 1
        assert future.cancelled()


def test_system_without_groups_of_processes(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.delattr(os, "killpg")
    monkeypatch.delattr(os, "waitid")
    with pool(1) as executor:
        future = executor.submit(fake_jobs.sleep_long, {"body": str(tmp_path / "pids")})
        worker, child = sleeping_processes(tmp_path / "pids")
        try:
            assert future.cancel()
            assert await_that(lambda: not is_alive(worker))
        finally:
            os.kill(child, signal.SIGKILL)
        with pytest.raises(ProcessCrashError, match="exit code 3"):
            executor.submit(fake_jobs.leave, {}).result(30)
        assert executor.submit(abs, -1).result(30) == 1


def test_worker_whose_end_another_part_of_the_application_takes_notice_of() -> None:
    with pool(1) as executor:
        pid = executor.submit(os.getpid).result(30)
        os.kill(pid, signal.SIGKILL)
        os.waitpid(pid, 0)
        assert executor.submit(os.getpid).result(30) != pid


def test_worker_that_ends_before_it_is_given_a_call() -> None:
    worker = WorkerProcess()
    call = pickle.dumps((abs, (-1,), {}))
    assert worker.run(call, lambda: None, ignore) == 1
    worker.kill()
    assert await_that(worker.has_ended)
    with pytest.raises(NotTakenError, match="signal 9"):
        worker.run(call, lambda: None, ignore)
    worker.clear()


def test_folder_that_cannot_be_removed_is_given_up(monkeypatch: pytest.MonkeyPatch) -> None:
    worker = WorkerProcess()
    assert worker.run(pickle.dumps((abs, (-1,), {})), lambda: None, ignore) == 1
    folder = worker._folder
    with monkeypatch.context() as patch:
        patch.setattr(worker_process, "EXIT_LIMIT", 0.05)
        patch.setattr(shutil, "rmtree", lambda *_, **__: None)
        worker.clear()
    assert folder.exists()
    shutil.rmtree(folder)


@pytest.mark.skipif(not hasattr(os, "fork"), reason="no fork on this system")
@pytest.mark.filterwarnings("ignore:This process .* is multi-threaded:DeprecationWarning")
def test_forked_child_leaves_the_workers_of_its_parent_alone() -> None:
    parents = shared_pool()
    pid = parents.submit(os.getpid).result(30)
    child = os.fork()
    if child == 0:
        try:
            parents.submit(abs, -1)
        except RuntimeError:
            os._exit(0 if shared_pool() is not parents and not dask_engine._connections else 1)
        os._exit(2)
    assert os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]) == 0
    assert parents.submit(os.getpid).result(30) == pid
    assert shared_pool() is parents
