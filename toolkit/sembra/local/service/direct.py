"""The service within this process, called without a server.

What is sent and what is answered is the same text as over HTTP. A loopback port would cost more
than filling in the template does, and every program of the machine could reach it.
"""

import threading
from concurrent.futures import Future
from http import HTTPStatus

from sembra.local.service.answer import Answer, answer
from sembra.local.service.document import RefusalError
from sembra.local.service.guard import check_size
from sembra.local.service.target import PATH, SMALL


def post_directly(path: str, body: bytes, limit: float) -> Answer:
    """Return the service's answer.

    Args:
        path: One of the service's paths.
        body: JSON text.
        limit: Time that the answer may take, in seconds; infinity for as long as it takes. It is
            looked at for documents whose filling in takes a while.

    Raises:
        TimeoutError: The time is over.
    """
    if path.strip("/") != PATH.strip("/"):
        return Answer(HTTPStatus.NOT_FOUND, {"reason": f"Not Found: POST {path}"})
    try:
        check_size(len(body))
    except RefusalError as refusal:
        return Answer.refusing(refusal)
    if len(body) <= SMALL:
        return answer(body)
    result: Future[Answer] = Future()

    def fill_in() -> None:
        try:
            result.set_result(answer(body))
        except BaseException as error:
            result.set_exception(error)

    # Filling in can't be ended. Who waits for it can be.
    threading.Thread(target=fill_in, name="sembra-filling", daemon=True).start()
    return result.result(min(limit, threading.TIMEOUT_MAX))
