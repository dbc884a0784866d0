"""What the tests of posting share."""

import threading
from collections.abc import Iterator
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer
from typing import Any

import pytest

from tests.toolkit.client.posting import Answer, Serve


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
