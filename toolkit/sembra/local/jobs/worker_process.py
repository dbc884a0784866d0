"""One worker process: a fresh interpreter that runs one call after the other.

The parent writes messages (`messages`) to the process's standard input. The first sets it up (its
module search path, its folder, what it loads in advance), each other is a call: its pickle, whether
anybody listens to its progress, and the surroundings that it is to find if they have changed. The
stream stays open: its end tells the process that the parent has gone. The process answers on its
standard output: "taken" when it takes a call up, "progress" with the fraction done, then "result"
with a pickle or "failure" with a traceback.

The process leads a group of its own, in which whatever it starts stays, and has a folder of its own
for temporary files. Whoever ends the process ends the group and removes the folder.
"""

import os
import pickle
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time
import uuid
from collections.abc import Callable, Sequence
from contextlib import suppress
from pathlib import Path
from typing import Any

from sembra.local.jobs.messages import Message, read_message, widen, write_message
from sembra.local.jobs.reporting import Report, ignore

BOOTSTRAP = (
    "import json, os, sys; calls = os.fdopen(os.dup(0), 'rb'); "
    "os.dup2(os.open(os.devnull, os.O_RDONLY), 0); setting = json.loads(calls.readline()); "
    "sys.path[:] = setting['path']; "
    "from sembra.local.jobs.child import main; main(setting, calls)"
)
"""The stream of calls goes to where no program that a call starts can read it."""

LAST_WORDS = 2000
"""How many characters of a crashed process's standard error are told."""

START_LIMIT = 120.0
"""Time that a process may take until it takes up its first call, in seconds."""

EXIT_LIMIT = 5.0
"""Time to wait for the exit of a process that has closed its stream, in seconds."""


class ProcessCrashError(RuntimeError):
    """A process ended without a result, or the call in it failed."""


class CallError(ProcessCrashError):
    """The call failed, in a process that can go on."""


class NotTakenError(Exception):
    """The process ended before it took the call up."""


