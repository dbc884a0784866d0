"""Pilots, which take one job after the other on a Dask cluster."""

import asyncio
import os
import pickle
import threading
import time
from collections.abc import Callable, Iterator, Sequence
from concurrent.futures import CancelledError, Future, ThreadPoolExecutor
from pathlib import Path
from typing import Any

import pytest
from sembra.local.jobs import dask_engine, dask_pilots, dask_worker
from sembra.local.jobs.callers import end_jobs_of
from sembra.local.jobs.running import JobError, run

from tests.toolkit import fake_jobs
from tests.toolkit.jobs.clusters import address_of, new_cluster
from tests.toolkit.processes import await_that, is_alive, sleeping_processes

distributed = pytest.importorskip("distributed")


@pytest.fixture(scope="module")
def two_workers() -> Iterator[Any]:
    with new_cluster(2) as cluster:
        yield cluster


@pytest.fixture
def one_worker() -> Iterator[Any]:
    with new_cluster(1) as cluster:
        yield cluster
        dask_engine.close_clients()


@pytest.fixture(autouse=True)
def _on_cluster(request: pytest.FixtureRequest, monkeypatch: pytest.MonkeyPatch) -> Iterator[None]:
    for name in ("one_worker", "two_workers"):
        if name in request.fixturenames:
            monkeypatch.setenv("SEMBRA_EXECUTOR", address_of(request.getfixturevalue(name)))
    yield
    dask_engine.close_clients()


@pytest.fixture
def entry(monkeypatch: pytest.MonkeyPatch) -> Callable[[Any], None]:
    """Put another call in the place of the worker's."""
    return lambda function: monkeypatch.setattr("sembra.local.jobs.running.ENTRY", function)


def result_of(body: object) -> str:
    """Run a job; return its file, or what went wrong."""
    try:
        file: str = run({"name": "x", "version": 1, "body": str(body)}, 120)["files"][".sld"]
    except JobError as error:
        return str(error)
    return file


def results_of(bodies: Sequence[object], threads: int = 4) -> list[str]:
    with ThreadPoolExecutor(threads) as callers:
        return list(callers.map(result_of, bodies))


def pilots() -> dask_pilots.Pilots:
    (connection,) = dask_engine._connections.values()
    return connection._pilots


@pytest.mark.usefixtures("two_workers")
def test_many_jobs_take_few_tasks(entry: Any, monkeypatch: pytest.MonkeyPatch) -> None:
    tasks: list[Any] = []
    submit = distributed.Client.submit

    def note(self: Any, function: Any, *args: Any, **options: Any) -> Any:
        tasks.append(function)
        return submit(self, function, *args, **options)

    monkeypatch.setattr(distributed.Client, "submit", note)
    entry(fake_jobs.echo)
    bodies = list(map(str, range(100)))
    assert results_of(bodies) == bodies
    assert set(tasks) == {dask_worker.run_jobs}
    assert len(tasks) < 50


def test_nothing_stays_on_the_cluster(entry: Any, two_workers: Any) -> None:
    entry(fake_jobs.echo)
    results_of(range(10), 10)
    assert await_that(lambda: not two_workers.scheduler.tasks)
    assert not pilots()._pilots
    assert result_of("again") == "again"


def test_worker_that_joins_is_used(entry: Any, one_worker: Any, tmp_path: Path) -> None:
    entry(fake_jobs.count_side_by_side)
    body = f"2 {tmp_path}"
    with ThreadPoolExecutor(2) as callers:
        seen = [callers.submit(result_of, body) for _ in range(2)]
        assert await_that(lambda: len(list(tmp_path.iterdir())) == 1)
        one_worker.scale(2)
        assert [future.result() for future in seen] == ["2", "2"]


def test_nothing_waits_on_a_cluster_without_workers_for_a_job_that_was_ended(
    entry: Any, monkeypatch: pytest.MonkeyPatch
) -> None:
    entry(fake_jobs.echo)
    with new_cluster(0) as cluster:
        monkeypatch.setenv("SEMBRA_EXECUTOR", address_of(cluster))
        caller = threading.Thread(target=result_of, args=["x"])
        caller.start()
        assert await_that(lambda: bool(cluster.scheduler.tasks))
        end_jobs_of([caller])
        caller.join(30)
        assert await_that(lambda: not cluster.scheduler.tasks)
        dask_engine.close_clients()


