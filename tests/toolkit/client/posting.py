"""Servers of the tests' own in the service's place, and posts to them."""

from collections.abc import Callable
from http.server import BaseHTTPRequestHandler
from typing import Any

from sembra.core import _post_on_addon_endpoint

from tests.toolkit.conftest import PATH

Answer = Callable[[BaseHTTPRequestHandler], None]
Serve = Callable[[Answer], str]


def answering(status: int, content: bytes) -> Answer:
    def answer(request: BaseHTTPRequestHandler) -> None:
        request.send_response(status)
        request.send_header("Content-Length", str(len(content)))
        request.end_headers()
        request.wfile.write(content)

    return answer


def post(document: Any = None, timeout: float = 5.0) -> dict[str, Any]:
    return _post_on_addon_endpoint(PATH, {"input": document}, timeout=timeout)
