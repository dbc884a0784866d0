"""The template-filling service in a thread of this process, on a loopback port."""

import atexit
import logging
import os
import socket
import threading
import time

import uvicorn

from sembra.errors import InternalError
from sembra.local.service.app import make_app

START_LIMIT = 15.0
"""Time that the service may take to start, in seconds."""

WAITING = 128
"""How many connections may wait to be taken up."""

# What the server has to say about its callers doesn't go to the application's standard error,
# unless the application sets up logging.
logging.getLogger("uvicorn").addHandler(logging.NullHandler())


class BackgroundService:
    """One running service.

    Raises:
        InternalError: The service doesn't start.
    """

    def __init__(self) -> None:
        # The port is bound here and handed over open, so nobody can take it in between.
        try:
            self._socket = _listen()
        except OSError as error:
            raise InternalError(f"No loopback port for the local service: {error}") from error
        self._server = uvicorn.Server(
            uvicorn.Config(
                make_app(),
                loop="asyncio",
                http="h11",
                ws="none",
                lifespan="off",
                log_config=None,
                log_level=logging.WARNING,
                access_log=False,
                proxy_headers=False,
            )
        )
        self._thread = threading.Thread(
            target=self._server.run, args=([self._socket],), name="sembra-service", daemon=True
        )
        try:
            self._thread.start()
        except RuntimeError as error:
            self._socket.close()
            raise InternalError(f"The local service can't start: {error}") from error
        self._await_start()

    @property
    def url(self) -> str:
        """Base URL of the service."""
        return f"http://127.0.0.1:{self._socket.getsockname()[1]}"

    @property
    def is_running(self) -> bool:
        """Whether the service answers."""
        return self._thread.is_alive()

    def stop(self) -> None:
        """Stop the service and wait until it has stopped."""
        if self.is_running:
            self._server.should_exit = True
            self._thread.join(timeout=5.0)
        self._socket.close()

    def leave_to_parent(self) -> None:
        """Let go of the port in a forked child, which has a copy of it but not the thread."""
        self._socket.close()

    def _await_start(self) -> None:
        deadline = time.monotonic() + START_LIMIT
        while not self._server.started:
            if not self._thread.is_alive() or time.monotonic() > deadline:
                self.stop()
                raise InternalError("The local service did not start")
            time.sleep(0.001)


def _listen() -> socket.socket:
    """Return a socket that listens on a free loopback port.

    The server sets TCP_NODELAY on connections whose protocol is given as TCP, which
    `socket.create_server` doesn't do: the body of each answer would wait some 40 ms until its head
    has been confirmed.
    """
    listener = socket.socket(socket.AF_INET, socket.SOCK_STREAM, socket.IPPROTO_TCP)
    try:
        listener.bind(("127.0.0.1", 0))
        listener.listen(WAITING)
    except BaseException:
        listener.close()
        raise
    return listener


_lock = threading.Lock()
_service: BackgroundService | None = None


def local_service_url() -> str:
    """Return the base URL of this process's service, and start it at the first call.

    Raises:
        InternalError: The service doesn't start.
    """
    global _service
    with _lock:
        if _service is None or not _service.is_running:
            _service = BackgroundService()
        return _service.url


def stop_local_service() -> None:
    """Stop this process's service, if it runs; the next call of `local_service_url` starts anew."""
    global _service
    with _lock:
        if _service is not None:
            _service.stop()
            _service = None


def _forget_after_fork() -> None:
    global _lock, _service
    _lock = threading.Lock()
    if _service is not None:
        _service.leave_to_parent()
        _service = None


atexit.register(stop_local_service)
if hasattr(os, "register_at_fork"):
    os.register_at_fork(after_in_child=_forget_after_fork)
