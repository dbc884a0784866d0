"""Connections to a service that are kept."""

import os
import socket
import threading
from contextlib import suppress
from typing import Any

import pytest
from sembra.local.client import deadline, pools

from tests.toolkit.client.posting import post


class KeepingServer:
    """Counts connections and requests; closes each connection after so many answers."""

    def __init__(self, answers: int) -> None:
        self.answers = answers
        self.connections = 0
        self.requests = 0
        self._listener = socket.create_server(("127.0.0.1", 0))
        self.url = f"http://127.0.0.1:{self._listener.getsockname()[1]}"
        threading.Thread(target=self._serve, daemon=True).start()

    def _serve(self) -> None:
        with suppress(OSError):
            while True:
                connection, _ = self._listener.accept()
                self.connections += 1
                with connection, connection.makefile("rb") as stream:
                    for _ in range(self.answers):
                        if not self._take(stream):
                            break
                        connection.sendall(b"HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}")
                    else:
                        # Only the next request shows that nobody listens here any more.
                        connection.recv(1)

    def _take(self, stream: Any) -> bool:
        length = 0
        while line := stream.readline().strip():
            name, _, value = line.partition(b":")
            length = int(value) if name.lower() == b"content-length" else length
        self.requests += bool(stream.read(length))
        return bool(length)

    def close(self) -> None:
        self._listener.close()


def test_connection_is_kept(monkeypatch: pytest.MonkeyPatch) -> None:
    server = KeepingServer(answers=10)
    monkeypatch.setenv("SEMBRA_ADDON_URL", server.url)
    for _ in range(5):
        assert post() == {}
    assert (server.connections, server.requests) == (1, 5)
    server.close()


def test_kept_connection_that_the_service_closes_meanwhile(monkeypatch: pytest.MonkeyPatch) -> None:
    server = KeepingServer(answers=2)
    monkeypatch.setenv("SEMBRA_ADDON_URL", server.url)
    for _ in range(5):
        assert post() == {}
    assert (server.connections, server.requests) == (3, 5)
    server.close()


@pytest.mark.skipif(not hasattr(os, "fork"), reason="no fork on this system")
@pytest.mark.filterwarnings("ignore:This process .* is multi-threaded:DeprecationWarning")
def test_forked_child_leaves_the_connections_of_its_parent_alone(
    monkeypatch: pytest.MonkeyPatch,
) -> None:
    server = KeepingServer(answers=10)
    monkeypatch.setenv("SEMBRA_ADDON_URL", server.url)
    post()
    # As a call does that is under way in another thread: the pool alone would let go of them.
    held = list(deadline._open_streams)
    assert held
    child = os.fork()
    if child == 0:
        clean = not pools._pools and all(stream._socket.fileno() < 0 for stream in held)
        os._exit(0 if clean else 1)
    assert os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]) == 0
    post()
    assert (server.connections, server.requests) == (1, 2)
    server.close()
