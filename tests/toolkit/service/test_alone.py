"""The service on its own, as `python -m sembra.local.service`."""

import os
import signal
import socket
import subprocess
import sys
import time
from collections.abc import Callable
from typing import Any

import pytest
from sembra.core import _post_on_addon_endpoint
from sembra.errors import InternalError
from sembra.local.service import __main__
from sembra.local.service.guard import LOOPBACK

from tests.toolkit.conftest import PATH
from tests.toolkit.documents import document_1d


def test_serves_other_processes(
    monkeypatch: pytest.MonkeyPatch, fill: Callable[[dict[str, Any]], str]
) -> None:
    expected = fill(document_1d())
    with socket.create_server(("127.0.0.1", 0)) as free:
        port = free.getsockname()[1]
    monkeypatch.setenv("SEMBRA_ADDON_URL", f"http://127.0.0.1:{port}")
    service = subprocess.Popen(
        [sys.executable, "-m", "sembra.local.service", "--port", str(port)],
        env={**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path))},
        stderr=subprocess.DEVNULL,
    )
    try:
        assert _patiently(document_1d()) == expected
        # Each answer would wait some 40 ms where its head has to be confirmed before its body.
        assert any(_duration() < 0.03 for _ in range(100))
    finally:
        service.terminate()
        service.wait(10)
    with pytest.raises(InternalError, match="can't be reached"):
        fill(document_1d())


def _duration() -> float:
    begin = time.perf_counter()
    _post_on_addon_endpoint(PATH, {"input": document_1d()}, timeout=5)
    return time.perf_counter() - begin


def test_faults_of_the_service_are_logged() -> None:
    code = """if True:
        import logging.config
        from unittest.mock import patch
        from sembra.local.service import __main__, answer
        def run(*_, log_config, **__):
            logging.config.dictConfig(log_config)
            answer.answer(b'{"input": 1}')
            with patch.object(answer, "read_document", side_effect=LookupError("no template")):
                answer.answer(b"{}")
        with patch("uvicorn.run", run), patch("sys.argv", ["service"]):
            __main__.main()
    """
    done = subprocess.run(
        [sys.executable, "-c", code],
        capture_output=True,
        text=True,
        timeout=60,
        check=True,
        env={**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path))},
    )
    assert "LookupError: no template" in done.stderr
    assert done.stderr.count("Traceback") == 1


def test_names_are_the_same_in_capitals(monkeypatch: pytest.MonkeyPatch) -> None:
    told: list[set[str]] = []
    monkeypatch.setattr("uvicorn.run", lambda *_, **__: None)
    monkeypatch.setattr(__main__, "make_app", told.append)
    monkeypatch.setattr(sys, "argv", ["service", "--host", "Desk.Example", "--name", "ADDONS"])
    __main__.main()
    assert told == [LOOPBACK | {"desk.example", "addons"}]


def _patiently(document: dict[str, Any]) -> str:
    deadline = time.monotonic() + 20
    while True:
        try:
            answer = _post_on_addon_endpoint(PATH, {"input": document}, timeout=5)
        except InternalError:
            if time.monotonic() > deadline:
                raise
            time.sleep(0.1)
        else:
            text: str = answer["input_file"]
            return text


def test_interrupt_ends_it_without_a_fault() -> None:
    service = subprocess.Popen(
        [sys.executable, "-m", "sembra.local.service", "--port", "0"],
        env={**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path))},
        stderr=subprocess.PIPE,
        text=True,
    )
    try:
        assert service.stderr is not None
        assert any("running on" in line for line in service.stderr)
        service.send_signal(signal.SIGINT)
        _, errors = service.communicate(timeout=30)
    finally:
        service.kill()
    assert service.returncode == 0
    assert "Traceback" not in errors
