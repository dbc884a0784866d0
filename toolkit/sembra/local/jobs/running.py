"""Running one job from its start to its end."""

from concurrent.futures import CancelledError
from typing import Any, TypeGuard

from sembra.local.jobs.engine import chosen_engine
from sembra.local.jobs.engine_error import EngineError
from sembra.local.jobs.progress import show_progress
from sembra.local.worker.job import run_job

ENTRY = run_job
"""What runs a job, in a worker process."""


class JobError(Exception):
    """A job came to no end of its own; the message says why."""


def run(content: dict[str, Any], timeout: float) -> dict[str, Any]:
    """Run a job of the worker and wait for its end.

    Args:
        content: The job: "name", "version" and "body".
        timeout: Time that the job may take once a worker has taken it up, in seconds; then it is
            ended. Infinity for as long as it takes.

    Returns:
        "files", a mapping of extension to base64 text, and "error", a message or None.

    Raises:
        JobError: The engine can't be used, the time is over, or the worker crashed.
    """
    try:
        engine = chosen_engine()
        with show_progress(content["name"]) as report:
            result = engine.run(ENTRY, content, timeout, report)
    except EngineError as error:
        raise JobError(str(error)) from error
    except TimeoutError as error:
        raise JobError(
            f"The job was ended by its time-out: it took longer than {timeout:g} seconds"
        ) from error
    except CancelledError as error:
        raise JobError("The job was ended from outside") from error
    except OSError as error:
        raise JobError(f"The worker can't be started: {error}") from error
    except Exception as error:
        raise JobError(f"The worker crashed: {error}") from error
    if not _is_result(result):
        raise JobError("The worker's answer makes no sense")
    return result


def _is_result(result: Any) -> TypeGuard[dict[str, Any]]:
    return (
        isinstance(result, dict)
        and isinstance(result.get("files"), dict)
        and (result.get("error") is None or isinstance(result["error"], str))
    )
