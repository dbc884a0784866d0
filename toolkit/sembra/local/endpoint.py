"""Posting documents to the template-filling service."""

import json
import os
from collections.abc import Mapping
from typing import Any

from sembra.errors import InternalError
from sembra.local.client.address import Address, without_user
from sembra.local.client.encoding import encode
from sembra.local.client.exchange import TooSlowError, UnreachableError, post_json

URL_SETTING = "SEMBRA_ADDON_URL"
"""Environment setting: base URL of a service elsewhere. Unset or empty: a service of our own."""


def post(path: str, body: Mapping[str, Any], timeout: float) -> dict[str, Any]:
    """Post a document; see `sembra.core._post_on_addon_endpoint`."""
    if not timeout > 0:
        raise InternalError(f"The time for the service must be above 0 seconds ({timeout})")
    try:
        content = encode(body)
    except ValueError as error:
        raise InternalError(f"The document can't be sent as JSON: {error}") from error
    address = _service()
    url = address.url(path)
    try:
        status, answer = post_json(address, path, content, timeout)
    except TooSlowError as error:
        raise InternalError(
            f"The service at {url} did not answer within {timeout:g} seconds"
        ) from error
    except UnreachableError as error:
        raise InternalError(f"The service at {url} can't be reached: {error}") from error
    if 400 <= status < 500:
        raise _refusal(url, _reason(answer, status))
    if not 200 <= status < 300:
        raise InternalError(f"The service at {url} failed: {_reason(answer, status)}")
    return _decode(url, answer)


def _service() -> Address:
    url = os.environ.get(URL_SETTING, "").strip()
    if not url:
        from sembra.local.service.background import local_service_url

        url = local_service_url()
    try:
        return Address.parse(url)
    except ValueError:
        # What was wrong may quote a part of the password: it isn't told.
        raise InternalError(
            f"The setting {URL_SETTING} is not an HTTP address: {without_user(url)!r}"
        ) from None


def _refusal(url: str, reason: str) -> InternalError:
    """Return the error. The reason is a note, too, which the exception that stands for it shows."""
    error = InternalError(f"The service at {url} refused the document: {reason}")
    error.add_note(reason)
    return error


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
