"""What may be left out of a model, by kind: in which section, about what, for which reason."""

import re
from typing import NamedTuple

from sembra.local.input_file import LeftOut, Reason

ANY = ".*"


class Kind(NamedTuple):
    """A kind of thing that a model can't hold; `what` is a pattern."""

    reason: Reason
    section: str
    what: str


def _each(reason: Reason, section: str, *whats: str) -> list[Kind]:
    return [Kind(reason, section, what) for what in whats]


KINDS = [
    *_each(Reason.IDENTIFICATION, "header", "DATE", "TIME"),
    *_each(Reason.NO_KEY, "MODEL", "Probabilistic", "Horizontal displacements"),
    *_each(
        Reason.NO_KEY, "SOIL", "SoilSecondarySwellingFactor of .*", "SoilUnloadingStressRatio of .*"
    ),
    *_each(Reason.NO_KEY, "STDV BOUNDARIES", r"boundary \d+"),
    *_each(Reason.NO_KEY, "DISTRIBUTION BOUNDARIES", r"boundary \d+"),
    *_each(Reason.NO_KEY, "WATER", "Unit Weight of Water"),
    *_each(Reason.NO_KEY, "WATER LOADS", 'the water load ".*"'),
    *_each(
        Reason.NO_KEY,
        "CALCULATION OPTIONS",
        "Precon. pressure within a layer",
        "Imaginary surface( layer)?",
        "Submerging",
        r"Iteration stop criteria submerging \[m\]",
        r"Iteration stop criteria desired profile \[m\]",
        "the name of the superelevation",
        "Dispersion conditions layer boundaries (top|bottom)",
        "Stress distribution soil",
        r"Load column width (imaginary surface|non-uniform loads|trapeziform loads) \[m\]",
        "Number of subtime steps",
        "Reference time",
        "Predict settlements omitting additional loadsteps",
    ),
    *_each(Reason.NO_KEY, "FILTER BAND WIDTH", "the band width"),
    *_each(
        Reason.NO_KEY,
        "PROBABILISTIC DATA",
        "Residual Settlement",
        "Maximum (Drawings|Iterations)",
        "Is Reliability Calculation",
    ),
    *_each(
        Reason.NO_KEY,
        "PROBABILISTIC DEFAULTS",
        r"ProbDef\w+Var",
        r"ProbDef\w+Cor",
        r"ProbDef\w+Dist",
        "ProbDefLayerStd",
    ),
    *_each(Reason.NO_KEY, "FIT OPTIONS", "Fit .*"),
    *_each(Reason.NO_KEY, "FIT CALCULATION", "Fit Vertical Number"),
    *_each(Reason.NO_KEY, "FIT", "the fit for a settlement plate"),
    *_each(
        Reason.SWITCHED_OFF, "CALCULATION OPTIONS", "X co-ordinate dissipation", "X co-ordinate fit"
    ),
    *_each(Reason.SWITCHED_OFF, "PROBABILISTIC DATA", "Reliability X Co-ordinate"),
    *_each(Reason.SWITCHED_OFF, "VERTICAL DRAIN", ANY),
    *_each(
        Reason.OTHER_DRAIN,
        "VERTICAL DRAIN",
        "Position of the drain pipe",
        "Diameter",
        "Width",
        "Begin time",
        "End time",
        "Under pressure for (strips and columns|sand wall)",
        "Tube pressure during dewatering",
        "Time, Under pressure, Water level, Tube pressure",
        "number of items",
    ),
    *_each(Reason.KIND_OF_LOAD, "OTHER LOADS", 'the (trapeziform|rectangular) load ".*"'),
    *_each(Reason.END_TIME, "NON-UNIFORM LOADS", 'the end time of the load ".*"'),
]


def kind_of(left_out: LeftOut) -> Kind | None:
    """Return the kind that something is of, if it is of one."""
    for kind in KINDS:
        if kind[:2] == (left_out.reason, left_out.section) and re.fullmatch(
            kind.what, left_out.what
        ):
            return kind
    return None
