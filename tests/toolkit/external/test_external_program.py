"""Jobs for external programs, from the content to the result."""

import math
import time
from base64 import b64encode
from decimal import Decimal
from fractions import Fraction
from io import BytesIO
from pathlib import Path
from typing import Any

import numpy as np
import pytest
from sembra.errors import ModelError
from sembra.external.external_program import (
    ExecutionError,
    ExternalProgram,
    _dseries_exception_map,
    _get_dseries_file_body,
    _JobContent,
)
from sembra.local.worker.failures import OUT_OF_RANGE

from tests.toolkit import fake_jobs
from tests.toolkit.processes import await_that, is_alive, sleeping_processes
from tests.toolkit.samples import FOLDER, needs_samples
from tests.toolkit.worker.input_file import input_text, job


class Program(ExternalProgram):
    """A program whose input is a text."""

    def __init__(self, body: str = "") -> None:
        super().__init__("dsettlement", version=1)
        self.body = body
        self.messages: list[str] = []

    def _generate_job_content(self) -> _JobContent:
        return _JobContent(body=self.body)

    def _handle_execution_error(self, message: str) -> None:
        self.messages.append(message)


@pytest.fixture
def entry(monkeypatch: pytest.MonkeyPatch) -> Any:
    """Put another call in the place of the worker's."""

    def put(function: Any) -> None:
        monkeypatch.setattr("sembra.local.jobs.running.ENTRY", function)

    return put


def test_job_carries_name_version_and_body(monkeypatch: pytest.MonkeyPatch) -> None:
    seen = []

    def run(content: dict[str, Any], timeout: float) -> dict[str, Any]:
        seen.append((content, timeout))
        return {"files": {}, "error": None}

    monkeypatch.setattr("sembra.local.jobs.running.run", run)
    Program("abc").execute(timeout=7)
    assert seen == [({"name": "dsettlement", "version": 1, "body": "abc"}, 7)]


def test_result_can_be_read_again_and_again(entry: Any) -> None:
    entry(fake_jobs.echo)
    program = Program("YWJj")
    program.execute(timeout=30)
    for _ in range(2):
        file = _get_dseries_file_body(program._get_result_content(), ".sld")
        assert isinstance(file, BytesIO)
        assert file.read() == b"abc"


def test_file_that_is_missing_is_none() -> None:
    assert _get_dseries_file_body({"files": {}, "error": None}, ".slo") is None


def test_empty_file_is_not_taken_for_a_missing_one() -> None:
    file = _get_dseries_file_body({"files": {".err": ""}, "error": None}, ".err")
    assert file is not None
    assert file.getvalue() == b""


def test_result_before_execute() -> None:
    with pytest.raises(ExecutionError, match="call 'execute' first"):
        Program()._get_result_content()


def test_result_after_a_failed_execute(entry: Any) -> None:
    entry(fake_jobs.echo)
    program = Program()
    program.execute(timeout=30)
    entry(fake_jobs.raise_error)
    with pytest.raises(ExecutionError):
        program.execute(timeout=30)
    with pytest.raises(ExecutionError, match="the last 'execute' failed"):
        program._get_result_content()


def test_error_message_of_the_worker(entry: Any) -> None:
    entry(fake_jobs.fail_with_body)
    program = Program("The ground is too soft.")
    with pytest.raises(ExecutionError, match=r"^The ground is too soft\.$"):
        program.execute(timeout=30)
    assert program.messages == ["The ground is too soft."]


def test_subclass_may_raise_its_own(entry: Any) -> None:
    class Own(Program):
        def _handle_execution_error(self, message: str) -> None:
            raise LookupError(message)

    entry(fake_jobs.fail_with_body)
    with pytest.raises(LookupError, match="soft"):
        Own("soft").execute(timeout=30)


def test_empty_error_message_is_an_error(entry: Any) -> None:
    entry(fake_jobs.fail_with_body)
    with pytest.raises(ExecutionError):
        Program("").execute(timeout=30)


