"""Calls for a process of its own, in the place of the worker's."""

import importlib
import os
import signal
import subprocess
import sys
import time
import uuid
from pathlib import Path
from typing import Any

from sembra.local.jobs.reporting import ignore, reporter

Content = dict[str, Any]
Result = dict[str, Any]


def echo(content: Content) -> Result:
    """Return the content as a file."""
    return {"files": {".sld": content["body"]}, "error": None}


def report_steps(content: Content) -> Result:
    """Tell progress in quarters."""
    for quarter in range(5):
        reporter.get()(quarter / 4)
    return echo(content)


def is_listened_to() -> bool:
    """Return whether somebody takes the progress."""
    return reporter.get() is not ignore


def fail_with_body(content: Content) -> Result:
    """End with the body as the error message."""
    return {"files": {}, "error": content["body"]}


def answer_nonsense(_content: Content) -> Any:
    """Return what is no result."""
    return ["nonsense"]


def raise_error(_content: Content) -> Result:
    """Crash with an exception."""
    raise ValueError("out of sand")


def import_missing(_content: Content) -> Result:
    """Crash like a worker that isn't installed whole."""
    importlib.import_module("sembra.local.no_such_worker")
    return {}


def raise_timeout(_content: Content) -> Result:
    """Crash with an exception that looks like a time-out."""
    raise TimeoutError("not the job's")


def kill_itself(_content: Content) -> Result:
    """Die from a signal."""
    sys.stderr.write("last words")
    sys.stderr.flush()
    os.kill(os.getpid(), signal.SIGKILL)
    return {}


def leave(_content: Content) -> Result:
    """Leave without a result."""
    os._exit(3)


def interrupt(_content: Content) -> Result:
    """Crash with what is no error."""
    raise KeyboardInterrupt("not the user")


def print_a_lot(content: Content) -> Result:
    """Disturb the standard output, from Python and from a program."""
    sys.stdout.write("{}\n" * 50_000)
    sys.stdout.flush()
    subprocess.run([sys.executable, "-c", "print('{}')"], check=True)
    return echo(content)


def return_unpicklable(_content: Content) -> Any:
    """Return what can't be sent back."""
    return lambda: None


def sleep_long(content: Content) -> Result:
    """Note the own process and a child's in the file that the body names, then sleep."""
    child = subprocess.Popen([sys.executable, "-c", "import time; time.sleep(60)"])
    path = Path(content["body"])
    path.with_suffix(".part").write_text(f"{os.getpid()} {child.pid}")
    path.with_suffix(".part").rename(path)
    time.sleep(60)
    return echo(content)


def await_file(content: Content) -> Result:
    """Wait until the file that the body names is there."""
    while not Path(content["body"]).exists():
        time.sleep(0.01)
    return echo(content)


def note_start_and_await_file(content: Content) -> Result:
    """Add a line to the file that the body names, with who runs this, and wait for another file."""
    path = Path(content["body"])
    with path.open("a") as note:
        note.write(f"{os.getppid()}\n")
    return await_file({"body": str(path.with_suffix(".go"))})


def count_side_by_side(content: Content) -> Result:
    """Return how many of these calls were seen to run at once, by files in a folder.

    The body tells how many to wait for, and the folder. After that others have a moment to be seen.
    """
    expected, _, folder = content["body"].partition(" ")
    own = Path(folder) / str(uuid.uuid4())
    own.touch()
    most = 0
    deadline = time.monotonic() + 60
    while most < int(expected) and time.monotonic() < deadline:
        most = max(most, sum(1 for _ in Path(folder).iterdir()))
        time.sleep(0.01)
    time.sleep(0.3)
    most = max(most, sum(1 for _ in Path(folder).iterdir()))
    own.unlink()
    return {"files": {".sld": str(most)}, "error": None}


def kill_the_parent(_content: Content) -> Result:
    """Kill the process that this worker belongs to."""
    os.kill(os.getppid(), signal.SIGKILL)
    time.sleep(60)
    return {}


def kill_the_parent_once(content: Content) -> Result:
    """Kill the process that this worker belongs to, unless the body's file is there."""
    try:
        Path(content["body"]).touch(exist_ok=False)
    except FileExistsError:
        return echo(content)
    return kill_the_parent(content)
