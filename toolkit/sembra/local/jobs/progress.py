"""The progress bar of a job."""

import sys
import threading
from collections.abc import Callable, Iterator
from contextlib import contextmanager

from sembra.local.jobs.reporting import Report, ignore

_terminal = threading.Lock()
"""Held by the one bar that is shown: two would write over each other."""


@contextmanager
def show_progress(title: str) -> Iterator[Report]:
    """Show a progress bar if the standard error stream is a terminal, and nothing otherwise.

    Until a fraction is reported, the bar shows the elapsed time only. While another bar is shown,
    nothing is.

    Args:
        title: What stands in front of the bar.

    Yields:
        What takes the fraction done; it may be called from any thread.
    """
    with terminal_for_bar() as is_ours:
        if not is_ours:
            yield ignore
            return
        from rich.console import Console
        from rich.progress import (
            BarColumn,
            Progress,
            TaskProgressColumn,
            TextColumn,
            TimeElapsedColumn,
        )

        progress = Progress(
            TextColumn("{task.description}"),
            BarColumn(),
            TaskProgressColumn(),
            TimeElapsedColumn(),
            console=Console(file=sys.stderr),
        )
        with progress:
            task = progress.add_task(title, total=None)

            def report(fraction: float) -> None:
                progress.update(task, total=1.0, completed=fraction)

            yield report


Count = Callable[[int, int], None]
"""Takes how many are done, and how many of them failed."""


@contextmanager
def show_count(total: int) -> Iterator[Count]:
    """Show a progress bar of many jobs (done, failed, time left), as `show_progress` does.

    Args:
        total: How many there are.
    """
    with terminal_for_bar() as is_ours:
        if not is_ours:
            yield lambda _done, _failed: None
            return
        from rich.console import Console
        from rich.progress import (
            BarColumn,
            MofNCompleteColumn,
            Progress,
            TextColumn,
            TimeRemainingColumn,
        )

        progress = Progress(
            MofNCompleteColumn(),
            TextColumn("done, {task.fields[failed]} failed"),
            BarColumn(),
            TimeRemainingColumn(),
            TextColumn("left"),
            console=Console(file=sys.stderr),
        )
        with progress:
            task = progress.add_task("", total=total, failed=0)
            yield lambda done, failed: progress.update(task, completed=done, failed=failed)


@contextmanager
def terminal_for_bar() -> Iterator[bool]:
    """Tell whether there is a terminal to show a bar on, and keep it from others meanwhile."""
    has_terminal = sys.stderr is not None and sys.stderr.isatty()
    is_ours = has_terminal and _terminal.acquire(blocking=False)
    try:
        yield is_ours
    finally:
        if is_ours:
            _terminal.release()
