"""One deadline over the whole exchange with a service, however it dawdles."""

import math
import socket
import threading
import time
from contextlib import suppress
from decimal import Decimal
from fractions import Fraction
from http.server import BaseHTTPRequestHandler
from itertools import cycle
from typing import Any

import numpy as np
import pytest
from sembra.errors import InternalError

from tests.toolkit.client.posting import Answer, Serve, answering, post


def test_service_that_answers_too_late(serve: Serve) -> None:
    release = threading.Event()

    def answer(_request: BaseHTTPRequestHandler) -> None:
        release.wait(5)

    serve(answer)
    begin = time.monotonic()
    with pytest.raises(InternalError, match=r"did not answer within 0\.2 seconds"):
        post(timeout=0.2)
    assert time.monotonic() - begin < 2
    release.set()


def test_service_that_answers_in_drops(serve: Serve) -> None:
    def answer(request: BaseHTTPRequestHandler) -> None:
        request.send_response(200)
        request.send_header("Content-Length", "1000")
        request.end_headers()
        for _ in range(1000):
            request.wfile.write(b" ")
            request.wfile.flush()
            time.sleep(0.05)

    serve(answer)
    begin = time.monotonic()
    with pytest.raises(InternalError, match=r"did not answer within 0\.3 seconds"):
        post(timeout=0.3)
    assert time.monotonic() - begin < 2


def drip(text: bytes) -> Answer:
    """Send a text byte by byte, over and over."""

    def answer(request: BaseHTTPRequestHandler) -> None:
        with suppress(OSError):
            for byte in cycle(text):
                request.wfile.write(bytes([byte]))
                request.wfile.flush()
                time.sleep(0.02)

    return answer


@pytest.mark.parametrize(
    "text", [b"HTTP/1.1 103 Early Hints\r\n\r\n", b"HTTP/1.1 200 OK\r\n" + b"X-A: b\r\n" * 99]
)
def test_service_that_drips_what_stands_before_the_answer(serve: Serve, text: bytes) -> None:
    serve(drip(text))
    begin = time.monotonic()
    with pytest.raises(InternalError, match=r"did not answer within 0\.5 seconds"):
        post(timeout=0.5)
    assert time.monotonic() - begin < 3


def test_service_that_takes_the_document_in_drops(monkeypatch: pytest.MonkeyPatch) -> None:
    with socket.create_server(("127.0.0.1", 0)) as listener:
        monkeypatch.setenv("SEMBRA_ADDON_URL", f"http://127.0.0.1:{listener.getsockname()[1]}")

        def sip() -> None:
            connection, _ = listener.accept()
            with connection, suppress(OSError):
                while connection.recv(5000):
                    time.sleep(0.01)

        threading.Thread(target=sip, daemon=True).start()
        begin = time.monotonic()
        with pytest.raises(InternalError, match=r"did not answer within 0\.5 seconds"):
            # More than the buffers of both sides hold; writing it as JSON takes time of its own.
            post("x" * 20_000_000, timeout=0.5)
        assert time.monotonic() - begin < 5


def test_name_that_is_looked_up_for_too_long(monkeypatch: pytest.MonkeyPatch) -> None:
    release = threading.Event()
    monkeypatch.setattr("socket.getaddrinfo", lambda *_, **__: release.wait(30))
    monkeypatch.setenv("SEMBRA_ADDON_URL", "http://addons.example")
    begin = time.monotonic()
    with pytest.raises(InternalError, match=r"did not answer within 0\.2 seconds"):
        post(timeout=0.2)
    assert time.monotonic() - begin < 3
    release.set()


@pytest.mark.parametrize("timeout", [0, -1, -math.inf, math.nan])
def test_limit_that_is_none(timeout: float, serve: Serve) -> None:
    serve(answering(200, b"{}"))
    with pytest.raises(InternalError, match=r"must be above 0 seconds"):
        post(timeout=timeout)


@pytest.mark.parametrize(
    "timeout", [math.inf, pytest.param(10**400, id="1e400"), 1e300, 1e12, 3e9, 1e7]
)
def test_limit_that_is_far_away(timeout: float, serve: Serve) -> None:
    serve(answering(200, b"{}"))
    assert post(timeout=timeout) == {}


@pytest.mark.parametrize("timeout", [np.float32(5), np.int64(5), Fraction(5), Decimal(5)])
def test_limit_of_another_kind_of_number(timeout: Any, serve: Serve) -> None:
    serve(answering(200, b"{}"))
    assert post(timeout=timeout) == {}
