"""Posting a body, on connections that this process keeps."""

import time
from typing import NamedTuple

import httpcore

from sembra.local.client.address import Address
from sembra.local.client.pools import pool_for

type Headers = dict[bytes | str, bytes | str]

TIMES = ("connect", "read", "write")
"""The waits of the client that take a limit."""


class TooSlowError(Exception):
    """The time was over before the answer was there."""


class UnreachableError(Exception):
    """There was no answer; the message says why."""


class Answer(NamedTuple):
    """An HTTP status and the body that came with it."""

    status: int
    body: bytes


def post_json(address: Address, path: str, content: bytes, limit: float) -> Answer:
    """Post a JSON text and return the answer.

    Args:
        address: The service.
        path: One of its paths.
        content: The text.
        limit: Time for the whole exchange, in seconds; infinity for as long as it takes.

    Raises:
        TooSlowError: The time is over.
        UnreachableError: There is no answer.
    """
    headers: Headers = {
        "Host": address.origin.partition("://")[2],
        "Content-Type": "application/json",
    }
    if address.authorization is not None:
        headers["Authorization"] = address.authorization
    deadline = time.monotonic() + limit
    try:
        pool = pool_for(address)
        while True:
            opened = _Opened()
            try:
                return _exchange(pool, address.url(path), headers, content, deadline, opened)
            except (httpcore.RemoteProtocolError, httpcore.NetworkError):
                # The other side may have closed a kept connection at this very moment.
                if opened:
                    raise
    except httpcore.TimeoutException as error:
        raise TooSlowError from error
    except (
        httpcore.NetworkError,
        httpcore.ProtocolError,
        httpcore.ProxyError,
        httpcore.UnsupportedProtocol,
        ImportError,
        OSError,
        ValueError,
    ) as error:
        raise UnreachableError(str(error) or type(error).__name__) from error


class _Opened:
    """Notes whether an exchange opened a connection of its own; true if it did."""

    def __init__(self) -> None:
        self._any = False

    def __bool__(self) -> bool:
        return self._any

    def note(self, event: str, _details: object) -> None:
        """Take what the client tells about its steps."""
        self._any = self._any or event.startswith("connection.connect")


def _exchange(
    pool: httpcore.ConnectionPool,
    url: str,
    headers: Headers,
    content: bytes,
    deadline: float,
    opened: _Opened,
) -> Answer:
    answer = pool.request(
        "POST",
        url,
        headers=headers,
        content=content,
        extensions={"timeout": dict.fromkeys(TIMES, deadline), "trace": opened.note},
    )
    return Answer(answer.status, answer.content)
