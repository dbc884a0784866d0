"""What is sent to an executor: the call of the worker."""

from concurrent.futures import TimeoutError as FutureTimeoutError
from typing import Any

from sembra.local.jobs.process_executor import ProcessExecutor
from sembra.local.jobs.reporting import reporter


def run_job(content: dict[str, Any]) -> dict[str, Any]:
    """Run a job of the worker in this process.

    Args:
        content: The job: "name", "version" and "body".

    Returns:
        "files", a mapping of extension to base64 text, and "error", a message or None.
    """
    from sembra.local.worker import run_job as run_on_worker

    result: dict[str, Any] = run_on_worker(content, reporter.get())
    return result


def run_limited(content: dict[str, Any], entry: Any, limit: float) -> dict[str, Any]:
    """Run a job in a process of its own on this machine, and end it when its time is over.

    An engine on other machines can forget a running call, but not end it; so the limit goes along
    with the job.

    Args:
        content: The job.
        entry: The call to run in the process, such as `run_job`.
        limit: Time that the job may take, in seconds.

    Raises:
        TimeoutError: The time is over.
    """
    with ProcessExecutor() as executor:
        future = executor.submit(entry, content)
        try:
            result: dict[str, Any] = future.result(limit)
        except FutureTimeoutError:
            future.cancel()
            raise
        return result
