"""How the code of a job tells the fraction that is done, wherever it runs."""

from collections.abc import Callable
from contextvars import ContextVar

Report = Callable[[float], None]
"""Takes the fraction that is done, from 0 to 1."""


def ignore(_fraction: float) -> None:
    """Report to nobody."""


reporter: ContextVar[Report] = ContextVar("reporter", default=ignore)
"""Whom a job reports to: set by the process that runs it, if anybody listens."""
