"""The options of a calculation, in words."""

from collections.abc import Iterator

from sembra.local.look.table import number
from sembra.local.sli.whole_file import InputFile

Fact = tuple[str, str]
"""What it is about, and what holds."""

_CALCULATION = ("NEN-Koppejan", "NEN-Bjerrum", "Isotache")
_CONSOLIDATION = ("Darcy", "Terzaghi")
_PRECONSOLIDATION = (
    "constant within a layer, not corrected",
    "constant within a layer, corrected at the start",
    "constant within a layer, corrected at every step",
    "parallel to the effective stress within a layer, not corrected",
    "parallel to the effective stress within a layer, corrected at the start",
    "parallel to the effective stress within a layer, corrected at every step",
)
_DISTRIBUTION = ("Buisman", "Boussinesq")
_HEADER = {
    "COMPANY": "Company",
    "DATE": "Date",
    "TIME": "Time",
    "FILENAME": "File",
    "CREATED BY": "Created by",
}
_DRAINED = "Dispersion conditions layer boundaries"


def options(file: InputFile) -> Iterator[Fact]:
    """Yield the options of a file.

    Raises:
        InputFileError: A section is malformed, or an option is unknown.
    """
    model, lines = file.model, file.options
    calculation = _CALCULATION[model.one_of("Model", range(len(_CALCULATION)))]
    strain = "natural" if model.switch("Strain type") else "linear"
    yield "Dimensions", "one: a column of soil" if file.is_1d else "two: a cross-section"
    yield "Soil model", f"{calculation}, with {strain} strain"
    consolidation = model.one_of("Calculation type", range(len(_CONSOLIDATION)))
    yield "Consolidation", _CONSOLIDATION[consolidation]
    yield (
        "Preconsolidation pressure",
        _PRECONSOLIDATION[
            lines.one_of("Precon. pressure within a layer", range(len(_PRECONSOLIDATION)))
        ],
    )
    yield "Water leaves at", _drainage(file)
    yield "Unit weight of water", f"{number(file.water_unit_weight)} kN/m³"
    yield "End of the calculation", f"day {number(lines.number('End of consolidation [days]'))}"
    reference = lines.number("Reference time")
    yield "Reference time of creep", f"{number(reference)} {'day' if reference == 1 else 'days'}"
    if not file.is_1d:
        yield "Stress below loads", _spreading(file)
    yield from _when_switched_on(file)
    places = ", ".join(number(vertical.x) for vertical in file.verticals)
    yield "Verticals", f"at x = {places} m" if places else "none"
    times = ", ".join(number(time.days) for time in file.residual_times)
    yield "Residual settlements", f"after days {times}" if times else "none asked for"


def identification(file: InputFile) -> Iterator[Fact]:
    """Yield who made a file, for whom and when."""
    for label, (_, value) in file.header.items():
        if value:
            yield _HEADER.get(label, label), value


def _drainage(file: InputFile) -> str:
    sides = [side for side in ("top", "bottom") if file.options.switch(f"{_DRAINED} {side}")]
    return " and ".join(sides) or "neither top nor bottom"


def _spreading(file: InputFile) -> str:
    lines = file.options
    name = _DISTRIBUTION[lines.one_of("Stress distribution soil", range(len(_DISTRIBUTION)))]
    width = number(lines.number("Load column width non-uniform loads [m]"))
    within = "and" if lines.switch("Stress distribution loads", absent=False) else "not"
    return f"by {name}, in load columns of {width} m; {within} within loads"


def _when_switched_on(file: InputFile) -> Iterator[Fact]:
    """Return what only calculations with some options have."""
    model, lines = file.model, file.options
    if lines.switch("Submerging", absent=False):
        yield "Submerging", "loads lose weight as they settle below the phreatic level"
    if lines.switch("Imaginary surface", absent=False):
        layer = lines.code("Imaginary surface layer")
        yield "Imaginary surface", f"the top of layer {layer}, counted from the lowest"
    if lines.switch("Maintain profile", absent=False):
        time = number(lines.number("Time superelevation"))
        dry = number(lines.number("Gamma dry superelevation"))
        wet = number(lines.number("Gamma wet superelevation"))
        told = f"maintained by a superelevation on day {time}, of γ {dry} dry and {wet} wet kN/m³"
        yield "Profile", told
    if lines.switch("Dissipation", absent=False):
        x = number(lines.number("X co-ordinate dissipation"))
        yield "Dissipation", f"calculated at x = {x} m"
    if model.switch("Fit for settlement plate", absent=False):
        yield "Fit for a settlement plate", "asked for"
    if model.switch("Probabilistic", absent=False):
        yield "Reliability analysis", "asked for"
    if model.switch("Horizontal displacements", absent=False):
        yield "Horizontal displacements", "asked for"
