"""One job of the worker: an input file goes in, result files or an error message come out."""

import base64
import binascii
from collections.abc import Callable
from typing import Any

import numpy as np

from sembra.local.sli.errors import InputFileError
from sembra.local.sli.text import decode
from sembra.local.worker.calculation import calculate
from sembra.local.worker.console import configured_command, run_console
from sembra.local.worker.errors import (
    INTERNAL_ERROR,
    INVALID_BODY,
    OUT_OF_RANGE,
    UNSUPPORTED_JOB,
    WorkerError,
)
from sembra.local.worker.input import read_project
from sembra.local.worker.result import write_results

_NAME = "dsettlement"
_VERSION = 1


def _keep_silent(fraction: float) -> None:
    """Reports nothing."""


def run_job(
    content: dict[str, Any], report: Callable[[float], None] = _keep_silent
) -> dict[str, Any]:
    """Calculates one input file, with the console edition of D-Settlement where one is configured.

    Args:
        content: "name" ("dsettlement"), "version" (1) and "body", the `.sli` file in base64.
        report: is called with the fraction done, from 0 to 1.

    Returns:
        "files": the result files in base64 by extension, with ".sld" after a calculation and
        ".err" with the message after an error; "error": None, or the message in plain words;
        "remarks": what the user should know about the calculation, as a list of sentences.
        A job either has all its results or an error; this function raises nothing for bad input.
    """
    try:
        with np.errstate(over="raise", invalid="raise", divide="raise"):
            files, remarks = _run(content, report)
    except (InputFileError, WorkerError) as error:
        return _failed(str(error))
    except ArithmeticError:
        return _failed(OUT_OF_RANGE)
    except Exception as error:
        return _failed(INTERNAL_ERROR.format(error=f"{type(error).__name__}: {error}"))
    return {
        "files": {name: _encode(data) for name, data in files.items()},
        "error": None,
        "remarks": remarks,
    }


def _run(
    content: dict[str, Any], report: Callable[[float], None]
) -> tuple[dict[str, bytes], list[str]]:
    if content.get("name") != _NAME or content.get("version") != _VERSION:
        raise WorkerError(UNSUPPORTED_JOB)
    data = _decode(content.get("body"))
    report(0.0)
    command = configured_command()
    if command:
        files = run_console(command, data)
        report(1.0)
        return files, []
    text = decode(data)
    project = read_project(text)
    results = calculate(project, lambda fraction: report(0.9 * fraction))
    remarks = list(dict.fromkeys([*project.remarks, *(one for r in results for one in r.remarks)]))
    written = write_results(text, project, results, remarks)
    report(1.0)
    return {".sld": written.encode()}, remarks


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
