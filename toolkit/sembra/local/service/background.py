"""The template-filling service in a thread of this process, on a loopback port."""

import atexit
import os
import socket
import threading
import time

import uvicorn

from sembra.errors import InternalError
from sembra.local.service.app import app

START_LIMIT = 15.0
"""Time that the service may take to start, in seconds."""


class BackgroundService:
    """One running service.

    Raises:
        InternalError: The service doesn't start.
    """

    def __init__(self) -> None:
        # The port is bound here and handed over open, so nobody can take it in between.
        try:
            self._socket = socket.create_server(("127.0.0.1", 0))
        except OSError as error:
            raise InternalError(f"No loopback port for the local service: {error}") from error
        self._server = uvicorn.Server(
            uvicorn.Config(app, lifespan="off", log_config=None, access_log=False, ws="none")
        )
        self._thread = threading.Thread(
            target=self._server.run, args=([self._socket],), name="sembra-service", daemon=True
        )
        self._process = os.getpid()
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
        """Whether the service runs in this process: threads don't survive a fork."""
        return self._process == os.getpid() and self._thread.is_alive()

    def stop(self) -> None:
        """Stop the service and wait until it has stopped."""
        if self.is_running:
            self._server.should_exit = True
            self._thread.join(timeout=5.0)
        self._socket.close()

    def _await_start(self) -> None:
        deadline = time.monotonic() + START_LIMIT
        while not self._server.started:
            if not self._thread.is_alive() or time.monotonic() > deadline:
                self.stop()
                raise InternalError("The local service did not start")
            time.sleep(0.005)


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
    _service = None


atexit.register(stop_local_service)
if hasattr(os, "register_at_fork"):
    os.register_at_fork(after_in_child=_forget_after_fork)
