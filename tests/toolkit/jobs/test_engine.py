"""Which executor runs the jobs, by setting."""

from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import pytest
from sembra.local.jobs.engine import chosen_engine
from sembra.local.jobs.engine_error import EngineError
from sembra.local.jobs.reporting import ignore
from sembra.local.jobs.running import JobError, run
from sembra.local.jobs.shared_pool import end_shared_pool, shared_pool

from tests.toolkit import fake_jobs

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
    content = CONTENT | {"body": str(tmp_path)}
    with ThreadPoolExecutor(6) as callers:
        results = list(callers.map(lambda _: run(content, 60), range(6)))
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
