"""Values that pass through an application's hands, and the way to the toolkit's services."""

from collections.abc import Mapping
from typing import Any

from sembra.local.color import Color
from sembra.local.file import File

__all__ = ["Color", "File"]


def _post_on_addon_endpoint(
    path: str, body: Mapping[str, Any], timeout: float = 60.0
) -> dict[str, Any]:
    """Post a document to a service and return its decoded answer.

    Args:
        path: Path of the endpoint, relative to the service, such as
            "filldsettlementtemplate/v1/jobs/".
        body: The document: a mapping of what JSON can carry.
        timeout: Time that the service may take for its whole answer, in seconds.

    Returns:
        The answer, a mapping of text keys.

    Raises:
        InternalError: The document can't be sent, the service can't be reached or is too slow,
            its answer makes no sense, or it refuses the document. The message says which.
    """
    # The client is loaded at the first call: importing this module stays cheap.
    from sembra.local.endpoint import post

    return post(path, body, timeout)
