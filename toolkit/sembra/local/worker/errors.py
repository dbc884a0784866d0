"""What a job of the worker can fail with, and the fixed texts of the important cases.

A message goes to the user of the module as it stands here, so it is written in plain words, and
its text doesn't change once released: callers map whole messages to exceptions of their own.
"""

from collections.abc import Iterable

UNSUPPORTED_JOB = 'The worker runs version 1 of "dsettlement" only.'
INVALID_BODY = "The body of the job is not the base64 text of an input file."
INTERNAL_ERROR = "The worker failed by an error of its own: {error}"
OUT_OF_RANGE = "The input file holds numbers that are too large or too small to calculate with."
NOT_COVERED = "The worker does not cover {what}."


class WorkerError(Exception):
    """A job that can't be done; its text is what the user of the job reads."""


class NotCoveredError(WorkerError):
    """An input file that asks for what the worker doesn't calculate.

    Args:
        gaps: what that is, each in words that can stand behind "does not cover".
    """

    def __init__(self, *gaps: str) -> None:
        *first, last = dict.fromkeys(gaps)
        listed = f"{', '.join(first)} and {last}" if first else last
        super().__init__(NOT_COVERED.format(what=listed))
        self.gaps = gaps


def named(kind: str, names: Iterable[str]) -> str:
    """Return the beginning of a sentence on what one or several things need.

    Args:
        kind: what they are, in the singular.
        names: their names, at least one.
    """
    *first, last = names
    if first:
        return f"The {kind}s {', '.join(first)} and {last} need"
    return f"The {kind} {last} needs"
