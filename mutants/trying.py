"""Running the tests on mutants, each in a fork of this process, which has loaded what all need."""

import os
import re
import signal
import sys
import time
from collections.abc import Iterable, Iterator
from pathlib import Path
from typing import NamedTuple

import hypothesis
import pytest

from mutants import tree
from mutants.switches import VARIABLE

assert hypothesis  # loaded here, for all of them

OPTIONS = ("-x", "-q", "-p", "no:cacheprovider", "-p", "mutants.limit")
FEWER = {
    "SEMBRA_GENERATED_TEXTS": "400",
    "SEMBRA_RANDOM_MODELS": "200",
    "SEMBRA_HOSTILE_PROGRAMS": "400",
    "SEMBRA_SEED": "mutants",
}
"""Of what is generated, what a mutant needs."""

LOOK = 0.02
"""How often it is looked whether one has ended, in seconds."""


class Run(NamedTuple):
    """Tests that run."""

    number: int
    log: Path
    deadline: float


def outcomes(
    numbers: Iterable[int], tests: tuple[str, ...], limit: float, jobs: int
) -> Iterator[tuple[int, str]]:
    """Yield what becomes of each mutant, as they end; number 0 is the code without a fault."""
    waiting = iter(numbers)
    running: dict[int, Run] = {}
    while True:
        while len(running) < jobs and (number := next(waiting, None)) is not None:
            log = tree.TREE / f"tests-{number}.log"
            running[_fork(number, tests, log)] = Run(number, log, time.monotonic() + limit)
        if not running:
            return
        time.sleep(LOOK)
        for pid, run in list(running.items()):
            ended, status = os.waitpid(pid, os.WNOHANG)
            late = not ended and time.monotonic() > run.deadline
            if late:
                os.killpg(pid, signal.SIGKILL)
                os.waitpid(pid, 0)
            if ended or late:
                del running[pid]
                yield run.number, _outcome(run, None if late else os.waitstatus_to_exitcode(status))


def _fork(number: int, tests: tuple[str, ...], log: Path) -> int:
    pid = os.fork()
    if pid:
        return pid
    try:
        os.setsid()
        output = os.open(log, os.O_WRONLY | os.O_CREAT | os.O_TRUNC)
        os.dup2(os.open(os.devnull, os.O_RDONLY), 0)
        os.dup2(output, 1)
        os.dup2(output, 2)
        os.chdir(tree.PROJECT)
        os.environ.update(FEWER, PYTHONPATH=str(tree.SITE))
        if number:
            os.environ[VARIABLE] = str(number)
        sys.path.insert(0, str(tree.SITE))
        status = int(pytest.main([*OPTIONS, *tests]))
        sys.stdout.flush()
        os._exit(status)
    finally:
        os._exit(99)


def _outcome(run: Run, status: int | None) -> str:
    text = run.log.read_text(errors="replace")
    if status is None or "Timeout (" in text:
        return "killed: time limit"
    if status == 0:
        run.log.unlink()
        return "survived"
    failed = re.search(r"^(?:FAILED|ERROR) (\S+)", text, re.MULTILINE)
    run.log.unlink()
    return f"killed: {failed[1]}" if failed else f"killed: ended with status {status}"
