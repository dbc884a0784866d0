"""A network whose waits all end at one point of time.

The client's own limits hold for one wait each, and an exchange has as many waits as the other side
likes: it can drip a header byte by byte, or answer "103 Early Hints" for ever. So what is handed
down as a limit here is not a duration: it is a point of `time.monotonic`, the same for all waits of
an exchange, the name look-up included.
"""

import ipaddress
import selectors
import socket
import ssl
import threading
import time
import weakref
from collections.abc import Iterable, Iterator
from concurrent.futures import Future
from contextlib import contextmanager
from typing import Any

import httpcore

LONGEST_WAIT = 1e6
"""The longest wait that sockets take, in seconds: eleven days."""

_open_streams: "weakref.WeakSet[Stream]" = weakref.WeakSet()


class Network(httpcore.NetworkBackend):
    """Connects by TCP. All limits are points of `time.monotonic`."""

    def connect_tcp(
        self,
        host: str,
        port: int,
        timeout: float | None = None,
        local_address: str | None = None,  # noqa: ARG002 (no caller binds an address)
        socket_options: Iterable[httpcore.SOCKET_OPTION] | None = None,  # noqa: ARG002
    ) -> httpcore.NetworkStream:
        """Connect to the first of the host's addresses that answers."""
        with _in_words_of(httpcore.ConnectTimeout, httpcore.ConnectError):
            failure: OSError = OSError("the host has no address")
            for family, kind, protocol, _, address in _look_up(host, port, timeout):
                try:
                    connection = socket.socket(family, kind, protocol)
                except OSError as error:
                    failure = error
                    continue
                try:
                    connection.settimeout(_left(timeout))
                    connection.connect(address)
                    # The head and the body of a request are written apart: without this the
                    # second waits until the first has been confirmed.
                    connection.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
                    return Stream(connection)
                except BaseException as error:
                    connection.close()
                    if not isinstance(error, OSError) or isinstance(error, TimeoutError):
                        raise
                    failure = error
            raise failure


class Stream(httpcore.NetworkStream):
    """A connection. All limits are points of `time.monotonic`."""

    def __init__(self, connection: socket.socket) -> None:
        self._socket = connection
        _open_streams.add(self)

    def read(self, max_bytes: int, timeout: float | None = None) -> bytes:
        """Return what has come, at most so many bytes; nothing at the end."""
        with _in_words_of(httpcore.ReadTimeout, httpcore.ReadError):
            self._socket.settimeout(_left(timeout))
            return self._socket.recv(max_bytes)

    def write(self, buffer: bytes, timeout: float | None = None) -> None:
        """Send all of the bytes."""
        rest = memoryview(buffer)
        with _in_words_of(httpcore.WriteTimeout, httpcore.WriteError):
            while rest:
                self._socket.settimeout(_left(timeout))
                rest = rest[self._socket.send(rest) :]

    def close(self) -> None:
        """Let go of the connection."""
        self._socket.close()

    def start_tls(
        self,
        ssl_context: ssl.SSLContext,
        server_hostname: str | None = None,
        timeout: float | None = None,
    ) -> httpcore.NetworkStream:
        """Return the connection, encrypted from here on."""
        with _in_words_of(httpcore.ConnectTimeout, httpcore.ConnectError):
            try:
                self._socket.settimeout(_left(timeout))
                return Stream(
                    ssl_context.wrap_socket(self._socket, server_hostname=server_hostname)
                )
            except BaseException:
                self.close()
                raise

    def get_extra_info(self, info: str) -> Any:
        """Tell what the client asks about a connection; None for what isn't known here."""
        match info:
            case "is_readable":
                return self._is_readable()
            case "ssl_object":
                return self._socket if isinstance(self._socket, ssl.SSLSocket) else None
            case "socket":
                return self._socket
        return None

    def _is_readable(self) -> bool:
        """Return whether something has come, which on an idle connection is its end."""
        if self._socket.fileno() < 0:
            return True
        with selectors.DefaultSelector() as selector:
            selector.register(self._socket, selectors.EVENT_READ)
            return bool(selector.select(0))


def close_streams() -> None:
    """Close this process's ends of all connections, for a child that a fork gave copies of them."""
    for stream in list(_open_streams):
        stream.close()


def _left(deadline: float | None) -> float | None:
    """Return the time left until a point of time, in seconds.

    Raises:
        TimeoutError: There is none.
    """
    if deadline is None:
        return None
    left = deadline - time.monotonic()
    if left <= 0:
        raise TimeoutError("the time is over")
    return min(left, LONGEST_WAIT)


def _look_up(host: str, port: int, deadline: float | None) -> list[Any]:
    """Return the addresses of a host.

    A look-up can't be given a limit and can't be ended, so that of a name runs in a thread, which
    is left to itself when the time is over.
    """
    try:
        ipaddress.ip_address(host)
    except ValueError:
        answer: Future[list[Any]] = Future()

        def look_up() -> None:
            try:
                answer.set_result(socket.getaddrinfo(host, port, type=socket.SOCK_STREAM))
            except Exception as error:
                answer.set_exception(error)

        threading.Thread(target=look_up, name="sembra-look-up", daemon=True).start()
        return answer.result(_left(deadline))
    return socket.getaddrinfo(host, port, type=socket.SOCK_STREAM)


@contextmanager
def _in_words_of(too_late: type[Exception], failed: type[Exception]) -> Iterator[None]:
    try:
        yield
    except TimeoutError as error:
        raise too_late(str(error)) from error
    except OSError as error:
        raise failed(str(error)) from error
