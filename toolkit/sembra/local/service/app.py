"""The service's HTTP face, an ASGI application.

One path needs no framework, which would take longer to import than all that stands here to be run.
"""

import asyncio
from collections.abc import Awaitable, Callable, Collection, MutableMapping
from concurrent.futures import ThreadPoolExecutor
from http import HTTPStatus
from typing import Any

from pydantic_core import to_json

from sembra.local.service.answer import Answer, answer
from sembra.local.service.document import RefusalError
from sembra.local.service.guard import LOOPBACK, CallerGoneError, check_headers, read_body
from sembra.local.service.target import PATH, SMALL

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

    async def fill_in(body: bytes) -> Answer:
        if len(body) <= SMALL:
            return answer(body)
        return await asyncio.get_running_loop().run_in_executor(threads, answer, body)

    async def app(scope: Message, receive: Receive, send: Send) -> None:
        """Fill the template with the posted document: {"input": ...} gives {"input_file": text}."""
        assert scope["type"] == "http"
        try:
            _check_target(scope)
            check_headers(scope, names)
            await _send(send, await fill_in(await read_body(receive)))
        except RefusalError as refusal:
            await _send(send, Answer.refusing(refusal))
        except CallerGoneError:
            return

    return app


def _check_target(scope: Message) -> None:
    if scope["path"] != PATH:
        raise _WrongRequestError(HTTPStatus.NOT_FOUND, scope)
    if scope["method"] != "POST":
        raise _WrongRequestError(HTTPStatus.METHOD_NOT_ALLOWED, scope)


async def _send(send: Send, told: Answer) -> None:
    body = to_json(told.content)
    headers = [
        (b"content-type", b"application/json"),
        (b"content-length", str(len(body)).encode()),
    ]
    if told.status == HTTPStatus.METHOD_NOT_ALLOWED:
        headers.append((b"allow", b"POST"))
    await send({"type": "http.response.start", "status": told.status, "headers": headers})
    await send({"type": "http.response.body", "body": body})
