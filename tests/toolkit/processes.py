"""Looking after processes."""

import os
import subprocess
import sys
import time
from collections.abc import Callable, Iterator
from contextlib import contextmanager
from pathlib import Path


def is_alive(pid: int) -> bool:
    try:
        state = Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()[0]
    except OSError:
        return False
    return state != "Z"


def await_that(condition: Callable[[], bool], limit: float = 30.0) -> bool:
    deadline = time.monotonic() + limit
    while not condition() and time.monotonic() < deadline:
        time.sleep(0.01)
    return condition()


def sleeping_processes(note: Path) -> list[int]:
    """Wait for the note of `sleep_long` and return the processes in it."""
    assert await_that(note.exists)
    return [int(pid) for pid in note.read_text().split()]


def folders_of_workers(folder: Path) -> list[Path]:
    """Return the folders that workers have made in a folder for temporary files."""
    return list(folder.glob("sembra-worker-*"))


@contextmanager
def application(code: str, temporary: Path) -> Iterator["subprocess.Popen[str]"]:
    """Run a program with a folder for temporary files of its own, and end it."""
    path = os.pathsep.join(filter(None, sys.path))
    program = subprocess.Popen(
        [sys.executable, "-c", code],
        env={**os.environ, "PYTHONPATH": path, "TMPDIR": str(temporary)},
        stdout=subprocess.PIPE,
        stderr=subprocess.PIPE,
        text=True,
    )
    try:
        yield program
    finally:
        program.kill()
        program.communicate()
