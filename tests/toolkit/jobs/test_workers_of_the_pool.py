"""Calls in line for workers, and workers that end before their call does."""

import os
import signal
import threading
import time
from concurrent.futures import CancelledError
from pathlib import Path

import pytest
from sembra.local.jobs.pool import WorkerPool
from sembra.local.jobs.worker_process import ProcessCrashError, WorkerProcess

from tests.toolkit import fake_jobs
from tests.toolkit.jobs.pools import CONTENT, pool
from tests.toolkit.processes import (
    await_that,
    is_alive,
    sleeping_processes,
)


def test_only_as_many_side_by_side_as_there_may_be() -> None:
    with pool(2) as executor:
        pids = {future.result(60) for future in [executor.submit(os.getpid) for _ in range(20)]}
    assert 1 <= len(pids) <= 2


def test_time_counts_from_when_a_worker_takes_the_call_up(tmp_path: Path) -> None:
    """The second call waits in line for longer than its limit."""
    gate = tmp_path / "gate"
    with pool(1) as executor:
        executor.submit(fake_jobs.await_file, {"body": str(gate)})
        second = executor.submit(abs, -1)
        answers: list[int] = []
        waiter = threading.Thread(target=lambda: answers.append(second.result_within(20)))
        waiter.start()
        time.sleep(0.3)
        assert not second.taken.is_set()
        gate.touch()
        waiter.join(60)
        assert answers == [1]


def test_wait_in_line_does_not_lengthen_the_time(tmp_path: Path) -> None:
    gate = tmp_path / "gate"
    with pool(1) as executor:
        executor.submit(fake_jobs.await_file, {"body": str(gate)})
        second = executor.submit(time.sleep, 60)
        threading.Timer(0.2, gate.touch).start()
        with pytest.raises(TimeoutError):
            second.result_within(0.5)
        assert 0.5 <= time.monotonic() - second._taken_at < 5
        assert second.cancel()


def test_time_that_is_over() -> None:
    with pool(1) as executor:
        future = executor.submit(time.sleep, 60)
        with pytest.raises(TimeoutError):
            future.result_within(0.1)
        future.cancel()


def test_fewer_workers_than_before(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    """While one too many is cleared away, the last one stays."""
    gate, cleared = tmp_path / "gate", threading.Event()
    clear = WorkerProcess.clear

    def clear_late(worker: WorkerProcess) -> None:
        cleared.wait(60)
        clear(worker)

    size = [2]
    with WorkerPool(lambda: size[0]) as executor:
        both = [executor.submit(fake_jobs.await_file, {"body": str(gate)}) for _ in range(2)]
        assert all(future.taken.wait(30) for future in both)
        gate.touch()
        assert all(future.result(30) for future in both)
        monkeypatch.setattr(WorkerProcess, "clear", clear_late)
        size[0] = 1
        try:
            assert [executor.submit(abs, -number).result(10) for number in range(5)] == [*range(5)]
        finally:
            cleared.set()


def test_crash_costs_its_own_worker_alone(tmp_path: Path) -> None:
    gate = tmp_path / "gate"
    with pool(2) as executor:
        other = executor.submit(fake_jobs.await_file, {"body": str(gate)})
        assert other.taken.wait(30)
        for crash in (fake_jobs.kill_itself, fake_jobs.leave):
            with pytest.raises(ProcessCrashError):
                executor.submit(crash, CONTENT).result(30)
        assert executor.submit(abs, -1).result(30) == 1
        gate.touch()
        assert other.result(30)["error"] is None


def test_error_of_a_call_costs_no_worker() -> None:
    with pool(1) as executor:
        pid = executor.submit(os.getpid).result(30)
        with pytest.raises(ProcessCrashError):
            executor.submit(fake_jobs.raise_error, CONTENT).result(30)
        assert executor.submit(os.getpid).result(30) == pid


def test_worker_that_is_killed_while_it_waits_is_replaced() -> None:
    with pool(1) as executor:
        for _ in range(3):
            pid = executor.submit(os.getpid).result(30)
            os.kill(pid, signal.SIGKILL)
        assert executor.submit(os.getpid).result(30) != pid


def test_worker_that_is_killed_takes_what_it_started_along(tmp_path: Path) -> None:
    with pool(1) as executor:
        future = executor.submit(fake_jobs.sleep_long, {"body": str(tmp_path / "pids")})
        pids = sleeping_processes(tmp_path / "pids")
        os.kill(pids[0], signal.SIGKILL)
        with pytest.raises(ProcessCrashError, match="signal 9"):
            future.result(30)
        assert await_that(lambda: not any(map(is_alive, pids)))
        assert executor.submit(abs, -1).result(30) == 1


def test_call_that_is_cancelled_in_line_never_runs(tmp_path: Path) -> None:
    gate, note = tmp_path / "gate", tmp_path / "note"
    with pool(1) as executor:
        first = executor.submit(fake_jobs.await_file, {"body": str(gate)})
        second = executor.submit(fake_jobs.sleep_long, {"body": str(note)})
        assert second.cancel()
        gate.touch()
        assert first.result(30)["error"] is None
    assert not note.exists()


def test_who_waits_in_line_hears_of_the_cancellation_at_once(tmp_path: Path) -> None:
    gate = tmp_path / "gate"
    heard = threading.Event()
    with pool(1) as executor:
        first = executor.submit(fake_jobs.await_file, {"body": str(gate)})
        second = executor.submit(abs, -1)

        def wait() -> None:
            with pytest.raises(CancelledError):
                second.result_within(60)
            heard.set()

        threading.Thread(target=wait, daemon=True).start()
        second.cancel()
        assert heard.wait(30)
        assert not first.done()
        gate.touch()
