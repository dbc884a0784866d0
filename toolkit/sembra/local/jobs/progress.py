"""The progress bar of a job."""

import sys
from collections.abc import Iterator
from contextlib import contextmanager

from sembra.local.jobs.reporting import Report, ignore


@contextmanager
def show_progress(title: str) -> Iterator[Report]:
    """Show a progress bar if the standard error stream is a terminal, and nothing otherwise.

    Until a fraction is reported, the bar shows the elapsed time only.

    Args:
        title: What stands in front of the bar.

    Yields:
        What takes the fraction done; it may be called from any thread.
    """
    if sys.stderr is None or not sys.stderr.isatty():
        yield ignore
        return
    from rich.console import Console
    from rich.progress import BarColumn, Progress, TaskProgressColumn, TextColumn, TimeElapsedColumn

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
