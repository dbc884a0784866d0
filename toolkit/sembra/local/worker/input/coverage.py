"""What an input file asks for and the worker doesn't calculate.

What would change the settlements is refused, all of it in one message; what only adds results is
left away, with a remark.
"""

from collections.abc import Iterator
from contextlib import contextmanager

from sembra.local.sli.labelled import Labelled
from sembra.local.sli.sections import Section
from sembra.local.worker.errors import NotCoveredError, WorkerError

_REFUSED = {
    ("MODEL", "Secondary swelling"): "the separate secondary swelling",
    ("CALCULATION OPTIONS", "Use fit factors"): "fit factors",
}
_LEFT_AWAY = {
    "Fit for settlement plate": "The fit for a settlement plate",
    "Probabilistic": "The reliability analysis",
    "Horizontal displacements": "The calculation of horizontal displacements",
}


class Coverage:
    """Collects what stands in the way of a calculation, and what is left away from it.

    Args:
        whole: the whole file.

    Raises:
        InputFileError: a section is malformed.
    """

    def __init__(self, whole: Section) -> None:
        self._gaps = [
            what
            for (section, label), what in _REFUSED.items()
            if Labelled(whole.section(section)).switch(label, absent=False)
        ]
        self._problems: list[str] = []
        model = Labelled(whole.section("MODEL"))
        self.remarks = tuple(
            f"{what} that the file asks for is left away. The settlements are the same without it."
            for label, what in _LEFT_AWAY.items()
            if model.switch(label, absent=False)
        )

    @contextmanager
    def collecting(self) -> Iterator[None]:
        """Keep what stands in the way for later, and go on behind the block."""
        try:
            yield
        except NotCoveredError as error:
            self._gaps.extend(error.gaps)
        except WorkerError as error:
            self._problems.append(str(error))

    def check(self) -> None:
        """Refuse the file if anything stands in the way.

        Raises:
            NotCoveredError: with all of it, if the worker covers none of it.
            WorkerError: with all of it, if some of it can't be calculated at all.
        """
        if self._gaps and not self._problems:
            raise NotCoveredError(*self._gaps)
        if self._problems:
            gaps = [str(NotCoveredError(*self._gaps))] if self._gaps else []
            raise WorkerError(" ".join((*gaps, *self._problems)))
