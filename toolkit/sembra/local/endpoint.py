"""Posting documents to the template-filling service."""

import json
import os
from collections.abc import Mapping
from typing import Any, NoReturn

from sembra.errors import InternalError
from sembra.local.client.encoding import encode
from sembra.local.jobs.engine_error import EngineError
from sembra.local.limits import seconds

URL_SETTING = "SEMBRA_ADDON_URL"
"""Environment setting: base URL of a service elsewhere. Unset or empty: that of this process."""


class LostServiceError(InternalError, EngineError):
    """The service that the setting names can't be used, whatever the document."""


def post(path: str, body: Mapping[str, Any], timeout: float) -> dict[str, Any]:
    """Post a document; see `sembra.core._post_on_addon_endpoint`."""
    try:
        return _send(path, body, timeout)
    except InternalError as error:
        # The exception that stands for this one shows its notes, and nothing else of it.
        if not getattr(error, "__notes__", None):
            error.add_note(str(error))
        raise


def _send(path: str, body: Mapping[str, Any], timeout: float) -> dict[str, Any]:
    try:
        timeout = seconds(timeout, "The time for the service")
    except ValueError as error:
        raise InternalError(str(error)) from error
    try:
        content = encode(body)
    except ValueError as error:
        raise InternalError(f"The document can't be sent as JSON: {error}") from error
    url = os.environ.get(URL_SETTING, "").strip()
    if url:
        return _post_elsewhere(url, path, content, timeout)
    return _post_here(path, content, timeout)


def _post_here(path: str, content: bytes, timeout: float) -> dict[str, Any]:
    """Post to the service of this process."""
    from sembra.local.service.direct import post_directly

    try:
        status, answer = post_directly(path, content, timeout)
    except TimeoutError as error:
        raise InternalError(f"The service did not answer within {timeout:g} seconds") from error
    if status != 200:
        _fail("The service", status, answer["reason"])
    return dict(answer)


def _post_elsewhere(base: str, path: str, content: bytes, timeout: float) -> dict[str, Any]:
    """Post to a service over HTTP."""
    # Loaded here: the service of this process needs no client.
    from sembra.local.client.address import Address
    from sembra.local.client.exchange import TooSlowError, UnreachableError, post_json

    try:
        address = Address.parse(base)
    except ValueError as error:
        raise LostServiceError(
            f"The setting {URL_SETTING} is not an HTTP address: {error}"
        ) from None
    url = address.url(path)
    try:
        status, answer = post_json(address, path, content, timeout)
    except TooSlowError as error:
        raise InternalError(
            f"The service at {url} did not answer within {timeout:g} seconds"
        ) from error
    except UnreachableError as error:
        raise LostServiceError(f"The service at {url} can't be reached: {error}") from error
    if not 200 <= status < 300:
        _fail(f"The service at {url}", status, _reason(answer, status))
    return _decode(url, answer)


def _fail(service: str, status: int, reason: str) -> NoReturn:
    """Raise the error that a status tells.

    A refusal's reason alone is its note: who sent the document knows that it was refused.
    """
    if not 400 <= status < 500:
        raise InternalError(f"{service} failed: {reason}")
    error = InternalError(f"{service} refused the document: {reason}")
    error.add_note(reason)
    raise error


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
