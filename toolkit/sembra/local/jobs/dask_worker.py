"""What runs in the workers of a Dask cluster, each of which has a pool of its own.

A task there runs one job (`run_in_pool`), or it is a pilot (`run_jobs`): it holds a thread of the
Dask worker, and runs one job after the other that the application sends to the Dask worker itself.
"""

import asyncio
import pickle
import queue
from collections.abc import Iterator
from concurrent.futures import CancelledError, Future
from contextlib import contextmanager
from importlib import import_module
from typing import Any, NamedTuple, Protocol

from sembra.local.jobs.callers import ended_with_caller
from sembra.local.jobs.pool import PoolFuture
from sembra.local.jobs.reporting import ignore
from sembra.local.jobs.shared_pool import shared_pool

OPERATION = "sembra_take"
"""What a Dask worker that has pilots calls the handing over of a job."""

GREETING = 0
"""Stands in the place of a job's number where there is none to hand over."""


def run_in_pool(job: bytes, limit: float) -> Any:
    """Run a job in the pool of this Dask worker, and end it when its time is over.

    A cluster can forget a running call, but not end it. So the limit goes along with the job, and
    who runs it looks after whether it has been forgotten.

    Args:
        job: The pickle of the call to run, such as `sembra.local.worker.job.run_job`, and of its
            content.
        limit: Time that the job may take once it is taken up, in seconds.

    Raises:
        TimeoutError: The time is over.
        CancelledError: Nobody waits for the job any more.
    """
    future = _submit(job)
    with ended_with_caller(future), _ended_when_forgotten(future):
        return future.result_within(limit)


def run_jobs(topic: str) -> None:
    """Run the jobs that the application sends, until it lets the task go.

    Args:
        topic: Of the event that tells the application where the pilot is.

    Raises:
        Reschedule: The task was let go, or the Dask worker closes.
    """
    pilot = Pilot()
    with _ended_when_forgotten(pilot) as (worker, key):
        worker.log_event(topic, {"pilot": key, "address": worker.address})
        pilot.fly()
    # Forgotten, or on a Dask worker that closes: then others are to go on.
    raise import_module("distributed").Reschedule


class Order(NamedTuple):
    """A job that a pilot is to run."""

    job: bytes
    limit: float
    outcome: "Future[bytes]"


class Pilot:
    """Runs one job after the other in the thread that holds it."""

    def __init__(self) -> None:
        self._orders: queue.SimpleQueue[Order | None] = queue.SimpleQueue()
        self._latest: Order | None = None
        self._number = 0
        self._running: PoolFuture | None = None
        self._is_over = False

    def take(self, number: int, job: bytes, limit: float) -> "Future[bytes]":
        """Take a job, and return what gets the pickle of whether it succeeded and of its result.

        That is empty if the pilot has ended. A job that comes again, after a broken connection,
        isn't run again.

        Args:
            number: Of the job, among those of the application.
            job: See `run_in_pool`.
            limit: See `run_in_pool`.
        """
        if self._latest is None or number != self._number:
            self._number = number
            self._latest = Order(job, limit, Future())
            if self._is_over:
                self._latest.outcome.set_result(b"")
            else:
                self._orders.put(self._latest)
        return self._latest.outcome

    def fly(self) -> None:
        """Run what is taken, until the pilot is cancelled."""
        while (order := self._orders.get()) is not None:
            order.outcome.set_result(self._run(order))

    def cancel(self) -> None:
        """End the pilot, with the job that it runs."""
        self._is_over = True
        self._orders.put(None)
        running = self._running
        if running is not None:
            running.cancel()

    def _run(self, order: Order) -> bytes:
        try:
            self._running = _submit(order.job)
            with ended_with_caller(self._running):
                if self._is_over:
                    return b""
                return pickle.dumps((True, self._running.result_within(order.limit)))
        except CancelledError:
            return b""
        except Exception as error:
            return pickle.dumps((False, error))


async def take(pilot: str, number: int, job: bytes, limit: float) -> bytes:
    """Hand a job to a pilot of this Dask worker, and return nothing if it isn't there.

    See `Pilot.take`.
    """
    flying = _forgotten.jobs.get(pilot)
    if not isinstance(flying, Pilot):
        return b""
    if number == GREETING:
        return b"here"
    return await asyncio.wrap_future(flying.take(number, job, limit))


class Endable(Protocol):
    """What a task of a Dask worker runs."""

    def cancel(self) -> Any:
        """End it."""


class _Forgotten:
    """A plug-in of a Dask worker: ends the jobs that the cluster forgets.

    It does so when they are cancelled, and when the application that waits for them has gone.
    """

    name = "sembra-jobs"

    def __init__(self) -> None:
        self.jobs: dict[Any, Endable] = {}

    def transition(self, key: Any, _start: str, finish: str, **_: Any) -> None:
        """Take what the Dask worker tells about one of its tasks."""
        job = self.jobs.get(key)
        if job is not None and finish in ("cancelled", "released", "forgotten"):
            job.cancel()

    def teardown(self, **_: Any) -> None:
        """End all jobs, since the Dask worker closes: it would wait for them until it is killed."""
        for job in list(self.jobs.values()):
            job.cancel()


_forgotten = _Forgotten()


@contextmanager
def _ended_when_forgotten(job: Endable) -> Iterator[tuple[Any, Any]]:
    """End a job, within the block, when the task that runs it is forgotten."""
    worker = import_module("distributed").get_worker()
    if _forgotten.name not in worker.plugins:
        worker.handlers[OPERATION] = take
        worker.loop.add_callback(worker.plugins.setdefault, _forgotten.name, _forgotten)
    key = worker.get_current_task()
    _forgotten.jobs[key] = job
    try:
        yield worker, key
    finally:
        del _forgotten.jobs[key]


def _submit(job: bytes) -> PoolFuture:
    entry, content = pickle.loads(job)
    return shared_pool().submit_reporting(ignore, entry, content)
