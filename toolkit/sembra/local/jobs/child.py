"""The process that runs calls for `sembra.local.jobs.worker_process`, which tells how."""

import json
import os
import pickle
import queue
import shutil
import signal
import sys
import tempfile
import threading
import traceback
from base64 import b64decode, b64encode
from contextlib import suppress
from importlib import import_module
from pathlib import Path
from typing import Any, BinaryIO, NoReturn

from sembra.local.jobs.reporting import reporter

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
        self._stream = os.fdopen(os.dup(1), "wb")
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
        self.send("taken", True)

    def send(self, key: str, value: Any) -> None:
        """Send one message."""
        with self._lock:
            try:
                self._stream.write(json.dumps({key: value}).encode() + b"\n")
                self._stream.flush()
            except OSError:
                end(self._folder)

    def report(self, fraction: float) -> None:
        """Send the fraction done, if it has grown enough."""
        fraction = min(float(fraction), 1.0)
        if fraction >= self._told + SMALLEST_STEP:
            self._told = fraction
            self.send("progress", fraction)


def main(setting: dict[str, Any], stream: BinaryIO) -> NoReturn:
    """Run the calls that the parent sends.

    Args:
        setting: The first line of the parent.
        stream: Where the other lines come from.
    """
    try:
        _serve(setting, stream)
    except SystemExit as error:
        code = error.code if isinstance(error.code, int) else int(error.code is not None)
    except BaseException:
        traceback.print_exc()
        code = 1
    # Not by way of the interpreter's end, which would wait for the thread that reads the stream.
    sys.stderr.flush()
    os._exit(code)


def _serve(setting: dict[str, Any], stream: BinaryIO) -> NoReturn:
    folder = Path(setting["folder"])
    channel = Channel(folder)
    calls: queue.SimpleQueue[dict[str, Any]] = queue.SimpleQueue()
    threading.Thread(target=_listen, args=(stream, calls, folder), daemon=True).start()
    folder.mkdir(mode=0o700)
    tempfile.tempdir = str(folder)
    _surround(setting, folder)
    for name in setting["preload"]:
        with suppress(Exception):  # a call that needs it will say so
            import_module(name)
    while True:
        call = calls.get()
        _surround(call, folder)
        channel.begin()
        _run(call["call"], channel)


def end(folder: Path) -> NoReturn:
    """End this process and all that it has started, without its folder."""
    for _ in range(REMOVALS):
        if not folder.exists():
            break
        shutil.rmtree(folder, ignore_errors=True)
    if hasattr(os, "killpg") and os.getpgrp() == os.getpid():
        os.killpg(os.getpgrp(), signal.SIGKILL)
    os._exit(1)


def _run(call: str, channel: Channel) -> None:
    token = reporter.set(channel.report)
    try:
        function, args, kwargs = pickle.loads(b64decode(call))
        result = b64encode(pickle.dumps(function(*args, **kwargs))).decode()
    except Exception as error:
        # The last line says what went wrong; the frames above are there for who mends it.
        summary = "".join(traceback.format_exception_only(error)).strip()
        channel.send("failure", f"{summary}\n\n{traceback.format_exc().strip()}")
    else:
        channel.send("result", result)
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


def _listen(stream: BinaryIO, calls: "queue.SimpleQueue[dict[str, Any]]", folder: Path) -> NoReturn:
    """Take the parent's lines, and end with the parent: then the stream ends."""
    with suppress(OSError):
        for line in stream:
            calls.put(json.loads(line))
    end(folder)
