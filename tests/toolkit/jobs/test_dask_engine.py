"""Jobs on a Dask cluster."""

import os
import signal
import socket
import sys
import threading
from collections.abc import Callable, Iterator
from contextlib import suppress
from pathlib import Path
from typing import Any

import pytest
from sembra.local.jobs import dask_engine, dask_worker
from sembra.local.jobs.callers import end_jobs_of
from sembra.local.jobs.engine import chosen_engine
from sembra.local.jobs.pool import WorkerPool
from sembra.local.jobs.running import JobError, run
from sembra.local.study import run_study

from examples import parametric_study as study
from tests.toolkit import fake_jobs
from tests.toolkit.jobs.clusters import address_of, new_cluster
from tests.toolkit.processes import application, await_that, is_alive, sleeping_processes

CONTENT = {"name": "x", "version": 1, "body": "abc"}


def test_dask_that_is_not_installed(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv("SEMBRA_EXECUTOR", "dask://localhost:8786")
    monkeypatch.setitem(sys.modules, "distributed", None)
    with pytest.raises(JobError, match="not installed: pip install distributed"):
        run(CONTENT, 5)


def test_cluster_that_is_not_there(monkeypatch: pytest.MonkeyPatch) -> None:
    pytest.importorskip("distributed")
    with socket.create_server(("127.0.0.1", 0)) as unused:
        port = unused.getsockname()[1]
    monkeypatch.setenv("SEMBRA_EXECUTOR", f"dask://127.0.0.1:{port}")
    monkeypatch.setattr(dask_engine, "CONNECTION_LIMIT", 0.5)
    with pytest.raises(JobError, match=rf"cluster at 127.0.0.1:{port} can't be reached"):
        run(CONTENT, 5)


@pytest.fixture(scope="module")
def cluster() -> Iterator[Any]:
    with new_cluster(2) as local:
        yield local
        dask_engine.close_clients()


@pytest.fixture(autouse=True)
def _on_cluster(request: pytest.FixtureRequest, monkeypatch: pytest.MonkeyPatch) -> None:
    if "cluster" in request.fixturenames:
        local = request.getfixturevalue("cluster")
        monkeypatch.setenv("SEMBRA_EXECUTOR", address_of(local))


@pytest.fixture
def entry(monkeypatch: pytest.MonkeyPatch) -> Callable[[Any], None]:
    """Put another call in the place of the worker's."""
    return lambda function: monkeypatch.setattr("sembra.local.jobs.running.ENTRY", function)


@pytest.mark.usefixtures("cluster")
def test_jobs_share_one_client(entry: Any) -> None:
    entry(fake_jobs.echo)
    for _ in range(3):
        assert run(CONTENT, 60) == {"files": {".sld": "abc"}, "error": None}
    (connection,) = dask_engine._connections.values()
    assert connection.client.status == "running"


@pytest.mark.usefixtures("cluster")
def test_capacity_is_that_of_the_cluster() -> None:
    assert await_that(lambda: chosen_engine().capacity() == 2)


@pytest.mark.usefixtures("cluster")
def test_crash(entry: Any) -> None:
    entry(fake_jobs.raise_error)
    with pytest.raises(JobError, match="The worker crashed: ValueError: out of sand"):
        run(CONTENT, 60)


@pytest.mark.usefixtures("cluster")
def test_time_out_ends_the_process(entry: Any, tmp_path: Path) -> None:
    entry(fake_jobs.sleep_long)
    note = tmp_path / "pids"
    with pytest.raises(JobError, match="ended by its time-out"):
        run(CONTENT | {"body": str(note)}, 1.5)
    pids = sleeping_processes(note)
    assert await_that(lambda: not any(map(is_alive, pids)))


EXECUTE = """
from sembra.local.jobs import running
from tests.toolkit import fake_jobs
from tests.toolkit.jobs.clusters import address_of, new_cluster
running.ENTRY = fake_jobs.sleep_long
running.run({{"name": "x", "version": 1, "body": {note!r}}}, 60)
"""


@pytest.mark.usefixtures("cluster")
@pytest.mark.parametrize("number", [signal.SIGINT, signal.SIGKILL])
def test_nothing_outlives_the_application(tmp_path: Path, number: signal.Signals) -> None:
    note = tmp_path / "pids"
    with application(EXECUTE.format(note=str(note)), tmp_path) as program:
        pids = sleeping_processes(note)
        program.send_signal(number)
        program.communicate(timeout=60)
    # Far less than the minute that the job would take.
    assert await_that(lambda: not any(map(is_alive, pids)), 10)


@pytest.mark.usefixtures("cluster")
def test_study_that_is_interrupted_ends_its_jobs(entry: Any, tmp_path: Path) -> None:
    entry(fake_jobs.sleep_long)
    note = tmp_path / "pids"
    caller = threading.Thread(target=lambda: suppress_job_error(note), daemon=True)
    caller.start()
    pids = sleeping_processes(note)
    end_jobs_of([caller])
    caller.join(10)
    assert not caller.is_alive()
    assert await_that(lambda: not any(map(is_alive, pids)), 10)


def suppress_job_error(note: Path) -> None:
    with suppress(JobError):
        run(CONTENT | {"body": str(note)}, 60)


def test_dask_worker_that_closes_ends_its_jobs(tmp_path: Path) -> None:
    """Dask tells its plug-ins that it closes, and then waits for what runs in its threads."""
    plugin = dask_worker._Forgotten()
    note = tmp_path / "pids"
    with WorkerPool(lambda: 1) as pool:
        job = plugin.jobs["key"] = pool.submit(fake_jobs.sleep_long, {"body": str(note)})
        pids = sleeping_processes(note)
        plugin.teardown(worker=None)
        assert job.cancelled()
        assert await_that(lambda: not any(map(is_alive, pids)), 10)


@pytest.mark.parametrize("finish", ["cancelled", "released", "forgotten"])
def test_task_that_the_cluster_forgets_ends_its_job(finish: str, tmp_path: Path) -> None:
    plugin = dask_worker._Forgotten()
    note = tmp_path / "pids"
    with WorkerPool(lambda: 1) as pool:
        job = plugin.jobs["key"] = pool.submit(fake_jobs.sleep_long, {"body": str(note)})
        pids = sleeping_processes(note)
        for key, state in (("key", "executing"), ("another", finish)):
            plugin.transition(key, "waiting", state)
            assert job.running()
        plugin.transition("key", "executing", finish)
        assert job.cancelled()
        assert await_that(lambda: not any(map(is_alive, pids)), 10)


class BreakingClient:
    """A connection that is lost when it is used."""

    id = "breaking"

    def __init__(self) -> None:
        self.status = "running"
        self.is_closed = False
        self.loop = self

    def subscribe_topic(self, *_: object) -> None:
        """Do nothing."""

    def add_callback(self, *_: object) -> None:
        """Fail."""
        self.status = "closed"
        raise RuntimeError("no loop")

    def close(self, **_: object) -> None:
        """Note it."""
        self.is_closed = True


def test_connection_that_is_lost_is_not_used_again(monkeypatch: pytest.MonkeyPatch) -> None:
    pytest.importorskip("distributed")
    made: list[BreakingClient] = []

    def connect(_address: str) -> BreakingClient:
        made.append(BreakingClient())
        return made[-1]

    monkeypatch.setattr(dask_engine, "_connections", {})
    monkeypatch.setattr(dask_engine, "_connect", connect)
    monkeypatch.setenv("SEMBRA_EXECUTOR", "dask://nowhere.invalid:1")
    for _ in range(2):
        with pytest.raises(JobError, match=r"The connection to the Dask cluster at .* was lost"):
            run(CONTENT, 5)
    assert [client.is_closed for client in made] == [True, False]


@pytest.mark.usefixtures("cluster")
def test_job_that_has_ended_is_not_ended_again(entry: Any, monkeypatch: pytest.MonkeyPatch) -> None:
    distributed = pytest.importorskip("distributed")
    monkeypatch.setattr(distributed.Future, "cancel", lambda *_, **__: pytest.fail("a message"))
    entry(fake_jobs.echo)
    assert run(CONTENT, 60)["error"] is None


@pytest.mark.usefixtures("cluster")
@pytest.mark.parametrize("limit", [float("inf"), 1e300])
def test_limit_that_is_far_away(limit: float, entry: Any) -> None:
    entry(fake_jobs.echo)
    assert run(CONTENT, limit)["error"] is None


@pytest.mark.usefixtures("cluster")
def test_job_whose_dask_worker_dies_is_run_again(entry: Any, tmp_path: Path) -> None:
    entry(fake_jobs.kill_the_parent_once)
    result = run(CONTENT | {"body": str(tmp_path / "killed")}, 120)
    assert result["error"] is None
    assert (tmp_path / "killed").exists()


def test_job_that_kills_its_dask_workers(entry: Any, monkeypatch: pytest.MonkeyPatch) -> None:
    dask = pytest.importorskip("dask")
    entry(fake_jobs.kill_the_parent)
    with dask.config.set({"distributed.scheduler.allowed-failures": 0}), new_cluster(1) as local:
        monkeypatch.setenv("SEMBRA_EXECUTOR", address_of(local))
        with pytest.raises(JobError, match=r"workers of the Dask cluster .* ran the job died"):
            run(CONTENT, 60)
        dask_engine.close_clients()


def test_connection_that_is_lost(
    entry: Any, monkeypatch: pytest.MonkeyPatch, tmp_path: Path
) -> None:
    dask = pytest.importorskip("dask")
    entry(fake_jobs.sleep_long)
    note = tmp_path / "pids"
    errors: list[str] = []

    def call() -> None:
        try:
            run(CONTENT | {"body": str(note)}, float("inf"))
        except JobError as error:
            errors.append(str(error))

    with dask.config.set({"distributed.comm.timeouts.connect": "1s"}), new_cluster(1) as local:
        monkeypatch.setenv("SEMBRA_EXECUTOR", address_of(local))
        caller = threading.Thread(target=call, daemon=True)
        caller.start()
        pids = sleeping_processes(note)
        local.sync(local.scheduler.close)
        caller.join(60)
        assert len(errors) == 1
        assert "The connection to the Dask cluster at" in errors[0]
        # A Dask worker that waited for the job would be killed after some 20 seconds.
        assert await_that(lambda: not any(map(is_alive, pids)), 10)
        dask_engine.close_clients()


def build_or_fail(variant: study.Variant) -> Any:
    if variant.stiffness == 99.0:
        raise LookupError("no such ground")
    return study.build_model(variant)


def test_study_with_a_worker_killed_and_a_failing_variant(
    cluster: Any, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    variants = [*study.variants(quick=True)[:20], study.Variant(99.0, 2.0, 2.0)]
    killed: list[int] = []
    pids = [worker.pid for worker in cluster.workers.values()]

    def read_and_kill(results: Any) -> list[float]:
        if not killed:
            killed.append(pids[0])
            with suppress(ProcessLookupError):
                os.kill(pids[0], signal.SIGKILL)
        return study.read_results(results)

    rows = run_study(
        variants, build_or_fail, study.COLUMNS, read_and_kill, tmp_path / "dask.csv", timeout=120
    )
    assert killed
    assert rows[-1].error == "LookupError: no such ground"
    monkeypatch.delenv("SEMBRA_EXECUTOR")
    on_pool = run_study(
        variants, build_or_fail, study.COLUMNS, study.read_results, tmp_path / "pool.csv"
    )
    assert rows == on_pool
    assert [row.error for row in rows[:-1]] == [None] * 20
