"""Telling a story on the terminal: numbered steps, what came out of each, and tables."""

from collections.abc import Generator
from contextlib import contextmanager
from time import perf_counter

from rich.console import Console
from rich.table import Table
from rich.text import Text

WIDTH_OF_PLAIN_LINES = 100


class Terminal:
    """Writes to standard output: coloured on a terminal, plain lines elsewhere."""

    def __init__(self) -> None:
        self._console = Console(highlight=False)
        if not self._console.is_terminal:
            self._console = Console(highlight=False, width=WIDTH_OF_PLAIN_LINES, color_system=None)
        self._step = 0

    def title(self, text: str) -> None:
        """Begin a story."""
        self._step = 0
        self._console.print()
        self._console.print(Text(text, style="bold underline"))

    @contextmanager
    def step(self, text: str) -> Generator[None]:
        """Announce a step before it is taken, and tell how long it took if that is noticeable."""
        self._step += 1
        self._console.print()
        self._console.print(Text(f"{self._step}. {text}", style="bold cyan"))
        start = perf_counter()
        yield
        duration = perf_counter() - start
        if duration >= 0.1:
            self.line(f"({duration:.1f} s)", style="dim")

    def line(self, text: str, style: str = "") -> None:
        """Write one line of a step."""
        self._console.print(Text(f"   {text}", style=style), soft_wrap=True)

    def table(self, table: Table) -> None:
        """Write a table."""
        self._console.print(table)
