"""What the two ends of a worker process's streams write to each other."""

import io
import os
import threading
from pathlib import Path

from sembra.local.jobs.messages import CAPACITY, Message, read_message, widen, write_message

MESSAGES = [Message({"taken": True}), Message({"é": "\udcff"}, b"\n{\x00\xff"), Message({}, b"x")]


def written(messages: list[Message]) -> bytes:
    stream = io.BytesIO()
    for message in messages:
        write_message(stream, message)
    return stream.getvalue()


def test_what_is_written_is_read() -> None:
    stream = io.BytesIO(written(MESSAGES))
    for message in MESSAGES:
        read = read_message(stream)
        assert read is not None
        assert read.data == message.data
        assert message.line.items() <= read.line.items()
    assert read_message(stream) is None


def test_stream_that_ends_in_a_message() -> None:
    whole = written(MESSAGES[1:2])
    for length in range(len(whole)):
        assert read_message(io.BytesIO(whole[:length])) is None


def test_more_than_a_pipe_holds() -> None:
    message = Message({}, os.urandom(3 * CAPACITY))
    ours, theirs = os.pipe()
    with io.FileIO(theirs, "wb") as stream, open(ours, "rb") as end:
        writer = threading.Thread(target=write_message, args=(stream, message))
        writer.start()
        read = read_message(end)
        writer.join()
    assert read is not None
    assert read.data == message.data


def test_what_is_no_pipe_stays_as_it_is(tmp_path: Path) -> None:
    with (tmp_path / "file").open("wb") as file:
        widen(file.fileno())
        file.write(b"x")
