"""Reading and checking the document of a model."""

from collections.abc import Iterator
from itertools import islice
from typing import Annotated, Any

from pydantic import Discriminator, Tag, ValidationError
from pydantic_core import ErrorDetails, from_json

from sembra.local.places import place
from sembra.local.service.frame import Frame
from sembra.local.service.geometry_1d import Document1D
from sembra.local.service.geometry_2d import Document2D
from sembra.local.service.references import check_references
from sembra.local.service.types import Strict

MOST_REASONS = 5
"""How many of a document's faults are told at once."""


class RefusalError(Exception):
    """The document is refused.

    Args:
        status: The HTTP status to answer with.
        reason: Why, in plain words.
    """

    def __init__(self, status: int, reason: str) -> None:
        super().__init__(reason)
        self.status = status


def _dimension(document: Any) -> str | None:
    code = document.get("model_type") if isinstance(document, dict) else None
    if isinstance(code, bool) or code not in (0, 1):
        return None
    return ("1D", "2D")[int(code)]


class _Request(Strict):
    input: Annotated[
        Annotated[Document1D, Tag("1D")] | Annotated[Document2D, Tag("2D")],
        Discriminator(
            _dimension,
            custom_error_type="model_type_unknown",
            custom_error_message="model_type must be 0 (1D) or 1 (2D)",
        ),
    ]


_Request.model_rebuild(force=True)


def read_document(body: bytes) -> Frame:
    """Read the body of a request.

    Args:
        body: JSON text with the one key "input", whose value is the document.

    Raises:
        RefusalError: It is not what the template can be filled with; the reason names the material,
            load, layer or key.
    """
    try:
        request = from_json(body)
    except ValueError as error:
        raise RefusalError(400, f"invalid JSON: {error}") from error
    given = request.get("input") if isinstance(request, dict) else None
    try:
        document = _Request.model_validate(request).input
    except ValidationError as error:
        faults = error.errors(include_url=False, include_input=False)
        raise RefusalError(422, _join(_reason(fault, given) for fault in faults)) from error
    reasons = _join(check_references(document, given))
    if reasons:
        raise RefusalError(422, reasons)
    return document


def _join(reasons: Iterator[str]) -> str:
    shown = list(islice(reasons, MOST_REASONS + 1))
    if len(shown) > MOST_REASONS:
        shown[MOST_REASONS] = "and more"
    return "; ".join(shown)


def _reason(fault: ErrorDetails, document: object) -> str:
    steps = fault["loc"]
    if steps[:1] == ("input",):
        steps = steps[2 if steps[1:2] in (("1D",), ("2D",)) else 1 :]
        where = place(document, steps)
    else:
        where = place(None, steps) if steps else "the request"
    match fault["type"]:
        case "missing" | "missing_argument":
            return f"{where} is missing"
        case "extra_forbidden":
            return f"{where} is not known"
        case "too_many_keys":
            return f"{where} {fault['msg']}"
        case "value_error":
            return f"{where} {fault['ctx']['error']}"
        case "model_type_unknown":
            return fault["msg"]
    return f"{where}: {fault['msg'][0].lower()}{fault['msg'][1:]}"
