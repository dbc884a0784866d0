"""The process that runs calls for `sembra.local.jobs.worker_process`, which tells how."""

import io
import os
import pickle
import queue
import shutil
import signal
import sys
import tempfile
import threading
import traceback
from contextlib import suppress
from importlib import import_module
from pathlib import Path
from typing import Any, BinaryIO, NoReturn

from sembra.local.jobs.messages import Message, read_message, write_message
from sembra.local.jobs.reporting import ignore, reporter

SMALLEST_STEP = 0.005
"""Progress in smaller steps isn't told."""

FOLDER_VARIABLES = ("TMPDIR", "TEMP", "TMP")
"""Where programs look for the folder for temporary files."""

REMOVALS = 100
"""How often it is tried to remove a folder that somebody still writes to."""


class Channel:
    """The way back to the parent. Whatever a call prints goes to standard error instead."""

    def __init__(self, folder: Path) -> None:
        self._folder = folder
        self._stream = io.FileIO(os.dup(1), "wb")
        os.dup2(2, 1)
        self._lock = threading.Lock()
        self._told = 0.0

    def begin(self) -> None:
        """Tell that a call is taken up, with nothing printed and nothing done yet."""
        self._told = 0.0
        sys.stdout.flush()
        sys.stderr.flush()
        os.ftruncate(2, 0)
        os.lseek(2, 0, os.SEEK_SET)
        self.send({"taken": True})

    def send(self, line: dict[str, Any], data: bytes = b"") -> None:
        """Send one message."""
        with self._lock:
            try:
                write_message(self._stream, Message(line, data))
            except OSError:
                end(self._folder)

    def report(self, fraction: float) -> None:
        """Send the fraction done, if it has grown enough."""
        fraction = min(float(fraction), 1.0)
        if fraction >= self._told + SMALLEST_STEP:
            self._told = fraction
            self.send({"progress": fraction})


def main(setting: dict[str, Any], stream: BinaryIO) -> NoReturn:
    """Run the calls that the parent sends.

    Args:
        setting: The first line of the parent.
        stream: Where the other lines come from.
    """
    folder = Path(setting["folder"])
    channel = Channel(folder)  # held to the very end: development mode warns of one let go
    try:
        _serve(setting, stream, folder, channel)
    except SystemExit as error:
        code = error.code if isinstance(error.code, int) else int(error.code is not None)
    except BaseException:
        traceback.print_exc()
        code = 1
    # Not by way of the interpreter's end, which would wait for the thread that reads the stream.
    sys.stderr.flush()
    os._exit(code)


def _serve(setting: dict[str, Any], stream: BinaryIO, folder: Path, channel: Channel) -> NoReturn:
    calls: queue.SimpleQueue[Message] = queue.SimpleQueue()
    threading.Thread(target=_listen, args=(stream, calls, folder), daemon=True).start()
    folder.mkdir(mode=0o700)
    tempfile.tempdir = str(folder)
    _surround(setting, folder)
    for name in setting["preload"]:
        with suppress(Exception):  # a call that needs it will say so
            import_module(name)
    while True:
        call = calls.get()
        _surround(call.line, folder)
        channel.begin()
        _run(call, channel)


def end(folder: Path) -> NoReturn:
    """End this process and all that it has started, without its folder."""
    for _ in range(REMOVALS):
        if not folder.exists():
            break
        shutil.rmtree(folder, ignore_errors=True)
    if hasattr(os, "killpg") and os.getpgrp() == os.getpid():
        os.killpg(os.getpgrp(), signal.SIGKILL)
    os._exit(1)


def _run(call: Message, channel: Channel) -> None:
    token = reporter.set(channel.report if call.line["listening"] else ignore)
    try:
        function, args, kwargs = pickle.loads(call.data)
        result = pickle.dumps(function(*args, **kwargs))
    except Exception as error:
        # The last line says what went wrong; the frames above are there for who mends it.
        summary = "".join(traceback.format_exception_only(error)).strip()
        channel.send({"failure": f"{summary}\n\n{traceback.format_exc().strip()}"})
    else:
        channel.send({"result": True}, result)
    finally:
        reporter.reset(token)


def _surround(message: dict[str, Any], folder: Path) -> None:
    """Take over the surroundings of the parent, as far as they are told."""
    if "path" in message:
        sys.path[:] = message["path"]
        with suppress(OSError):  # it may be gone by now
            os.chdir(message["working_folder"])
        own = dict.fromkeys(FOLDER_VARIABLES, str(folder))
        environment = message["environment"] | own
        for name in os.environ.keys() - environment.keys():
            del os.environ[name]
        os.environ.update(environment)


def _listen(stream: BinaryIO, calls: "queue.SimpleQueue[Message]", folder: Path) -> NoReturn:
    """Take the parent's messages, and end with the parent: then the stream ends."""
    with suppress(OSError):
        while (call := read_message(stream)) is not None:
            calls.put(call)
    end(folder)
