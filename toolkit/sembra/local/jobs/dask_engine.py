"""Jobs on the workers of a Dask cluster, each of which has a pool of its own."""

import os
import pickle
import threading
from collections.abc import Callable, Iterator
from concurrent.futures import CancelledError
from contextlib import contextmanager
from importlib import import_module
from typing import Any

from sembra.local.jobs.callers import ended_with_caller
from sembra.local.jobs.engine_error import DeadWorkersError, EngineError
from sembra.local.jobs.pool import PoolFuture
from sembra.local.jobs.reporting import Report, ignore
from sembra.local.jobs.shared_pool import shared_pool

CONNECTION_LIMIT = 10.0
"""Time to connect to a cluster, in seconds."""

_lock = threading.Lock()
_clients: dict[str, Any] = {}
"""One client per address, kept as long as it is connected."""


class DaskEngine:
    """A Dask cluster.

    Args:
        address: Host and port of its scheduler.
    """

    def __init__(self, address: str) -> None:
        self._address = address

    def run(
        self,
        entry: Callable[[dict[str, Any]], Any],
        content: dict[str, Any],
        limit: float,
        _on_progress: Report,
    ) -> Any:
        """Run a job; see `sembra.local.jobs.engine.Engine`."""
        client = self._client()
        distributed = import_module("distributed")
        try:
            # Dask would look for its own futures everywhere in what isn't pickled.
            job = pickle.dumps((entry, content))
            future = client.submit(run_in_pool, job, limit, pure=False)
            with ended_with_caller(_DaskJob(future)):
                return future.result()
        except distributed.scheduler.KilledWorker as error:
            raise DeadWorkersError(
                f"The workers of the Dask cluster at {self._address} that ran the job died"
            ) from error
        except (CancelledError, distributed.comm.core.CommClosedError) as error:
            raise self._lost() from error
        except Exception as error:
            if client.status != "running":
                raise self._lost() from error
            raise

    def capacity(self) -> int:
        """Return how many jobs run side by side; see `sembra.local.jobs.engine.Engine`."""
        threads: dict[str, int] = self._client().nthreads()
        return max(1, sum(threads.values()))

    def _client(self) -> Any:
        with _lock:
            client = _clients.get(self._address)
            if client is None or client.status != "running":
                if client is not None:
                    client.close(timeout=0)
                client = _clients[self._address] = _connect(self._address)
            return client

    def _lost(self) -> EngineError:
        return EngineError(f"The connection to the Dask cluster at {self._address} was lost")


class _DaskJob:
    """A job on a cluster, which costs no message to be ended once it has ended.

    Args:
        future: What the cluster gave for it.
    """

    def __init__(self, future: Any) -> None:
        self._future = future

    def cancel(self) -> None:
        """End the job, if it hasn't ended."""
        if not self._future.done():
            self._future.cancel()


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
    entry, content = pickle.loads(job)
    future = shared_pool().submit_reporting(ignore, entry, content)
    with ended_with_caller(future), _ended_when_forgotten(future):
        return future.result_within(limit)


class _Forgotten:
    """A plug-in of a Dask worker: ends the jobs that the cluster forgets.

    It does so when they are cancelled, and when the application that waits for them has gone.
    """

    name = "sembra-jobs"

    def __init__(self) -> None:
        self.jobs: dict[Any, PoolFuture] = {}

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
def _ended_when_forgotten(job: PoolFuture) -> Iterator[None]:
    """End a job, within the block, when the task that runs it is forgotten."""
    worker = import_module("distributed").get_worker()
    if _forgotten.name not in worker.plugins:
        worker.loop.add_callback(worker.plugins.setdefault, _forgotten.name, _forgotten)
    key = worker.get_current_task()
    _forgotten.jobs[key] = job
    try:
        yield
    finally:
        del _forgotten.jobs[key]


def _connect(address: str) -> Any:
    try:
        distributed = import_module("distributed")
    except ImportError as error:
        raise EngineError(
            "The setting SEMBRA_EXECUTOR names a Dask cluster, but Dask's package 'distributed'"
            " is not installed: pip install distributed"
        ) from error
    try:
        return distributed.Client(address, timeout=CONNECTION_LIMIT, set_as_default=False)
    except (OSError, TimeoutError, ValueError) as error:
        raise EngineError(f"The Dask cluster at {address} can't be reached: {error}") from error


def close_clients() -> None:
    """Close the connections to all clusters; the next job opens another."""
    with _lock:
        clients = list(_clients.values())
        _clients.clear()
    for client in clients:
        client.close()


def _forget_after_fork() -> None:
    global _lock
    _lock = threading.Lock()
    _clients.clear()


if hasattr(os, "register_at_fork"):
    os.register_at_fork(after_in_child=_forget_after_fork)
