"""Jobs on the workers of a Dask cluster, each of which has a pool of its own."""

import os
import threading
from collections.abc import Callable
from concurrent.futures import CancelledError
from importlib import import_module
from typing import Any

from sembra.local.jobs.callers import ended_with_caller
from sembra.local.jobs.errors import EngineError
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

    tells_progress = False

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
            future = client.submit(run_in_pool, content, entry, limit, pure=False)
            with ended_with_caller(future):
                return future.result()
        except distributed.scheduler.KilledWorker as error:
            raise EngineError(
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


def run_in_pool(
    content: dict[str, Any], entry: Callable[[dict[str, Any]], Any], limit: float
) -> Any:
    """Run a job in the pool of this Dask worker, and end it when its time is over.

    A cluster can forget a running call, but not end it; so the limit goes along with the job.

    Args:
        content: The job.
        entry: The call to run, such as `sembra.local.jobs.task.run_job`.
        limit: Time that the job may take once it is taken up, in seconds.

    Raises:
        TimeoutError: The time is over.
    """
    future = shared_pool().submit_reporting(ignore, entry, content)
    with ended_with_caller(future):
        return future.result_within(limit)


def _connect(address: str) -> Any:
    try:
        distributed = import_module("distributed")
    except ImportError as error:
        raise EngineError(
            "The setting SEMBRA_EXECUTOR names a Dask cluster, but Dask's package 'distributed'"
            " is not installed: install sembra-local[dask]"
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
