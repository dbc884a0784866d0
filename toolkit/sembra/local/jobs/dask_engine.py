"""Jobs on the workers of a Dask cluster."""

import os
import pickle
import threading
from collections.abc import Callable
from concurrent.futures import CancelledError
from contextlib import suppress
from importlib import import_module
from typing import Any

from sembra.local.jobs import dask_worker
from sembra.local.jobs.callers import ended_with_caller
from sembra.local.jobs.dask_pilots import Pilots, UnreachableError
from sembra.local.jobs.engine_error import DeadWorkersError, EngineError
from sembra.local.jobs.reporting import Report

CONNECTION_LIMIT = 10.0
"""Time to connect to a cluster, in seconds."""

_lock = threading.Lock()
_connections: dict[str, "_Connection"] = {}
"""One per address, kept as long as it is there."""


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
        connection = self._connection()
        distributed = import_module("distributed")
        try:
            # Dask would look for its own futures everywhere in what isn't pickled.
            return connection.run(pickle.dumps((entry, content)), limit)
        except distributed.scheduler.KilledWorker as error:
            raise DeadWorkersError(
                f"The workers of the Dask cluster at {self._address} that ran the job died"
            ) from error
        except (CancelledError, distributed.comm.core.CommClosedError) as error:
            raise self._lost() from error
        except Exception as error:
            if not connection.is_there:
                raise self._lost() from error
            raise

    def capacity(self) -> int:
        """Return how many jobs run side by side; see `sembra.local.jobs.engine.Engine`."""
        threads: dict[str, int] = self._connection().client.nthreads()
        return max(1, sum(threads.values()))

    def _connection(self) -> "_Connection":
        with _lock:
            connection = _connections.get(self._address)
            if connection is None or not connection.is_there:
                if connection is not None:
                    connection.client.close(timeout=0)
                connection = _connections[self._address] = _Connection(_connect(self._address))
            return connection

    def _lost(self) -> EngineError:
        return EngineError(f"The connection to the Dask cluster at {self._address} was lost")


class _Connection:
    """The connection of this process to a cluster.

    Args:
        client: Dask's part of it.
    """

    def __init__(self, client: Any) -> None:
        self.client = client
        self._pilots = Pilots(client)

    @property
    def is_there(self) -> bool:
        """Whether it hasn't been lost."""
        return bool(self.client.status == "running")

    def run(self, call: bytes, limit: float) -> Any:
        """Run a job, in a task of its own where this process can't connect to Dask workers.

        Args:
            call: See `sembra.local.jobs.dask_worker.run_in_pool`.
            limit: See there.
        """
        if self._pilots.are_reachable:
            job = self._pilots.submit(call, limit)
            with suppress(UnreachableError), ended_with_caller(job):
                return job.result()()
        future = self.client.submit(dask_worker.run_in_pool, call, limit, pure=False)
        with ended_with_caller(_DaskJob(future)):
            return future.result()

    def close(self) -> None:
        """Close it; jobs that it has are lost."""
        self._pilots.close()
        self.client.close()


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
        connections = list(_connections.values())
        _connections.clear()
    for connection in connections:
        connection.close()


def _forget_after_fork() -> None:
    global _lock
    _lock = threading.Lock()
    _connections.clear()


if hasattr(os, "register_at_fork"):
    os.register_at_fork(after_in_child=_forget_after_fork)
