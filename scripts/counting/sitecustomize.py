"""Counts what a process ran that ends itself with its whole group, as the workers of the pool do.

`scripts/coverage` puts this on the path of all processes that it starts.
"""

import os
import signal

import coverage

_end_group = os.killpg


def _count_and_end_group(group: int, number: int) -> None:
    """Write down what was counted, if it is this process that ends."""
    counted = coverage.Coverage.current()
    if counted is not None and group == os.getpgrp() and number == signal.SIGKILL:
        counted.save()
    _end_group(group, number)


os.killpg = _count_and_end_group