def test_worker_with_several_threads(
    entry: Any, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setenv("SEMBRA_WORKERS", "2")
    entry(fake_jobs.count_side_by_side)
    with new_cluster(1, threads=2) as cluster:
        monkeypatch.setenv("SEMBRA_EXECUTOR", address_of(cluster))
        assert max(results_of([f"2 {tmp_path}"] * 4)) == "2"
        dask_engine.close_clients()


@pytest.mark.usefixtures("one_worker")
def test_worker_that_dies_while_jobs_wait(entry: Any, tmp_path: Path) -> None:
    entry(fake_jobs.kill_the_parent_once)
    killed = tmp_path / "killed"
    assert results_of([killed] * 6, 3) == [str(killed)] * 6


def test_worker_that_leaves(entry: Any, tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    entry(fake_jobs.note_start_and_await_file)
    note = tmp_path / "starts"
    with (
        new_cluster(2) as cluster,
        distributed.Client(cluster) as client,
        ThreadPoolExecutor(1) as caller,
    ):
        monkeypatch.setenv("SEMBRA_EXECUTOR", address_of(cluster))
        result = caller.submit(result_of, note)
        first = starts(note, 1)[0]
        pids = client.run(os.getpid)
        client.retire_workers([address for address, pid in pids.items() if pid == first])
        assert starts(note, 2)[1] != first
        note.with_suffix(".go").touch()
        assert result.result() == str(note.with_suffix(".go"))
        dask_engine.close_clients()


def starts(note: Path, number: int) -> list[int]:
    """Wait until a job was started so many times; return the Dask workers that did it."""
    assert await_that(lambda: note.exists() and len(note.read_text().split()) >= number)
    return list(map(int, note.read_text().split()))


@pytest.mark.usefixtures("two_workers")
def test_broken_connection_to_a_worker_runs_nothing_twice(
    entry: Any, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    entry(fake_jobs.note_start_and_await_file)
    note = tmp_path / "starts"
    with ThreadPoolExecutor(1) as caller:
        result = caller.submit(result_of, note)
        starts(note, 1)
        client = pilots()._client
        for _ in range(3):
            client.sync(break_connections, client)
            time.sleep(0.1)
        note.with_suffix(".go").touch()
        assert result.result() == str(note.with_suffix(".go"))
    assert len(starts(note, 1)) == 1


async def break_connections(client: Any) -> None:
    for connections in list(client.rpc.occupied.values()):
        for connection in list(connections):
            if "sembra" in connection.name:
                connection.abort()


@pytest.mark.usefixtures("two_workers")
def test_workers_that_cannot_be_reached_get_tasks(
    entry: Any, monkeypatch: pytest.MonkeyPatch
) -> None:
    def note_elsewhere(self: Any, event: Any) -> None:
        self._pilots[event[1]["pilot"]].change("tcp://127.0.0.1:1")

    monkeypatch.setattr(dask_pilots.Pilots, "_note_start", note_elsewhere)
    monkeypatch.setattr(dask_pilots, "REACH_LIMIT", 0.7)
    entry(fake_jobs.echo)
    bodies = list(map(str, range(12)))
    assert results_of(bodies) == bodies
    assert not pilots().are_reachable
    start = time.monotonic()
    assert result_of("at once") == "at once"
    assert time.monotonic() - start < 0.7


@pytest.mark.usefixtures("two_workers")
def test_job_in_a_task_of_its_own_is_ended(entry: Any, two_workers: Any, tmp_path: Path) -> None:
    entry(fake_jobs.echo)
    assert result_of("x") == "x"
    pilots().are_reachable = False
    entry(fake_jobs.sleep_long)
    caller = threading.Thread(target=result_of, args=[tmp_path / "pids"])
    caller.start()
    pids = sleeping_processes(tmp_path / "pids")
    end_jobs_of([caller])
    caller.join(30)
    assert not caller.is_alive()
    assert await_that(lambda: not any(map(is_alive, pids)))
    assert await_that(lambda: not two_workers.scheduler.tasks)


@pytest.mark.usefixtures("two_workers")
@pytest.mark.parametrize(
    ("owner", "operation"),
    [(distributed.Client, "submit"), (dask_pilots.Pilots, "_call")],
    ids=["sending a pilot", "calling it"],
)
def test_error_on_the_way_is_that_of_its_job(
    owner: Any, operation: str, entry: Any, monkeypatch: pytest.MonkeyPatch
) -> None:
    def refuse(*_: Any, **__: Any) -> Any:
        raise RuntimeError("out of sand")

    entry(fake_jobs.echo)
    with monkeypatch.context() as patched:
        patched.setattr(owner, operation, refuse)
        assert "out of sand" in result_of("x")
    assert result_of("y") == "y"


@pytest.mark.usefixtures("two_workers")
def test_pilot_that_is_not_there_yet(entry: Any, monkeypatch: pytest.MonkeyPatch) -> None:
    calls: list[int] = []
    call = dask_pilots.Pilots._call

    async def answer_late(self: Any, pilot: Any, order: Any) -> bytes:
        calls.append(order["number"])
        if len(calls) > 1:
            return await call(self, pilot, order)
        pilot.change(pilot.address)  # as where the cluster starts it again
        return b""

    monkeypatch.setattr(dask_pilots.Pilots, "_call", answer_late)
    entry(fake_jobs.echo)
    assert result_of("x") == "x"
    assert calls == [dask_worker.GREETING, dask_worker.GREETING, 1]


def test_others_have_their_turn(entry: Any, one_worker: Any) -> None:
    entry(fake_jobs.echo)
    is_over = threading.Event()

    def keep_busy() -> None:
        while not is_over.is_set():
            assert result_of("x") == "x"

    with ThreadPoolExecutor(2) as callers, distributed.Client(one_worker) as another:
        busy = [callers.submit(keep_busy) for _ in range(2)]
        assert result_of("x") == "x"
        try:
            assert another.submit(abs, -1).result(timeout=30) == 1
            assert not any(future.done() for future in busy)
        finally:
            is_over.set()
        for future in busy:
            future.result()


@pytest.mark.usefixtures("one_worker")
def test_job_that_is_ended_leaves_others_alone(entry: Any, tmp_path: Path) -> None:
    entry(fake_jobs.note_start_and_await_file)
    results: dict[str, str] = {}

    def call(name: str) -> None:
        results[name] = result_of(tmp_path / name)

    callers = {name: threading.Thread(target=call, args=[name]) for name in ("a", "b", "c")}
    callers["a"].start()
    starts(tmp_path / "a", 1)
    for name in ("b", "c"):
        callers[name].start()
    assert await_that(lambda: pilots()._waiting.qsize() == 2)
    end_jobs_of([callers["b"], callers["a"]])
    starts(tmp_path / "c", 1)
    (tmp_path / "c.go").touch()
    for caller in callers.values():
        caller.join(30)
    assert results["c"] == str(tmp_path / "c.go")
    assert all("was lost" in results[name] for name in ("a", "b"))
    assert not (tmp_path / "b").exists()


@pytest.mark.parametrize("is_closed", [True, False])
def test_connection_that_is_lost_while_jobs_wait(
    entry: Any, is_closed: bool, monkeypatch: pytest.MonkeyPatch, tmp_path: Path
) -> None:
    dask = pytest.importorskip("dask")
    entry(fake_jobs.note_start_and_await_file)
    note = tmp_path / "starts"
    with (
        dask.config.set({"distributed.comm.timeouts.connect": "1s"}),
        new_cluster(1) as cluster,
        ThreadPoolExecutor(3) as callers,
    ):
        monkeypatch.setenv("SEMBRA_EXECUTOR", address_of(cluster))
        results = [callers.submit(result_of, note) for _ in range(3)]
        starts(note, 1)
        if is_closed:
            dask_engine.close_clients()
        else:
            cluster.sync(cluster.scheduler.close)
        for future in results:
            assert "The connection to the Dask cluster at" in future.result(60)
        dask_engine.close_clients()
    assert len(starts(note, 1)) == 1


@pytest.mark.usefixtures("two_workers")
def test_closed_pilots_take_no_job(entry: Any) -> None:
    entry(fake_jobs.echo)
    assert result_of("x") == "x"
    closed = pilots()
    dask_engine.close_clients()
    with pytest.raises(CancelledError):
        closed.submit(b"", 1)


def outcome_of(answer: "Future[bytes]") -> Any:
    return pickle.loads(answer.result(60))


def test_pilot_runs_a_job_that_comes_again_once() -> None:
    pilot = dask_worker.Pilot()
    thread = threading.Thread(target=pilot.fly)
    thread.start()
    job = pickle.dumps((abs, -1))
    first = pilot.take(1, job, 60)
    assert pilot.take(1, job, 60) is first
    assert outcome_of(first) == (True, 1)
    assert pilot.take(1, job, 60) is first
    failed, error = outcome_of(pilot.take(2, pickle.dumps((fake_jobs.raise_error, {})), 60))
    assert not failed
    assert "out of sand" in str(error)
    pilot.cancel()
    thread.join(60)
    assert not thread.is_alive()


def test_pilot_that_has_gone_answers_nothing() -> None:
    assert asyncio.run(dask_worker.take("gone", dask_worker.GREETING, b"", 0.0)) == b""


def test_pilot_that_is_over_runs_nothing(tmp_path: Path) -> None:
    pilot = dask_worker.Pilot()
    job = pickle.dumps((fake_jobs.note_start_and_await_file, {"body": str(tmp_path / "starts")}))
    answer = pilot.take(1, job, 60)
    pilot.cancel()
    pilot.fly()
    assert answer.result(60) == b""
    assert pilot.take(2, job, 60).result(60) == b""
    assert not (tmp_path / "starts").exists()


def test_pilot_that_is_over_while_its_job_goes_to_the_pool(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    pilot = dask_worker.Pilot()
    submit = dask_worker._submit
    sent: list[Any] = []

    def submit_late(job: bytes) -> Any:
        sent.append(submit(job))
        pilot.cancel()
        return sent[-1]

    monkeypatch.setattr(dask_worker, "_submit", submit_late)
    job = pickle.dumps((fake_jobs.note_start_and_await_file, {"body": str(tmp_path / "starts")}))
    answer = pilot.take(1, job, 60)
    pilot.fly()
    assert answer.result(60) == b""
    assert sent[0].cancelled()
