"""Reading and checking the document of a model."""

from typing import Annotated, Any

from pydantic import Discriminator, Tag, ValidationError
from pydantic_core import ErrorDetails

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


def read_document(body: bytes) -> Frame:
    """Read the body of a request.

    Args:
        body: JSON text with the one key "input", whose value is the document.

    Raises:
        RefusalError: It is not what the template can be filled with; the reason names the key.
    """
    try:
        document = _Request.model_validate_json(body).input
    except ValidationError as error:
        reasons = [_reason(fault) for fault in error.errors(include_url=False)]
        unreadable = error.errors()[0]["type"] == "json_invalid"
        raise RefusalError(400 if unreadable else 422, _join(reasons)) from error
    reasons = list(check_references(document))
    if reasons:
        raise RefusalError(422, _join(reasons))
    return document


def _join(reasons: list[str]) -> str:
    shown = reasons[:MOST_REASONS]
    if len(reasons) > len(shown):
        shown.append(f"and {len(reasons) - len(shown)} more")
    return "; ".join(shown)


def _reason(fault: ErrorDetails) -> str:
    where = ""
    for step in fault["loc"]:
        if step in ("input", "1D", "2D") and where == "":
            continue
        where += f"[{step}]" if isinstance(step, int) else f"{'.' if where else ''}{step}"
    where = where or "the document"
    match fault["type"]:
        case "missing":
            return f"{where} is missing"
        case "extra_forbidden":
            return f"{where} is not known"
        case "value_error":
            return f"{where} {fault['ctx']['error']}"
        case "model_type_unknown":
            return fault["msg"]
    return f"{where}: {fault['msg'][0].lower()}{fault['msg'][1:]}"
