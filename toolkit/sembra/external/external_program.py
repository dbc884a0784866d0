"""Jobs for external programs: what to send, running it, and what came back."""

import warnings
from abc import ABC, abstractmethod
from base64 import b64decode
from collections.abc import Mapping
from dataclasses import dataclass
from io import BytesIO
from typing import Any

from sembra.errors import ModelError
from sembra.local.limits import seconds
from sembra.local.worker.failures import OUT_OF_RANGE

__all__ = ["ExecutionError", "ExternalProgram"]

_dseries_exception_map: dict[str, tuple[str, type[Exception]]] = {
    OUT_OF_RANGE: (
        "The model holds numbers that are too large or too small to calculate with.",
        ModelError,
    ),
}
"""What the application is told for a whole message of the worker: a text and an exception type."""


class ExecutionError(Exception):
    """A job failed, or a result was asked for that isn't there. Takes one message."""


@dataclass(frozen=True, slots=True, kw_only=True)
class _JobContent:
    """What a job sends to the worker.

    Args:
        body: The input of the program, as text.
    """

    body: str


class ExternalProgram(ABC):
    """A program that runs outside this process, on a worker.

    A subclass says what to send (`_generate_job_content`) and may turn the worker's error messages
    into exceptions of its own (`_handle_execution_error`).

    Args:
        name: Name of the program, as the worker knows it.
        version: Version of the program's interface.
    """

    def __init__(self, name: str, *, version: int) -> None:
        self._name = name
        self._version = version
        self._result_content: dict[str, Any] | None = None
        self._missing = "There is no result yet: call 'execute' first"

    def execute(self, timeout: float = 60.0) -> None:
        """Run the program and wait for its end.

        Calls from several threads run side by side, as many as there are workers; what is too much
        waits in line. A progress bar is shown if the standard error stream is a terminal. What the
        worker remarks on the calculation is shown as warnings (`UserWarning`); it stands in the
        result file, too.

        Args:
            timeout: Time that the job may take from when a worker takes it up, in seconds;
                `math.inf` for as long as it takes. A job that takes longer is ended.

        Raises:
            ValueError: The timeout isn't above 0.
            ExecutionError: The job took too long, couldn't be run, crashed, or ended with an error
                that the subclass has no exception for.
        """
        # Loaded here, so that importing this module stays cheap.
        from sembra.local.jobs.running import JobError, run

        timeout = seconds(timeout, "timeout")
        self._result_content = None
        self._missing = "There is no result: the last 'execute' failed"
        content = {
            "name": self._name,
            "version": self._version,
            "body": self._generate_job_content().body,
        }
        try:
            result = run(content, timeout)
        except JobError as error:
            raise ExecutionError(str(error)) from error
        message = result["error"]
        if message is not None:
            self._handle_execution_error(message)
            raise ExecutionError(message)
        self._result_content = result
        for remark in result.get("remarks", ()):
            warnings.warn(remark, stacklevel=2)

    @abstractmethod
    def _generate_job_content(self) -> _JobContent:
        """Return what the job sends to the worker."""

    def _handle_execution_error(self, message: str) -> None:  # noqa: B027
        """Raise an exception of the subclass's own for an error message of the worker.

        If this returns, `execute` raises an `ExecutionError` with the message.
        """

    def _get_result_content(self) -> dict[str, Any]:
        """Return the result of the last job.

        Raises:
            ExecutionError: There is none.
        """
        if self._result_content is None:
            raise ExecutionError(self._missing)
        return self._result_content


def _get_dseries_file_body(result_content: Mapping[str, Any], extension: str) -> BytesIO | None:
    """Return an output file out of a job's result, or None if there is none.

    Args:
        result_content: The result: a mapping with the key "files", which holds a mapping of
            extension to file content as base64 text.
        extension: The extension of the file, such as ".sld".
    """
    body = result_content["files"].get(extension)
    return None if body is None else BytesIO(b64decode(body))
