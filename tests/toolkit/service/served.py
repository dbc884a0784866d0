"""The service on a loopback port, in a thread of the tests."""

import logging
import socket
import threading
from collections.abc import Iterator
from contextlib import contextmanager

import uvicorn
from sembra.local.service.app import make_app

from tests.toolkit.processes import await_that


@contextmanager
def served() -> Iterator[str]:
    """Serve in the block; yield the base URL."""
    server = uvicorn.Server(
        uvicorn.Config(make_app(), http="h11", ws="none", lifespan="off", log_level=logging.WARNING)
    )
    with socket.socket(socket.AF_INET, socket.SOCK_STREAM, socket.IPPROTO_TCP) as listener:
        listener.bind(("127.0.0.1", 0))
        listener.listen()
        thread = threading.Thread(target=server.run, args=([listener],), daemon=True)
        thread.start()
        assert await_that(lambda: server.started)
        yield f"http://127.0.0.1:{listener.getsockname()[1]}"
        server.should_exit = True
        thread.join(10)
