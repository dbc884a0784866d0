"""The service on its own, as `python -m sembra.local.service`."""

import os
import socket
import subprocess
import sys
import time
from collections.abc import Callable
from typing import Any

import pytest
from sembra.core import _post_on_addon_endpoint
from sembra.errors import InternalError

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
    finally:
        service.terminate()
        service.wait(10)
    with pytest.raises(InternalError, match="can't be reached"):
        fill(document_1d())


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
