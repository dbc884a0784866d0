"""What runs in a worker process: the call of the worker."""

from typing import Any

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
