"""The post to the service, and every way in which it can fail."""

import json
import math
import socket
import threading
import time
from collections.abc import Callable, Iterator
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer
from typing import Any

import pytest
from sembra.core import _post_on_addon_endpoint
from sembra.errors import InternalError

from tests.toolkit.conftest import PATH
from tests.toolkit.documents import document_1d

Answer = Callable[[BaseHTTPRequestHandler], None]
Serve = Callable[[Answer], str]


@pytest.fixture
def serve(monkeypatch: pytest.MonkeyPatch) -> Iterator[Serve]:
    """Put a server of the test's own in the service's place."""
    servers = []

    def start(answer: Answer) -> str:
        class Handler(BaseHTTPRequestHandler):
            def do_POST(self) -> None:
                self.rfile.read(int(self.headers["Content-Length"]))
                answer(self)

            def log_message(self, *_args: Any) -> None:
                pass

        server = ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        server.daemon_threads = True
        servers.append(server)
        threading.Thread(target=server.serve_forever, args=(0.01,), daemon=True).start()
        url = f"http://127.0.0.1:{server.server_address[1]}"
        monkeypatch.setenv("SEMBRA_ADDON_URL", url)
        return url

    yield start
    for server in servers:
        server.shutdown()
        server.server_close()


def answering(status: int, content: bytes) -> Answer:
    def answer(request: BaseHTTPRequestHandler) -> None:
        request.send_response(status)
        request.send_header("Content-Length", str(len(content)))
        request.end_headers()
        request.wfile.write(content)

    return answer


def post(document: Any = None, timeout: float = 5.0) -> dict[str, Any]:
    return _post_on_addon_endpoint(PATH, {"input": document}, timeout=timeout)


def test_answer_comes_back_decoded(serve: Serve) -> None:
    serve(answering(200, b'{"input_file": "\\u00e9", "more": [1]}'))
    assert post() == {"input_file": "é", "more": [1]}


def test_document_arrives_unchanged(serve: Serve) -> None:
    seen = []

    def answer(request: BaseHTTPRequestHandler) -> None:
        seen.append((request.path, request.headers["Content-Type"]))
        answering(200, b"{}")(request)

    serve(answer)
    post({"name": "é"})
    assert seen == [(f"/{PATH}", "application/json")]


def test_base_url_may_have_a_path_and_a_slash(
    serve: Serve, monkeypatch: pytest.MonkeyPatch
) -> None:
    seen = []

    def answer(request: BaseHTTPRequestHandler) -> None:
        seen.append(request.path)
        answering(200, b"{}")(request)

    monkeypatch.setenv("SEMBRA_ADDON_URL", serve(answer) + "/addons/")
    post()
    assert seen == [f"/addons/{PATH}"]


def test_service_that_is_down(monkeypatch: pytest.MonkeyPatch) -> None:
    with socket.create_server(("127.0.0.1", 0)) as unused:
        port = unused.getsockname()[1]
    monkeypatch.setenv("SEMBRA_ADDON_URL", f"http://127.0.0.1:{port}")
    with pytest.raises(InternalError, match=rf"http://127.0.0.1:{port}/\S+ can't be reached"):
        post()


def test_unknown_host(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv("SEMBRA_ADDON_URL", "http://nowhere.invalid:80")
    with pytest.raises(InternalError, match="can't be reached"):
        post()


@pytest.mark.parametrize("url", ["localhost:8000", "ftp://localhost", "http://", "nonsense"])
def test_setting_that_is_no_address(url: str, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv("SEMBRA_ADDON_URL", url)
    with pytest.raises(InternalError, match="SEMBRA_ADDON_URL is not an HTTP address"):
        post()


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


def test_connection_that_breaks_off(serve: Serve) -> None:
    def answer(request: BaseHTTPRequestHandler) -> None:
        request.send_response(200)
        request.send_header("Content-Length", "1000")
        request.end_headers()
        request.wfile.write(b"{")

    serve(answer)
    with pytest.raises(InternalError, match="can't be reached"):
        post()


@pytest.mark.parametrize("content", [b"", b"<html>", b'{"input_file": "x"', b"\xff\xfe{"])
def test_answer_that_is_not_json(serve: Serve, content: bytes) -> None:
    serve(answering(200, content))
    with pytest.raises(InternalError, match="is not JSON"):
        post()


@pytest.mark.parametrize("content", [b"[]", b"null", b'"text"', b"3"])
def test_answer_that_is_not_a_mapping(serve: Serve, content: bytes) -> None:
    serve(answering(200, content))
    with pytest.raises(InternalError, match="is not a mapping"):
        post()


@pytest.mark.parametrize("content", [b"", b"oops", b"[]", b'{"reason": 3}'])
def test_service_that_fails_without_a_word(serve: Serve, content: bytes) -> None:
    serve(answering(500, content))
    with pytest.raises(InternalError, match="failed: HTTP status 500"):
        post()


def test_redirection_is_not_followed(serve: Serve) -> None:
    serve(answering(307, b""))
    with pytest.raises(InternalError, match="failed: HTTP status 307"):
        post()


def test_refusal_carries_the_reason(serve: Serve) -> None:
    serve(answering(422, json.dumps({"reason": "soils is missing"}).encode()))
    with pytest.raises(InternalError, match="refused the document: soils is missing"):
        post()


def cyclic() -> Any:
    document: dict[str, Any] = {}
    document["again"] = document
    return document


def deep() -> Any:
    document: Any = []
    for _ in range(100_000):
        document = [document]
    return document


@pytest.mark.parametrize(
    "document",
    [math.nan, math.inf, -math.inf, {1, 2}, b"bytes", object(), 1j, "\ud800", cyclic(), deep()],
    ids=["nan", "inf", "-inf", "set", "bytes", "object", "complex", "surrogate", "cycle", "deep"],
)
def test_document_that_json_cannot_carry(document: Any) -> None:
    with pytest.raises(InternalError, match="can't be sent as JSON"):
        post(document)


def test_proxies_do_not_touch_loopback(
    serve: Serve, monkeypatch: pytest.MonkeyPatch, fill: Callable[[dict[str, Any]], str]
) -> None:
    for name in ("HTTP_PROXY", "http_proxy", "ALL_PROXY", "all_proxy"):
        monkeypatch.setenv(name, "http://127.0.0.1:9")
    assert fill(document_1d())
    url = serve(answering(200, b"{}"))
    assert post() == {}
    monkeypatch.setenv("SEMBRA_ADDON_URL", url.replace("127.0.0.1", "localhost"))
    assert post() == {}


def test_proxies_are_used_for_other_hosts(serve: Serve, monkeypatch: pytest.MonkeyPatch) -> None:
    proxy = serve(answering(200, b'{"from": "proxy"}'))
    monkeypatch.setenv("http_proxy", proxy)
    monkeypatch.delenv("no_proxy", raising=False)
    monkeypatch.delenv("NO_PROXY", raising=False)
    monkeypatch.setenv("SEMBRA_ADDON_URL", "http://addons.example")
    assert post() == {"from": "proxy"}