class WorkerProcess:
    """A process that waits for calls.

    Args:
        preload: Names of modules that it loads in advance, as far as they are there.

    Raises:
        OSError: It can't be started.
    """

    def __init__(self, preload: Sequence[str] = ()) -> None:
        self.is_fresh = True
        self._surroundings = _surroundings()
        self._folder = Path(tempfile.gettempdir(), f"sembra-worker-{uuid.uuid4().hex}")
        self._lock = threading.Lock()
        self._is_reaped = False
        self._errors = tempfile.TemporaryFile(buffering=0)  # noqa: SIM115 (`clear` closes it)
        try:
            self._process = _start(self._errors.fileno())
        except BaseException:
            self._errors.close()
            raise
        assert self._process.stdin is not None
        assert self._process.stdout is not None
        widen(self._process.stdin.fileno())
        widen(self._process.stdout.fileno())
        self._answers = os.fdopen(self._process.stdout.fileno(), "rb", closefd=False)
        setting = {"folder": str(self._folder), "preload": list(preload), **self._surroundings}
        with suppress(OSError):  # it has ended, which the first call will find
            self._send(setting)

    @property
    def pid(self) -> int:
        """Number of the process, and of its group."""
        return self._process.pid

    def run(self, call: bytes, on_taken: Callable[[], None], on_progress: Report) -> Any:
        """Run a call and return its result.

        Args:
            call: The pickle of a function, its arguments and its keyword arguments.
            on_taken: Is called when the process takes the call up.
            on_progress: Takes the fraction done.

        Raises:
            NotTakenError: The process ended before it took the call up.
            CallError: The call failed.
            ProcessCrashError: The process ended.
        """
        line: dict[str, Any] = {"listening": on_progress is not ignore}
        surroundings = _surroundings()
        if surroundings != self._surroundings:
            line |= surroundings
            self._surroundings = surroundings
        limit = threading.Timer(START_LIMIT, self.kill)
        limit.daemon = True
        if self.is_fresh:
            limit.start()
        taken = False
        try:
            self._send(line, call)
            while (answer := read_message(self._answers)) is not None:
                match answer.line:
                    case {"taken": _}:
                        limit.cancel()
                        taken = True
                        self.is_fresh = False
                        on_taken()
                    case {"progress": fraction}:
                        on_progress(fraction)
                    case {"failure": words}:
                        raise CallError(words)
                    case _:
                        return pickle.loads(answer.data)
        except BrokenPipeError:
            pass
        finally:
            limit.cancel()
        cause = self._cause_of_death()
        if not taken and not self.is_fresh:
            raise NotTakenError(cause)
        raise ProcessCrashError(cause)

    def has_ended(self) -> bool:
        """Return whether the process has ended by itself or been ended from outside."""
        return self._exit_code() is not None

    def kill(self) -> None:
        """End the process and whatever it has started, from any thread."""
        with self._lock:
            # Until it is reaped, its number can't be another group's.
            if not self._is_reaped:
                with suppress(ProcessLookupError, PermissionError):
                    if hasattr(os, "killpg"):
                        os.killpg(self.pid, signal.SIGKILL)
                    else:
                        self._process.kill()

    def clear(self) -> None:
        """End the process with whatever it has started, and remove all that is left of it."""
        self.kill()
        with self._lock:
            self._process.wait()
            self._is_reaped = True
        self._close()
        _remove(self._folder)

    def leave_to_parent(self) -> None:
        """Let go of the process in a forked child: it is the parent's."""
        self._close()
        self._process.returncode = 0

    def _send(self, line: dict[str, Any], data: bytes = b"") -> None:
        assert self._process.stdin is not None
        write_message(self._process.stdin, Message(line, data))

    def _cause_of_death(self) -> str:
        deadline = time.monotonic() + EXIT_LIMIT
        while (code := self._exit_code()) is None and time.monotonic() < deadline:
            time.sleep(0.002)
        self._errors.seek(max(0, self._errors.seek(0, os.SEEK_END) - LAST_WORDS))
        words = self._errors.read().decode(errors="replace").strip()
        cause = "no exit code" if code is None else f"exit code {code}"
        if code is not None and code < 0:
            cause = f"signal {-code}"
        return f"the process ended with {cause}{f': {words}' if words else ''}"

    def _exit_code(self) -> int | None:
        """Return the exit code, or None while it runs, without reaping it."""
        if not hasattr(os, "waitid"):
            return self._process.poll()
        try:
            state = os.waitid(os.P_PID, self.pid, os.WEXITED | os.WNOHANG | os.WNOWAIT)
        except ChildProcessError:  # reaped by somebody else in this application
            return self._process.returncode or 0
        if state is None:
            return None
        return state.si_status if state.si_code == os.CLD_EXITED else -state.si_status

    def _close(self) -> None:
        for stream in (self._process.stdin, self._process.stdout, self._errors):
            with suppress(OSError):
                if stream is not None:
                    stream.close()


def _start(errors: int) -> "subprocess.Popen[bytes]":
    return subprocess.Popen(
        [sys.executable, "-P", "-c", BOOTSTRAP],
        bufsize=0,
        stdin=subprocess.PIPE,
        stdout=subprocess.PIPE,
        stderr=errors,
        # An interpreter can't start in a folder that is gone, as this process's own may be.
        cwd=tempfile.gettempdir(),
        # A group of its own: it can be ended whole, and Ctrl-C is for the parent to handle.
        start_new_session=True,
    )


def _surroundings() -> dict[str, Any]:
    """Return what a call finds around it as it would in this process."""
    try:
        folder = os.getcwd()  # noqa: PTH109
    except FileNotFoundError:  # removed under this process's feet
        folder = ""
    path = (entry or folder for entry in sys.path if isinstance(entry, str))
    return {
        "path": list(filter(None, path)),
        "working_folder": folder,
        "environment": dict(os.environ),
    }


def _remove(folder: Path) -> None:
    """Remove a folder, whose last writers may still be about to end."""
    deadline = time.monotonic() + EXIT_LIMIT
    while folder.exists():
        shutil.rmtree(folder, ignore_errors=True)
        if time.monotonic() > deadline:
            break
