"""Which engine runs the jobs."""

import os
from collections.abc import Callable
from typing import Any, Protocol

from sembra.local.jobs.engine_error import EngineError
from sembra.local.jobs.reporting import Report
from sembra.local.jobs.shared_pool import shared_pool

EXECUTOR_SETTING = "SEMBRA_EXECUTOR"
"""Environment setting: unset, empty or "process" for processes on this machine, or
"dask://host:port" for the cluster whose scheduler listens there."""

Entry = Callable[[dict[str, Any]], Any]


class Engine(Protocol):
    """Something that runs jobs, one per calling thread."""

    def run(self, entry: Entry, content: dict[str, Any], limit: float, on_progress: Report) -> Any:
        """Run a job and return its result. Whatever happens, the job has ended then.

        Args:
            entry: A function that can be imported by its module's name; takes the content.
            content: The job.
            limit: Time that the job may take once it is taken up, in seconds.
            on_progress: Takes the fraction done, from an engine that gets to know it.

        Raises:
            TimeoutError: The time is over.
            EngineError: The engine can't be used, or was lost.
            Exception: Whatever the job raised or its process came to.
        """

    def capacity(self) -> int:
        """Return how many jobs run side by side.

        Raises:
            EngineError: The engine can't be used.
        """


def chosen_engine() -> Engine:
    """Return the engine that the setting names.

    Raises:
        EngineError: It names none.
    """
    setting = os.environ.get(EXECUTOR_SETTING, "").strip()
    scheme, separator, address = setting.partition("://")
    if setting in ("", "process"):
        return shared_pool()
    if scheme == "dask" and separator and address:
        from sembra.local.jobs.dask_engine import DaskEngine

        return DaskEngine(address)
    raise EngineError(
        f"The setting {EXECUTOR_SETTING} must be 'process' or 'dask://host:port', not {setting!r}"
    )
