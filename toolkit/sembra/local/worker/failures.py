"""What a job of the worker can fail with, and the fixed texts of the important cases.

A message goes to the user of the module as it stands here, so it is written in plain words, and
its text doesn't change once released: callers map whole messages to exceptions of their own.
"""

from collections.abc import Iterable, Iterator, Sequence
from contextlib import contextmanager

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
        gaps: What that is, each in words that can stand behind "does not cover".
    """

    def __init__(self, *gaps: str) -> None:
        super().__init__(NOT_COVERED.format(what=listed(dict.fromkeys(gaps))))
        self.gaps = gaps


class LocalError(WorkerError):
    """A problem that many places can have by one cause, of which the worst is told.

    Args:
        cause: What makes it.
        severity: How bad it is here.
        sentence: What it is, cause and place included.
    """

    def __init__(self, cause: str, severity: float, sentence: str) -> None:
        super().__init__(sentence)
        self.cause = cause
        self.severity = severity


class LackError(WorkerError):
    """Materials that lack a value.

    Args:
        names: Their names, at least one.
        what: What they need, as it stands in a sentence.
    """

    def __init__(self, names: Sequence[str], what: str) -> None:
        super().__init__(f"{named('material', names)} {what}.")
        self.names = names
        self.what = what


class Problems:
    """What stands in the way of a calculation, gathered so that one message names all of it.

    Args:
        gaps: What isn't calculated, each in words that can stand behind "does not cover".
    """

    def __init__(self, gaps: Sequence[str] = ()) -> None:
        self._gaps = list(gaps)
        self._found: list[WorkerError] = []

    def add(self, sentence: str) -> None:
        """Keep what stands in the way, as a whole sentence."""
        self._found.append(WorkerError(sentence))

    @contextmanager
    def collecting(self) -> Iterator[None]:
        """Keep what is raised for later, and go on behind the block."""
        try:
            yield
        except NotCoveredError as error:
            self._gaps.extend(error.gaps)
        except WorkerError as error:
            self._found.append(error)

    def check(self) -> None:
        """Refuse to go on if anything stands in the way.

        Raises:
            NotCoveredError: With all of it, if the worker covers none of it.
            WorkerError: With all of it, if some of it can't be calculated at all.
        """
        if self._gaps and not self._found:
            raise NotCoveredError(*self._gaps)
        if self._found:
            gaps = [str(NotCoveredError(*self._gaps))] if self._gaps else []
            raise WorkerError(" ".join(dict.fromkeys((*gaps, *self._sentences()))))

    def _sentences(self) -> Iterator[str]:
        worst: dict[str, LocalError] = {}
        lacking: dict[str, list[str]] = {}
        for error in self._found:
            if isinstance(error, LocalError):
                known = worst.setdefault(error.cause, error)
                if error.severity > known.severity:
                    worst[error.cause] = error
            elif isinstance(error, LackError):
                lacking.setdefault(error.what, []).extend(error.names)
            else:
                yield str(error)
        for what, names in lacking.items():
            yield str(LackError(list(dict.fromkeys(names)), what))
        yield from map(str, worst.values())


def listed(names: Iterable[str]) -> str:
    """Return names as they stand in a sentence, at least one: "a, b and c"."""
    *first, last = names
    return f"{', '.join(first)} and {last}" if first else last


def named(kind: str, names: Sequence[str], verb: str = "need") -> str:
    """Return the beginning of a sentence on what one or several things do.

    Args:
        kind: What they are, in the singular.
        names: Their names, at least one.
        verb: What they do, in the plural.
    """
    several = len(names) > 1
    does = verb if several else "is" if verb == "are" else f"{verb}s"
    return f"The {kind}{'s' * several} {listed(names)} {does}"
