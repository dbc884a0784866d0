"""An executor that runs each call in a process of its own and can end it.

The processes of the standard library's executor can't be ended one by one, and they need a main
script that can be imported again. Here a fresh interpreter is started for each call, which never
looks at the main script.

The parent writes two lines to the child's standard input, the module search path as JSON and the
call as a pickle in base64, and keeps the stream open: its end tells the child that the parent has
gone. The child answers on its standard output with lines of JSON, of which each is a mapping of
one key: "progress" with the fraction done, then "result" with a pickle in base64 or "failure" with
a traceback.
"""

import json
import os
import pickle
import signal
import subprocess
import sys
import tempfile
import threading
from base64 import b64decode, b64encode
from collections.abc import Callable
from concurrent.futures import Executor, Future
from contextlib import suppress
from typing import IO, Any, NamedTuple

from sembra.local.jobs.reporting import Report, ignore

BOOTSTRAP = (
    "import sys, json; sys.path[:] = json.loads(sys.stdin.buffer.readline()); "
    "from sembra.local.jobs.child import main; main()"
)

LAST_WORDS = 2000
"""How many characters of a crashed child's standard error are told."""


class ProcessCrashError(RuntimeError):
    """A process ended without a result, or the call in it failed."""


class ProcessFuture(Future[Any]):
    """A call in a process of its own. `cancel` ends the process, running or not."""

    def __init__(self, process: subprocess.Popen[bytes]) -> None:
        super().__init__()
        self.process = process

    def cancel(self) -> bool:
        """End the process. Return whether the call had no result yet."""
        cancelled = super().cancel()
        if cancelled:
            end_process(self.process)
        return cancelled

    def running(self) -> bool:
        """Return whether the call has no result yet."""
        return not self.done()


class ProcessExecutor(Executor):
    """Starts one process per call; nothing is kept between calls.

    Args:
        on_progress: Takes the fraction done that a call reports; runs in a thread of the executor.
    """

    def __init__(self, on_progress: Report = ignore) -> None:
        self._on_progress = on_progress
        self._lock = threading.Lock()
        self._running: dict[ProcessFuture, threading.Thread] = {}
        self._is_shut_down = False

    def submit(self, fn: Callable[..., Any], /, *args: Any, **kwargs: Any) -> ProcessFuture:
        """Start a call.

        Args:
            fn: A function that can be imported by its module's name.
            args: Its arguments; they and its result must be picklable.
            kwargs: Its keyword arguments.

        Raises:
            RuntimeError: The executor was shut down.
            OSError: The process can't be started.
        """
        call = b64encode(pickle.dumps((fn, args, kwargs)))
        with self._lock:
            if self._is_shut_down:
                raise RuntimeError("cannot schedule new calls after shutdown")
            errors = tempfile.TemporaryFile()  # noqa: SIM115 (the thread closes it)
            try:
                future = ProcessFuture(_start_process(errors))
            except BaseException:
                errors.close()
                raise
            thread = threading.Thread(
                target=self._attend, args=(future, call, errors), daemon=True, name="sembra-job"
            )
            self._running[future] = thread
            thread.start()
        return future

    def shutdown(self, wait: bool = True, *, cancel_futures: bool = False) -> None:
        """Take no more calls.

        Args:
            wait: Wait until the running calls have ended.
            cancel_futures: End the running calls.
        """
        with self._lock:
            self._is_shut_down = True
            running = dict(self._running)
        for future, thread in running.items():
            if cancel_futures:
                future.cancel()
            if wait:
                thread.join()

    def _attend(self, future: ProcessFuture, call: bytes, errors: IO[bytes]) -> None:
        """Give the call to the process, listen to it, and settle the future."""
        try:
            answer = self._converse(future.process, call)
            code = _await_end(future.process)
            outcome = _read_outcome(answer, code, _last_words(errors))
        except Exception as error:
            outcome = error
        finally:
            end_process(future.process)
            for stream in (future.process.stdin, future.process.stdout, errors):
                _close(stream)
        with self._lock:
            del self._running[future]
        if not future.set_running_or_notify_cancel():
            return
        if isinstance(outcome, Exception):
            future.set_exception(outcome)
        else:
            future.set_result(outcome.value)

    def _converse(self, process: subprocess.Popen[bytes], call: bytes) -> dict[str, Any]:
        """Return the last message of the process, empty if it gave none."""
        assert process.stdin is not None
        assert process.stdout is not None
        try:
            process.stdin.write(json.dumps(_search_path()).encode() + b"\n" + call + b"\n")
            process.stdin.flush()
        except OSError:
            return {}
        for line in process.stdout:
            message: dict[str, Any] = json.loads(line)
            if "progress" not in message:
                return message
            self._on_progress(message["progress"])
        return {}


def end_process(process: subprocess.Popen[bytes]) -> None:
    """End a process, and on POSIX systems whatever it has started itself, and wait for its end."""
    if process.poll() is None:
        with suppress(ProcessLookupError):
            if hasattr(os, "killpg"):
                os.killpg(process.pid, signal.SIGKILL)
            else:
                process.kill()
    process.wait()


def _start_process(errors: IO[bytes]) -> subprocess.Popen[bytes]:
    if not sys.executable:
        raise OSError("this process doesn't know its Python interpreter (sys.executable is empty)")
    return subprocess.Popen(
        [sys.executable, "-P", "-c", BOOTSTRAP],
        stdin=subprocess.PIPE,
        stdout=subprocess.PIPE,
        stderr=errors,
        # A group of its own: it can be ended whole, and Ctrl-C is for the parent to handle.
        start_new_session=True,
    )


def _search_path() -> list[str]:
    return [entry or str(os.getcwd()) for entry in sys.path if isinstance(entry, str)]  # noqa: PTH109


def _last_words(errors: IO[bytes]) -> str:
    errors.seek(max(0, errors.seek(0, os.SEEK_END) - LAST_WORDS))
    return errors.read().decode(errors="replace").strip()


def _await_end(process: subprocess.Popen[bytes]) -> int:
    """Tell the process that nobody listens any more, and return its exit code."""
    _close(process.stdin)
    return process.wait()


def _close(stream: IO[bytes] | None) -> None:
    """Close a stream, also one whose other end has gone with something left to write."""
    with suppress(OSError):
        if stream is not None:
            stream.close()


class _Outcome(NamedTuple):
    """The value that a call returned, whatever its type."""

    value: Any


def _read_outcome(answer: dict[str, Any], code: int, words: str) -> _Outcome | Exception:
    if "result" in answer:
        return _Outcome(pickle.loads(b64decode(answer["result"])))
    if "failure" in answer:
        return ProcessCrashError(answer["failure"])
    cause = f"signal {-code}" if code < 0 else f"exit code {code}"
    return ProcessCrashError(f"the process ended with {cause}{f': {words}' if words else ''}")
