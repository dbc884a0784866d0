"""What an input file asks for and the worker doesn't calculate.

What would change the settlements is refused, all of it in one message; what only adds results is
left away, with a remark.
"""

from collections.abc import Iterator

from sembra.local.sli.labelled import Labelled
from sembra.local.sli.sections import Section

_REFUSED = {
    ("MODEL", "Secondary swelling"): "the separate secondary swelling",
    ("CALCULATION OPTIONS", "Use fit factors"): "fit factors",
}
_LEFT_AWAY = {
    "Fit for settlement plate": "The fit for a settlement plate",
    "Probabilistic": "The reliability analysis",
    "Horizontal displacements": "The calculation of horizontal displacements",
}


def find_gaps(whole: Section) -> list[str]:
    """Return what a file asks for that changes the settlements and isn't calculated.

    Raises:
        InputFileError: A section is malformed.
    """
    return [
        what
        for (section, label), what in _REFUSED.items()
        if Labelled(whole.section(section)).switch(label, absent=False)
    ]


def left_away(whole: Section) -> Iterator[str]:
    """Return a remark on each thing that a file asks for and the calculation leaves away.

    Raises:
        InputFileError: A section is malformed.
    """
    model = Labelled(whole.section("MODEL"))
    for label, what in _LEFT_AWAY.items():
        if model.switch(label, absent=False):
            yield (
                f"{what} that the file asks for is left away. The settlements are the same "
                "without it."
            )
