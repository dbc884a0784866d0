"""How the two ends of a worker process's streams write to each other.

A message is a line of JSON, and bytes that are written behind it as they are. The line is a
mapping, whose key "size" says how many bytes there are.
"""

import json
from typing import IO, Any, NamedTuple

CAPACITY = 1 << 20
"""How many bytes a stream may hold, so that nobody waits for the other end to read in between."""


class Message(NamedTuple):
    """One message.

    Args:
        line: What the line says.
        data: The bytes behind it.
    """

    line: dict[str, Any]
    data: bytes = b""


def write_message(stream: IO[bytes], message: Message) -> None:
    """Write a message to an unbuffered stream.

    Raises:
        OSError: The other end is closed.
    """
    line = json.dumps({**message.line, "size": len(message.data)}).encode()
    rest = memoryview(b"%b\n%b" % (line, message.data))
    while rest:
        rest = rest[stream.write(rest) :]


def read_message(stream: IO[bytes]) -> Message | None:
    """Read a message from a buffered stream; None at its end, also in the middle of a message."""
    try:
        line = json.loads(stream.readline())
    except ValueError:
        return None
    data = stream.read(line["size"])
    return Message(line, data) if len(data) == line["size"] else None


def widen(pipe: int) -> None:
    """Let a pipe hold more, where the system can do so."""
    try:
        from fcntl import F_SETPIPE_SZ, fcntl

        fcntl(pipe, F_SETPIPE_SZ, CAPACITY)
    except (ImportError, OSError):
        return
