"""The service's HTTP face, an ASGI application.

One path needs no framework, which would take longer to import than all that stands here to be run.
"""

import asyncio
import logging
from collections.abc import Awaitable, Callable, Collection, MutableMapping
from concurrent.futures import ThreadPoolExecutor
from http import HTTPStatus
from typing import Any

from pydantic_core import to_json

from sembra.local.service.document import RefusalError, read_document
from sembra.local.service.filling import fill
from sembra.local.service.guard import LOOPBACK, CallerGoneError, check_headers, read_body

PATH = "/filldsettlementtemplate/v1/jobs/"

SMALL = 100_000
"""Up to how many bytes a document is filled in at once, since handing it to a thread takes as long.
A larger one would hold up the others."""

log = logging.getLogger("uvicorn.error")

type Message = MutableMapping[str, Any]
type Receive = Callable[[], Awaitable[Message]]
type Send = Callable[[Message], Awaitable[None]]
type Application = Callable[[Message, Receive, Send], Awaitable[None]]


class _WrongRequestError(RefusalError):
    """The service has nothing under such a path or method."""

    def __init__(self, status: HTTPStatus, scope: Message) -> None:
        super().__init__(status, f"{status.phrase}: {scope['method']} {scope['path']}")


def make_app(names: Collection[str] = LOOPBACK) -> Application:
    """Return the service.

    Args:
        names: What its callers may call it, beside the number that they reach it by.
    """
    # Not the loop's own threads, whose end at the end of the interpreter takes one more of them.
    threads = ThreadPoolExecutor(thread_name_prefix="sembra-filling")

    async def fill_in(body: bytes) -> str:
        if len(body) <= SMALL:
            return _fill_body(body)
        return await asyncio.get_running_loop().run_in_executor(threads, _fill_body, body)

    async def app(scope: Message, receive: Receive, send: Send) -> None:
        """Fill the template with the posted document: {"input": ...} gives {"input_file": text}."""
        assert scope["type"] == "http"
        try:
            _check_target(scope)
            check_headers(scope, names)
            text = await fill_in(await read_body(receive))
        except RefusalError as refusal:
            await _answer(send, refusal.status, {"reason": str(refusal)})
        except CallerGoneError:
            return
        except Exception as error:
            # Told here: the server would tell it too, but close the connection.
            log.exception("The template can't be filled")
            reason = f"the template can't be filled ({type(error).__name__}: {error})"
            await _answer(send, HTTPStatus.INTERNAL_SERVER_ERROR, {"reason": reason})
        else:
            await _answer(send, HTTPStatus.OK, {"input_file": text})

    return app


def _check_target(scope: Message) -> None:
    if scope["path"] != PATH:
        raise _WrongRequestError(HTTPStatus.NOT_FOUND, scope)
    if scope["method"] != "POST":
        raise _WrongRequestError(HTTPStatus.METHOD_NOT_ALLOWED, scope)


def _fill_body(body: bytes) -> str:
    return fill(read_document(body))


async def _answer(send: Send, status: int, content: dict[str, str]) -> None:
    body = to_json(content)
    headers = [
        (b"content-type", b"application/json"),
        (b"content-length", str(len(body)).encode()),
    ]
    if status == HTTPStatus.METHOD_NOT_ALLOWED:
        headers.append((b"allow", b"POST"))
    await send({"type": "http.response.start", "status": status, "headers": headers})
    await send({"type": "http.response.body", "body": body})
