"""Which executor runs the jobs, by setting."""

import os
import signal
import subprocess
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import pytest
from sembra.local.jobs.engine import chosen_engine
from sembra.local.jobs.engine_error import EngineError
from sembra.local.jobs.reporting import ignore
from sembra.local.jobs.running import JobError, run
from sembra.local.jobs.shared_pool import end_shared_pool, shared_pool

from tests.toolkit import fake_jobs
from tests.toolkit.processes import application, await_that, is_alive, sleeping_processes

CONTENT = {"name": "x", "version": 1, "body": "abc"}


@pytest.mark.parametrize("setting", ["", "process", " process "])
def test_processes_on_this_machine(setting: str, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv("SEMBRA_EXECUTOR", setting)
    engine = chosen_engine()
    assert engine is shared_pool()
    assert engine.run(fake_jobs.echo, CONTENT, 30, ignore)["error"] is None


@pytest.mark.parametrize("setting", ["nonsense", "dask", "dask://", "tcp://localhost:8786"])
def test_setting_that_is_not_known(setting: str, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv("SEMBRA_EXECUTOR", setting)
    with pytest.raises(EngineError, match="SEMBRA_EXECUTOR must be 'process' or 'dask://"):
        chosen_engine()


@pytest.mark.parametrize("workers", [1, 3])
def test_as_many_workers_as_the_setting_says(
    workers: int, monkeypatch: pytest.MonkeyPatch, tmp_path: Path
) -> None:
    monkeypatch.setenv("SEMBRA_WORKERS", str(workers))
    assert chosen_engine().capacity() == workers
    monkeypatch.setattr("sembra.local.jobs.running.ENTRY", fake_jobs.count_side_by_side)
    end_shared_pool()
    content = CONTENT | {"body": f"{workers} {tmp_path}"}
    calls = 2 * workers
    with ThreadPoolExecutor(calls) as callers:
        results = list(callers.map(lambda _: run(content, 60), range(calls)))
    assert max(int(result["files"][".sld"]) for result in results) == workers
    end_shared_pool()


@pytest.mark.parametrize("setting", ["0", "-1", "many", "1.5"])
def test_number_of_workers_that_is_none(setting: str, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv("SEMBRA_WORKERS", setting)
    with pytest.raises(JobError, match="SEMBRA_WORKERS must be a whole number above 0, not"):
        run(CONTENT, 5)


@pytest.mark.parametrize("timeout", [float("inf"), 1e300, 1e12])
def test_limit_that_is_far_away(timeout: float, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr("sembra.local.jobs.running.ENTRY", fake_jobs.echo)
    assert run(CONTENT, timeout)["error"] is None


INTERRUPTED = """
import threading
from sembra.local.jobs.engine import chosen_engine
from sembra.local.jobs.reporting import ignore
from tests.toolkit import fake_jobs

def run(entry, body):
    return chosen_engine().run(entry, {{"body": body}}, float("inf"), ignore)["error"]

other = threading.Thread(target=lambda: print("other:", run(fake_jobs.await_file, {gate!r})))
other.start()
try:
    run(fake_jobs.sleep_long, {note!r})
except KeyboardInterrupt:
    print("interrupted", flush=True)
print("next:", run(fake_jobs.echo, "x"), flush=True)
other.join()
"""


def test_interrupt_costs_its_own_job_alone(tmp_path: Path) -> None:
    note, gate = tmp_path / "pids", tmp_path / "gate"
    with application(INTERRUPTED.format(gate=str(gate), note=str(note)), tmp_path) as program:
        pids = sleeping_processes(note)
        program.send_signal(signal.SIGINT)
        assert await_that(lambda: not any(map(is_alive, pids)))
        assert program.stdout is not None
        assert [program.stdout.readline() for _ in range(2)] == ["interrupted\n", "next: None\n"]
        gate.touch()
        output, errors = program.communicate(timeout=60)
    assert (output, errors) == ("other: None\n", "")


def test_machine_that_does_not_tell_its_cores_by_process(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.delattr(os, "sched_getaffinity", raising=False)
    monkeypatch.setattr(os, "cpu_count", lambda: 7)
    assert chosen_engine().capacity() == 7
    monkeypatch.setattr(os, "cpu_count", lambda: None)
    assert chosen_engine().capacity() == 1


def test_worker_that_cannot_be_started(monkeypatch: pytest.MonkeyPatch) -> None:
    def refuse(*_: object, **__: object) -> None:
        raise OSError("too many processes")

    end_shared_pool()
    with monkeypatch.context() as patch:
        patch.setattr(subprocess, "Popen", refuse)
        with pytest.raises(JobError, match="The worker can't be started: too many processes"):
            run(CONTENT, 5)
    monkeypatch.setattr("sembra.local.jobs.running.ENTRY", fake_jobs.echo)
    assert run(CONTENT, 60)["error"] is None
