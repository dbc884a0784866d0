"""Posting documents to the template-filling service over HTTP."""

import ipaddress
import json
import os
import time
from collections.abc import Mapping
from typing import Any
from urllib.parse import urlsplit

import httpx

from sembra.errors import InternalError

URL_SETTING = "SEMBRA_ADDON_URL"
"""Environment setting: base URL of a service elsewhere. Unset or empty: a service of our own."""


def post(path: str, body: Mapping[str, Any], timeout: float) -> dict[str, Any]:
    """Post a document; see `sembra.core._post_on_addon_endpoint`."""
    content = _encode(body)
    url = f"{_service_url().rstrip('/')}/{path.lstrip('/')}"
    status, answer = _exchange(url, content, timeout)
    if 400 <= status < 500:
        raise InternalError(f"The service at {url} refused the document: {_reason(answer, status)}")
    if not 200 <= status < 300:
        raise InternalError(f"The service at {url} failed: {_reason(answer, status)}")
    return _decode(url, answer)


def _encode(body: Mapping[str, Any]) -> bytes:
    try:
        return json.dumps(body, allow_nan=False, ensure_ascii=False).encode()
    except (TypeError, ValueError, RecursionError) as error:
        raise InternalError(f"The document can't be sent as JSON: {error}") from error


def _service_url() -> str:
    url = os.environ.get(URL_SETTING, "").strip()
    if not url:
        from sembra.local.service.background import local_service_url

        return local_service_url()
    if urlsplit(url).scheme not in ("http", "https") or not urlsplit(url).hostname:
        raise InternalError(f"The setting {URL_SETTING} is not an HTTP address: {url!r}")
    return url


def _exchange(url: str, content: bytes, timeout: float) -> tuple[int, bytes]:
    """Return the status and the body of the answer, within the time for the whole exchange."""
    deadline = time.monotonic() + timeout
    too_slow = f"The service at {url} did not answer within {timeout:g} seconds"
    try:
        with (
            # Loopback never goes through a proxy, whatever the environment says.
            httpx.Client(trust_env=not _is_loopback(url), timeout=timeout) as client,
            client.stream(
                "POST", url, content=content, headers={"Content-Type": "application/json"}
            ) as response,
        ):
            chunks = []
            for chunk in response.iter_bytes():
                chunks.append(chunk)
                if time.monotonic() > deadline:
                    raise InternalError(too_slow)
            return response.status_code, b"".join(chunks)
    except httpx.TimeoutException as error:
        raise InternalError(too_slow) from error
    except (httpx.HTTPError, httpx.InvalidURL, OSError) as error:
        raise InternalError(f"The service at {url} can't be reached: {error}") from error


def _is_loopback(url: str) -> bool:
    host = urlsplit(url).hostname or ""
    try:
        return ipaddress.ip_address(host).is_loopback
    except ValueError:
        return host == "localhost"


def _reason(answer: bytes, status: int) -> str:
    """Return the service's own words, as far as it gave any."""
    try:
        reason = json.loads(answer)["reason"]
    except (ValueError, TypeError, KeyError, RecursionError):
        reason = None
    return reason if isinstance(reason, str) else f"HTTP status {status}"


def _decode(url: str, answer: bytes) -> dict[str, Any]:
    try:
        decoded = json.loads(answer)
    except (ValueError, RecursionError) as error:
        raise InternalError(f"The answer of the service at {url} is not JSON: {error}") from error
    if not isinstance(decoded, dict):
        kind = type(decoded).__name__
        raise InternalError(f"The answer of the service at {url} is not a mapping but {kind}")
    return decoded
