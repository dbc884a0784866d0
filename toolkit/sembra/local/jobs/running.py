"""Running one job from its start to its end."""

from concurrent.futures import CancelledError, Future, wait
from typing import Any, TypeGuard

from sembra.local.jobs.engine import EngineError, open_engine
from sembra.local.jobs.progress import show_progress
from sembra.local.jobs.task import run_job

ENTRY = run_job
"""What runs a job, in a process of its own."""


class JobError(Exception):
    """A job came to no end of its own; the message says why."""


def run(content: dict[str, Any], timeout: float) -> dict[str, Any]:
    """Run a job of the worker and wait for its end.

    Args:
        content: The job: "name", "version" and "body".
        timeout: Time that the job may take, in seconds; then it is ended.

    Returns:
        "files", a mapping of extension to base64 text, and "error", a message or None.

    Raises:
        JobError: The engine can't be used, the time is over, or the worker crashed.
    """
    try:
        with show_progress(content["name"]) as report, open_engine(report) as engine:
            future = engine.submit(ENTRY, content, timeout)
            try:
                result = _await_result(future, timeout)
                if engine.tells_progress:
                    report(1.0)
            finally:
                future.cancel()
    except EngineError as error:
        raise JobError(str(error)) from error
    except OSError as error:
        raise JobError(f"The worker can't be started: {error}") from error
    if not _is_result(result):
        raise JobError("The worker's answer makes no sense")
    return result


def _await_result(future: Future[Any], timeout: float) -> Any:
    too_long = f"The job was ended by its time-out: it took longer than {timeout:g} seconds"
    if not wait([future], timeout).done:
        raise JobError(too_long)
    try:
        return future.result()
    except (TimeoutError, CancelledError) as error:
        raise JobError(too_long) from error
    except Exception as error:
        raise JobError(f"The worker crashed: {error}") from error


def _is_result(result: Any) -> TypeGuard[dict[str, Any]]:
    return (
        isinstance(result, dict)
        and isinstance(result.get("files"), dict)
        and (result.get("error") is None or isinstance(result["error"], str))
    )
