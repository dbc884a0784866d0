"""Who may ask the service, and how much.

The service listens where every program of this machine can reach it, a browser among them. A web
page must not make it work, nor read its answers by giving its own host's name the address of this
machine (DNS rebinding).
"""

import os
from collections.abc import Collection
from urllib.parse import urlsplit

from starlette.requests import Request

from sembra.local.service.document import RefusalError

LIMIT_SETTING = "SEMBRA_ADDON_LIMIT"
"""Environment setting: the largest request that the service takes, in megabytes."""

DEFAULT_LIMIT = 16.0
"""The document of a model of 100,000 curves has 5 to 8 megabytes."""

LOOPBACK = frozenset({"localhost", "127.0.0.1", "::1"})

DRAINED = 8
"""How many times the limit is taken in and thrown away, so that whoever sends reads the answer."""


def check_headers(request: Request, names: Collection[str]) -> None:
    """Refuse a request that doesn't come from a program that knows the service by its name.

    Args:
        request: The request.
        names: What the service may be called, beside the number that it was reached by.

    Raises:
        RefusalError: Its host, origin or content type is a foreign one.
    """
    headers = request.headers
    reached, _ = request.scope.get("server") or (None, None)
    host = _host(headers.get("host", ""))
    if host is None or host not in {*names, reached}:
        raise RefusalError(403, "the service doesn't have the name that it was called by (Host)")
    origin = headers.get("origin")
    if origin is not None and origin != f"{request.url.scheme}://{headers['host']}":
        raise RefusalError(403, "the service doesn't answer the pages of other hosts (Origin)")
    kind = headers.get("content-type", "").partition(";")[0].strip().lower()
    if kind != "application/json":
        raise RefusalError(415, "the document must come as application/json (Content-Type)")


async def read_body(request: Request) -> bytes:
    """Return the body of a request.

    Raises:
        RefusalError: It is too large.
        ClientDisconnect: Whoever sent it went away.
    """
    limit = body_limit()
    parts: list[bytes] = []
    size = 0
    async for part in request.stream():
        size += len(part)
        if size <= limit:
            parts.append(part)
        elif size <= DRAINED * limit:
            parts.clear()
        else:
            break
    if size > limit:
        raise RefusalError(
            413,
            f"the document is larger than the {limit / 1e6:g} megabytes that the service takes "
            f"(setting {LIMIT_SETTING})",
        )
    return b"".join(parts)


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


def _host(header: str) -> str | None:
    try:
        return urlsplit(f"//{header}").hostname
    except ValueError:
        return None
