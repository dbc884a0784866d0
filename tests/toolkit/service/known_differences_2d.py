"""What the generated files of cross-sections have otherwise than the samples, and why."""

from typing import NamedTuple

from tests.toolkit.service.comparing import HEADINGS, LENGTH, NUMBERS, ORDER, Differences

DATE_AND_TIME = "the metadata give today's date and time or a dummy, never another day's"
NOT_IN_DOCUMENT = "the document of a model has no key for it"
NO_KIND_OF_MODEL = "neither kind of model offers the option"
SWITCHED_OFF = "the drains are off: the model then sends its own default drain"
OTHER_SCHEDULE = "the document of a simple schedule has a placeholder for the detailed one"
SORTED = "the document has the materials sorted by name"
OWN_NUMBERS = (
    "a model numbers points as they are made, repeats included, and curves as boundaries and "
    "pl-lines use them; the sample has them as they were drawn"
)
LOAD_ENDS = "a load has to begin and end at a point of a boundary, so the surface gets points there"
FIRST_VERTICAL = "the option is off; the document names no vertical, so the first one stands there"

TUTORIALS = ("Tutorial-1a", "Tutorial-1c", "Tutorial-6")
KOPPEJAN = ("bm1-4", "bm2-3", "bm2-5b", "bm3-13b")
WITHOUT_DRAINS = (*KOPPEJAN, "bm3-15d", "bm3-3a")
BENCHMARKS = (*WITHOUT_DRAINS, "bm4-8b")
EVERY = (*TUTORIALS, *BENCHMARKS)


class Known(NamedTuple):
    """A difference: in which section, in lines of which labels, why, and in which samples."""

    section: str
    labels: tuple[str, ...]
    reason: str
    samples: tuple[str, ...]


def _probabilistic(ending: str, stems: str) -> tuple[str, ...]:
    return tuple(f"ProbDef{stem}{ending}" for stem in stems.split())


