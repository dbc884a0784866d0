"""Who may ask the service, and how much.

Served over HTTP, the service listens where every program of this machine can reach it, a browser
among them. A web page must not make it work, nor read its answers by giving its own host's name the
address of this machine (DNS rebinding).
"""

import os
from collections.abc import Awaitable, Callable, Collection, Mapping
from typing import Any
from urllib.parse import urlsplit

from sembra.local.service.document import RefusalError

LIMIT_SETTING = "SEMBRA_ADDON_LIMIT"
"""Environment setting: the largest request that the service takes, in megabytes."""

DEFAULT_LIMIT = 16.0
"""The document of a model of 100,000 curves has 5 to 8 megabytes."""

LOOPBACK = frozenset({"localhost", "127.0.0.1", "::1"})

DRAINED = 8
"""How many times the limit is taken in and thrown away, so that whoever sends reads the answer."""


class CallerGoneError(Exception):
    """Whoever sent the request doesn't wait for an answer any more."""


def check_headers(scope: Mapping[str, Any], names: Collection[str]) -> None:
    """Refuse a request that doesn't come from a program that knows the service by its name.

    Args:
        scope: What the server tells about the request.
        names: What the service may be called, beside the number that it was reached by.

    Raises:
        RefusalError: Its host, origin or content type is a foreign one.
    """
    called = _header(scope, b"host") or ""
    reached, _ = scope.get("server") or (None, None)
    host = _host(called)
    if host is None or host not in {*names, reached}:
        raise RefusalError(403, "the service doesn't have the name that it was called by (Host)")
    origin = _header(scope, b"origin")
    if origin is not None and origin != f"{scope['scheme']}://{called}":
        raise RefusalError(403, "the service doesn't answer the pages of other hosts (Origin)")
    kind = (_header(scope, b"content-type") or "").partition(";")[0].strip().lower()
    if kind != "application/json":
        raise RefusalError(415, "the document must come as application/json (Content-Type)")


async def read_body(receive: Callable[[], Awaitable[Mapping[str, Any]]]) -> bytes:
    """Return the body of a request.

    Args:
        receive: Gives the server's next message about the request.

    Raises:
        RefusalError: It is too large.
        CallerGoneError: Whoever sent it went away.
    """
    limit = body_limit()
    parts: list[bytes] = []
    size = 0
    more = True
    while more:
        message = await receive()
        if message["type"] == "http.disconnect":
            raise CallerGoneError
        more = message.get("more_body", False)
        part = message.get("body", b"")
        size += len(part)
        if size <= limit:
            parts.append(part)
        elif size <= DRAINED * limit:
            parts.clear()
        else:
            break
    check_size(size)
    return b"".join(parts)


def check_size(size: int) -> None:
    """Refuse a body that is too large.

    Args:
        size: Its size, in bytes.

    Raises:
        RefusalError: It is larger than the setting says, or the setting is no number above 0.
    """
    limit = body_limit()
    if size > limit:
        raise RefusalError(
            413,
            f"the document is larger than the {limit / 1e6:g} megabytes that the service takes "
            f"(setting {LIMIT_SETTING})",
        )


def body_limit() -> int:
    """Return the largest body that is taken, in bytes.

    Raises:
        RefusalError: The setting is no number above 0.
    """
    setting = os.environ.get(LIMIT_SETTING, "").strip() or DEFAULT_LIMIT
    try:
        limit = round(1e6 * float(setting))
    except (ValueError, OverflowError):
        limit = 0
    if limit <= 0:
        raise RefusalError(500, f"{LIMIT_SETTING} must be a number above 0 ({setting!r})")
    return limit


def _header(scope: Mapping[str, Any], name: bytes) -> str | None:
    """Return the first header of a name, which is in lower case."""
    return next((text.decode("latin-1") for key, text in scope["headers"] if key == name), None)


def _host(header: str) -> str | None:
    try:
        return urlsplit(f"//{header}").hostname
    except ValueError:
        return None
