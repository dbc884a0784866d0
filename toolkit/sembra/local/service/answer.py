"""What the service answers to a document, whichever way it has come."""

import logging
from http import HTTPStatus
from typing import NamedTuple, Self

from sembra.local.service.document import RefusalError, read_document
from sembra.local.service.filling import fill

log = logging.getLogger(__name__)
# Not on the standard error of an application, unless it sets up logging.
log.addHandler(logging.NullHandler())


class Answer(NamedTuple):
    """An answer.

    Args:
        status: The HTTP status.
        content: {"input_file": text}, or {"reason": text} where there is none.
    """

    status: int
    content: dict[str, str]

    @classmethod
    def refusing(cls, refusal: RefusalError) -> Self:
        """Return the answer that tells a refusal."""
        return cls(refusal.status, {"reason": str(refusal)})


def answer(body: bytes) -> Answer:
    """Fill the template with a posted document.

    Args:
        body: JSON text with the one key "input", whose value is the document.
    """
    try:
        return Answer(HTTPStatus.OK, {"input_file": fill(read_document(body))})
    except RefusalError as refusal:
        return Answer.refusing(refusal)
    except Exception as error:
        log.exception("The template can't be filled")
        reason = f"the template can't be filled ({type(error).__name__}: {error})"
        return Answer(HTTPStatus.INTERNAL_SERVER_ERROR, {"reason": reason})