def test_time_out_ends_the_process(entry: Any, tmp_path: Path) -> None:
    entry(fake_jobs.sleep_long)
    note = tmp_path / "pids"
    begin = time.monotonic()
    with pytest.raises(ExecutionError, match=r"time-out: it took longer than 1\.5 seconds"):
        Program(str(note)).execute(timeout=1.5)
    assert time.monotonic() - begin < 10
    pids = sleeping_processes(note)
    assert await_that(lambda: not any(map(is_alive, pids)))


@pytest.mark.parametrize("timeout", [0, -1, float("nan")])
def test_timeout_must_be_above_zero(timeout: float) -> None:
    with pytest.raises(ValueError, match="timeout must be above 0"):
        Program().execute(timeout=timeout)


@pytest.mark.parametrize(
    "timeout",
    [
        *(math.inf, 1e12, pytest.param(10**400, id="1e400")),
        *(np.float32(60), np.int64(60), Fraction(60), Decimal(60)),
    ],
)
def test_timeout_may_be_any_number_above_zero(timeout: Any, entry: Any) -> None:
    entry(fake_jobs.echo)
    Program("abc").execute(timeout=timeout)


@pytest.mark.parametrize(
    ("function", "message"),
    [
        (fake_jobs.raise_error, "The worker crashed: ValueError: out of sand"),
        (fake_jobs.import_missing, "The worker crashed: ModuleNotFoundError: No module named"),
        (fake_jobs.raise_timeout, "The worker crashed: TimeoutError: not the job's"),
        (fake_jobs.kill_itself, "The worker crashed: the process ended with signal 9: last words"),
        (fake_jobs.leave, "The worker crashed: the process ended with exit code 3"),
        (fake_jobs.answer_nonsense, "The worker's answer makes no sense"),
    ],
)
def test_crash_of_the_worker(entry: Any, function: Any, message: str) -> None:
    entry(function)
    with pytest.raises(ExecutionError) as caught:
        Program("x").execute(timeout=30)
    assert str(caught.value).startswith(message)


def test_content_that_fails_to_generate_passes_through() -> None:
    class Broken(Program):
        def _generate_job_content(self) -> _JobContent:
            raise AttributeError("no getvalue_binary")

    with pytest.raises(AttributeError, match="getvalue_binary"):
        Broken().execute(timeout=5)


def test_is_abstract() -> None:
    with pytest.raises(TypeError, match="abstract"):
        ExternalProgram("x", version=1)  # type: ignore[abstract]


def test_map_knows_the_message_of_the_real_worker() -> None:
    text, kind = _dseries_exception_map[OUT_OF_RANGE]
    assert kind is ModelError
    assert "The model holds numbers" in text


def test_body_that_the_real_worker_cannot_read() -> None:
    with pytest.raises(ExecutionError, match="input file"):
        Program(b64encode(b"nonsense").decode()).execute(timeout=60)


@needs_samples
def test_sample_on_the_real_worker() -> None:
    program = Program(b64encode((FOLDER / "bm3-7a.sli").read_bytes()).decode())
    program.execute(timeout=60)
    file = _get_dseries_file_body(program._get_result_content(), ".sld")
    assert file is not None
    assert b"[Results]" in file.read()


@needs_samples
def test_sample_that_the_real_worker_does_not_cover() -> None:
    text = (FOLDER / "bm3-7a.sli").read_text("cp1252")
    text = text.replace("0 : Use fit factors = FALSE", "1 : Use fit factors = TRUE")
    program = Program(b64encode(text.encode("cp1252")).decode())
    with pytest.raises(ExecutionError, match="fit factors"):
        program.execute(timeout=60)
    assert len(program.messages) == 1


def test_what_the_worker_remarks_is_shown_as_warnings() -> None:
    program = Program(job(input_text(model={"Probabilistic": 1}))["body"])
    with pytest.warns(UserWarning, match="The reliability analysis .* is left away") as shown:
        program.execute(timeout=60)
    assert [warning.filename for warning in shown] == [__file__]
    file = _get_dseries_file_body(program._get_result_content(), ".sld")
    assert file is not None
    assert str(shown[0].message).encode() in file.read()
