"""The service's HTTP face."""

from collections.abc import Collection
from typing import Any

from starlette.applications import Starlette
from starlette.concurrency import run_in_threadpool
from starlette.exceptions import HTTPException
from starlette.requests import ClientDisconnect, Request
from starlette.responses import JSONResponse, Response
from starlette.routing import Route

from sembra.local.service.document import RefusalError, read_document
from sembra.local.service.filling import fill
from sembra.local.service.guard import LOOPBACK, check_headers, read_body

PATH = "/filldsettlementtemplate/v1/jobs/"


def make_app(names: Collection[str] = LOOPBACK) -> Starlette:
    """Return the service as an ASGI application.

    Args:
        names: What its callers may call it, beside the number that they reach it by.
    """

    async def create_job(request: Request) -> Response:
        """Fill the template with the posted document: {"input": ...} gives {"input_file": text}."""
        try:
            check_headers(request, names)
            text = await run_in_threadpool(_fill_body, await read_body(request))
        except RefusalError as refusal:
            return _reason(refusal.status, str(refusal))
        except ClientDisconnect:
            return Response(status_code=400)  # which nobody gets
        return JSONResponse({"input_file": text})

    return Starlette(
        routes=[Route(PATH, create_job, methods=["POST"])],
        exception_handlers={HTTPException: _http_error, Exception: _failure},
    )


def _fill_body(body: bytes) -> str:
    return fill(read_document(body))


async def _http_error(request: Request, error: Exception) -> Response:
    assert isinstance(error, HTTPException)
    return _reason(error.status_code, f"{error.detail}: {request.method} {request.url.path}")


async def _failure(_request: Request, error: Exception) -> Response:
    return _reason(500, f"the template can't be filled ({type(error).__name__}: {error})")


def _reason(status: int, reason: str) -> Response:
    content: dict[str, Any] = {"reason": reason}
    return JSONResponse(content, status_code=status)


app = make_app()
