"""Which thread waits for which job: a job has ended when its caller goes on, whatever happened."""

import threading
from collections.abc import Iterable, Iterator
from contextlib import contextmanager
from typing import Any, Protocol


class Job(Protocol):
    """A job that can be ended."""

    def cancel(self) -> Any:
        """End the job, if it hasn't ended."""


_jobs: dict[int | None, Job] = {}


@contextmanager
def ended_with_caller(job: Job) -> Iterator[None]:
    """End a job at the end of the block, in which this thread waits for it."""
    caller = threading.get_ident()
    _jobs[caller] = job
    try:
        yield
    finally:
        _jobs.pop(caller, None)
        job.cancel()


def end_jobs_of(callers: Iterable[threading.Thread]) -> None:
    """End the jobs that other threads wait for."""
    for caller in callers:
        job = _jobs.get(caller.ident)
        if job is not None:
            job.cancel()
