"""Which executor runs the jobs."""

import os
from collections.abc import Callable, Iterator
from concurrent.futures import Executor, Future
from contextlib import contextmanager
from importlib import import_module
from typing import Any, NamedTuple

from sembra.local.jobs.process_executor import ProcessExecutor
from sembra.local.jobs.reporting import Report
from sembra.local.jobs.task import run_limited

EXECUTOR_SETTING = "SEMBRA_EXECUTOR"
"""Environment setting: unset, empty or "process" for processes on this machine, or
"dask://host:port" for the cluster whose scheduler listens there."""

CONNECTION_LIMIT = 10.0
"""Time to connect to a cluster, in seconds."""


class EngineError(Exception):
    """The engine that the setting names can't be used."""


class Engine(NamedTuple):
    """Something that runs jobs.

    Args:
        tells_progress: Whether it passes on the fraction done.
        submit: Starts a job: takes the entry, the content and the time limit in seconds.
    """

    tells_progress: bool
    submit: Callable[[Callable[..., Any], dict[str, Any], float], Future[Any]]


@contextmanager
def open_engine(on_progress: Report) -> Iterator[Engine]:
    """Open the engine that the setting names.

    Args:
        on_progress: Takes the fraction done, from an engine that tells it.

    Raises:
        EngineError: It can't be used.
    """
    setting = os.environ.get(EXECUTOR_SETTING, "").strip()
    scheme, separator, address = setting.partition("://")
    if setting in ("", "process"):
        with ProcessExecutor(on_progress) as executor:
            yield Engine(True, lambda entry, content, _limit: executor.submit(entry, content))
    elif scheme == "dask" and separator and address:
        with _open_dask(address) as cluster:
            yield Engine(
                False,
                lambda entry, content, limit: cluster.submit(run_limited, content, entry, limit),
            )
    else:
        raise EngineError(
            f"The setting {EXECUTOR_SETTING} must be 'process' or 'dask://host:port', "
            f"not {setting!r}"
        )


@contextmanager
def _open_dask(address: str) -> Iterator[Executor]:
    try:
        distributed = import_module("distributed")
    except ImportError as error:
        raise EngineError(
            f"The setting {EXECUTOR_SETTING} names a Dask cluster, but Dask's package 'distributed'"
            " is not installed: install sembra-local[dask]"
        ) from error
    try:
        client = distributed.Client(address, timeout=CONNECTION_LIMIT, set_as_default=False)
    except (OSError, TimeoutError, ValueError) as error:
        raise EngineError(f"The Dask cluster at {address} can't be reached: {error}") from error
    with client:
        yield client.get_executor(pure=False)
