"""One job of the worker: an input file goes in, result files or an error message come out."""

import base64
import binascii
from typing import Any

from sembra.local.jobs.reporting import reporter
from sembra.local.sli.input_file_error import InputFileError
from sembra.local.sli.text import decode
from sembra.local.worker.console import configured_command, run_console
from sembra.local.worker.failures import (
    INTERNAL_ERROR,
    INVALID_BODY,
    UNSUPPORTED_JOB,
    WorkerError,
)

_NAME = "dsettlement"
_VERSION = 1


def run_job(content: dict[str, Any]) -> dict[str, Any]:
    """Calculate one input file, with the console edition of D-Settlement where one is configured.

    Whoever `reporter` names is told the fraction done, from 0 to 1.

    Args:
        content: "name" ("dsettlement"), "version" (1) and "body", the `.sli` file in base64.

    Returns:
        "files": the result files in base64 by extension, with ".sld" after a calculation and
        ".err" with the message after an error; "error": None, or the message in plain words;
        "remarks": what the user should know about the calculation, as a list of sentences.
        A job either has all its results or an error; this function raises nothing for bad input.
    """
    try:
        files, remarks = _run(content)
    except (InputFileError, WorkerError) as error:
        return _failed(str(error))
    except Exception as error:
        return _failed(INTERNAL_ERROR.format(error=f"{type(error).__name__}: {error}"))
    return {
        "files": {name: _encode(data) for name, data in files.items()},
        "error": None,
        "remarks": remarks,
    }


def _run(content: dict[str, Any]) -> tuple[dict[str, bytes], list[str]]:
    if content.get("name") != _NAME or content.get("version") != _VERSION:
        raise WorkerError(UNSUPPORTED_JOB)
    data = _decode(content.get("body"))
    report = reporter.get()
    report(0.0)
    command = configured_command()
    remarks: list[str] = []
    if command:
        files = run_console(command, data)
    else:
        # Loaded here, where it runs: the application only sends this module's function.
        from sembra.local.worker.calculate_file import calculate_file

        written, remarks = calculate_file(decode(data), report)
        files = {".sld": written.encode()}
    report(1.0)
    return files, remarks


def _decode(body: object) -> bytes:
    if not isinstance(body, str):
        raise WorkerError(INVALID_BODY)
    try:
        return base64.b64decode(body, validate=True)
    except (binascii.Error, ValueError):
        raise WorkerError(INVALID_BODY) from None


def _failed(message: str) -> dict[str, Any]:
    return {"files": {".err": _encode(f"{message}\n".encode())}, "error": message, "remarks": []}


def _encode(data: bytes) -> str:
    return base64.b64encode(data).decode("ascii")