KNOWN = (
    Known("header", ("DATE", "TIME"), DATE_AND_TIME, EVERY),
    Known("MODEL", ("Probabilistic",), NO_KIND_OF_MODEL, ("bm3-15d",)),
    Known("SOIL COLLECTION", (ORDER,), SORTED, ("Tutorial-6", "bm1-4", "bm2-3", "bm2-5b")),
    Known(
        "SOIL COLLECTION",
        ("SoilSecondarySwellingFactor", "SoilUnloadingStressRatio"),
        NOT_IN_DOCUMENT,
        (*KOPPEJAN, "bm3-3a", "bm4-8b"),
    ),
    # Geometry
    Known("POINTS", (NUMBERS,), OWN_NUMBERS, EVERY),
    Known("CURVES", (NUMBERS,), OWN_NUMBERS, EVERY),
    Known(
        "BOUNDARIES",
        (NUMBERS,),
        OWN_NUMBERS,
        (*TUTORIALS, "bm3-13b", "bm3-15d", "bm3-3a", "bm4-8b"),
    ),
    Known("PIEZO LINES", (NUMBERS,), OWN_NUMBERS, tuple(name for name in EVERY if name != "bm2-3")),
    Known("POINTS", ("20.000 0.000", "100.000 0.000"), LOAD_ENDS, ("bm3-13b",)),
    Known(
        "CURVES",
        (
            "0.000 0.000 - 120.000 0.000",
            "0.000 0.000 - 20.000 0.000",
            "20.000 0.000 - 100.000 0.000",
            "100.000 0.000 - 120.000 0.000",
        ),
        LOAD_ENDS,
        ("bm3-13b",),
    ),
    Known("BOUNDARIES", (HEADINGS,), LOAD_ENDS, ("bm3-13b",)),
    Known(
        "STDV BOUNDARIES",
        ("values",),
        NOT_IN_DOCUMENT,
        ("bm1-4", "bm2-3", "bm2-5b", "bm3-15d", "bm3-3a", "bm4-8b"),
    ),
    Known("DISTRIBUTION BOUNDARIES", ("values",), NOT_IN_DOCUMENT, ("bm2-3", "bm3-15d")),
    # Water and loads
    Known("WATER", ("Unit Weight of Water",), NOT_IN_DOCUMENT, BENCHMARKS[1:]),
    Known("WATER LOADS", ("number of items", LENGTH), NOT_IN_DOCUMENT, ("Tutorial-6",)),
    # Options
    Known(
        "CALCULATION OPTIONS",
        ("Precon. pressure within a layer",),
        NOT_IN_DOCUMENT,
        ("bm1-4", "bm2-3", "bm2-5b", "bm3-15d", "bm3-3a", "bm4-8b"),
    ),
    Known(
        "CALCULATION OPTIONS",
        ("Submerging",),
        NOT_IN_DOCUMENT,
        ("Tutorial-1a", "Tutorial-6", "bm2-5b"),
    ),
    Known(
        "CALCULATION OPTIONS",
        ("Iteration stop criteria submerging [m]", "Iteration stop criteria desired profile [m]"),
        NOT_IN_DOCUMENT,
        ("bm2-5b", "bm3-13b"),
    ),
    Known(
        "CALCULATION OPTIONS",
        ("Load column width imaginary surface [m]", "Load column width trapeziform loads [m]"),
        NOT_IN_DOCUMENT,
        ("bm2-3", "bm2-5b", "bm3-13b"),
    ),
    Known(
        "CALCULATION OPTIONS",
        ("Load column width non-uniform loads [m]",),
        NOT_IN_DOCUMENT,
        ("bm2-3", "bm2-5b", "bm3-13b", "bm4-8b"),
    ),
    Known("CALCULATION OPTIONS", ("Number of subtime steps",), NOT_IN_DOCUMENT, BENCHMARKS),
    Known("CALCULATION OPTIONS", ("Reference time",), NOT_IN_DOCUMENT, ("bm3-3a",)),
    Known("CALCULATION OPTIONS", ("Stress distribution soil",), NOT_IN_DOCUMENT, ("bm3-13b",)),
    Known(
        "CALCULATION OPTIONS",
        ("Dispersion conditions layer boundaries top",),
        NOT_IN_DOCUMENT,
        ("Tutorial-6",),
    ),
    Known(
        "CALCULATION OPTIONS",
        ("Dispersion conditions layer boundaries bottom",),
        NOT_IN_DOCUMENT,
        ("bm1-4",),
    ),
    Known(
        "CALCULATION OPTIONS",
        ("Predict settlements omitting additional loadsteps",),
        NOT_IN_DOCUMENT,
        ("Tutorial-1a", "Tutorial-1c"),
    ),
    Known(
        "CALCULATION OPTIONS",
        ("X co-ordinate dissipation", "X co-ordinate fit"),
        FIRST_VERTICAL,
        ("bm3-13b",),
    ),
    Known("FILTER BAND WIDTH", ("'0.00' became '0.05'",), NOT_IN_DOCUMENT, ("bm3-15d",)),
    # Drains
    Known(
        "VERTICAL DRAIN",
        ("Under pressure for strips and columns",),
        SWITCHED_OFF,
        (*TUTORIALS, *WITHOUT_DRAINS),
    ),
    Known(
        "VERTICAL DRAIN",
        ("Phreatic level in drain",),
        SWITCHED_OFF,
        (*TUTORIALS, "bm2-3", "bm3-13b", "bm3-15d", "bm3-3a"),
    ),
    Known(
        "VERTICAL DRAIN",
        (
            "Flow type",
            "Position of the rightmost drain",
            "Center to center distance",
            "Diameter",
            "Grid",
        ),
        SWITCHED_OFF,
        WITHOUT_DRAINS,
    ),
    Known(
        "VERTICAL DRAIN", ("Position of the leftmost drain",), SWITCHED_OFF, ("bm3-15d", "bm3-3a")
    ),
    Known(
        "VERTICAL DRAIN",
        (
            "Bottom position",
            "Position of the drain pipe",
            "Time, Under pressure, Water level, Tube pressure",
        ),
        SWITCHED_OFF,
        ("bm3-15d",),
    ),
    Known(
        "VERTICAL DRAIN",
        ("Time, Under pressure, Water level, Tube pressure",),
        OTHER_SCHEDULE,
        ("bm4-8b",),
    ),
    # Reliability and fit
    Known("PROBABILISTIC DATA", ("Reliability X Co-ordinate",), FIRST_VERTICAL, ("bm3-13b",)),
    Known(
        "PROBABILISTIC DATA",
        (
            "Residual Settlement",
            "Maximum Drawings",
            "Maximum Iterations",
            "Is Reliability Calculation",
        ),
        NOT_IN_DOCUMENT,
        ("bm3-15d",),
    ),
    Known(
        "PROBABILISTIC DEFAULTS",
        _probabilistic("Cor", "Cp Cs Cs1 Ap ASec RRCr Ca PriCompIndex SecCompRate"),
        NOT_IN_DOCUMENT,
        BENCHMARKS,
    ),
    Known(
        "PROBABILISTIC DEFAULTS",
        _probabilistic(
            "Dist",
            "PermeabilityVer RatioHorVerPermeabilityCv PriCompIndex SecCompIndex SecCompRate",
        ),
        NOT_IN_DOCUMENT,
        ("bm2-3", "bm3-15d"),
    ),
    Known(
        "PROBABILISTIC DEFAULTS",
        _probabilistic("Dist", "GamDry GamWet POP OCR Pc Cv Cp Cp1 Cs Cs1 Ap ASec RRCr CRCc Ca"),
        NOT_IN_DOCUMENT,
        ("bm2-3",),
    ),
    Known(
        "PROBABILISTIC DEFAULTS",
        _probabilistic("Var", "GamDry GamWet POP OCR Cp Cp1 Cs Cs1 Ap ASec RRCr CRCc Ca"),
        NOT_IN_DOCUMENT,
        ("bm3-15d",),
    ),
    Known(
        "PROBABILISTIC DEFAULTS",
        ("ProbDefLayerStd", "ProbDefLayerDist"),
        NOT_IN_DOCUMENT,
        ("bm2-3", "bm3-15d"),
    ),
    Known(
        "FIT OPTIONS",
        (
            "Fit Maximum Number of Iterations",
            "Fit Required Iteration Accuracy",
            "Fit Required Correlation Coefficient",
        ),
        NOT_IN_DOCUMENT,
        ("bm3-15d",),
    ),
    Known("FIT CALCULATION", ("Fit Vertical Number",), NOT_IN_DOCUMENT, ("bm3-15d",)),
    Known("FIT", ("number of items", LENGTH), NOT_IN_DOCUMENT, ("bm3-15d",)),
)


def known_differences(sample: str) -> Differences:
    """Return section and label of each difference that a sample is to have."""
    return {
        (known.section, label)
        for known in KNOWN
        if sample in known.samples
        for label in known.labels
    }
