"""What the file of a model has otherwise than the file that the model was read from."""

from collections import Counter
from collections.abc import Iterator, Mapping
from itertools import zip_longest

from sembra.local.input_file.left_out import LeftOut, Reason
from sembra.local.sli.entries import Entry, entries
from sembra.local.sli.sections import Section
from sembra.local.sli.whole_file import InputFile

_COMPARED = (
    "VERSION",
    "MODEL",
    "GEOMETRY 1D DATA",
    "WATER",
    "CALCULATION OPTIONS",
    "FILTER BAND WIDTH",
    "VERTICAL DRAIN",
    "PROBABILISTIC DATA",
    "PROBABILISTIC DEFAULTS",
    "FIT OPTIONS",
    "FIT CALCULATION",
)
"""Sections of lines that have a label, or a meaning by their place."""

_OF_BOUNDARIES = (
    "USE PROBABILISTIC DEFAULTS BOUNDARIES",
    "STDV BOUNDARIES",
    "DISTRIBUTION BOUNDARIES",
)

_OF_OPTIONS = {
    "X co-ordinate dissipation": ("CALCULATION OPTIONS", "Dissipation"),
    "X co-ordinate fit": ("MODEL", "Fit for settlement plate"),
    "Reliability X Co-ordinate": ("MODEL", "Probabilistic"),
}
"""Lines that an option asks for, in whose place a model without it writes its first vertical."""

_WITHOUT_LABEL = {
    "CALCULATION OPTIONS": "the name of the superelevation",
    "FILTER BAND WIDTH": "the band width",
}
"""What a line without a label is about."""

_OF_CROSS_SECTIONS = ("Time superelevation", "Stress distribution loads")

Key = tuple[str, int]
"""A label, and how often it stood in the section before."""


def compare(file: InputFile, written: InputFile) -> Iterator[LeftOut]:
    """Yield what a file says otherwise than that of the model, except for geometry and loads.

    Args:
        file: The file that the model was read from.
        written: The file of the model.

    Raises:
        InputFileError: A section is malformed.
    """
    yield from _header(file, written)
    yield from _titles(file, written)
    yield from _materials(file, written)
    for name in _COMPARED:
        for section in file.data.sections(name):
            for entry, other in _differences(section, written.data.section(name)):
                what = entry.label or _WITHOUT_LABEL.get(name, "a value")
                yield _left_out(name, what, entry, other, _reason(file, name, entry))
    if not file.is_1d:
        yield from _statistics_of_boundaries(file, written)
    yield from _measurements(file)
    yield from _unknown_sections(file, written)


def _header(file: InputFile, written: InputFile) -> Iterator[LeftOut]:
    for label, (line, value) in file.header.items():
        other = written.header.get(label, (0, ""))[1]
        if value != other:
            yield LeftOut("header", line, label, value, other, Reason.IDENTIFICATION)


def _titles(file: InputFile, written: InputFile) -> Iterator[LeftOut]:
    name = "RUN IDENTIFICATION"
    first = file.data.section(name).number + 1
    for number, (title, other) in enumerate(zip(file.titles, written.titles, strict=True)):
        if title != other:
            message = f"it has {len(title)} characters"
            yield LeftOut(
                name, first + number, f"title {number + 1}", title, other, Reason.REFUSED, message
            )


def _materials(file: InputFile, written: InputFile) -> Iterator[LeftOut]:
    for name, material in file.materials.items():
        for entry, other in _differences(material.section, written.materials[name].section):
            yield _left_out("SOIL", f"{entry.label} of {name}", entry, other, Reason.NO_KEY)


def _statistics_of_boundaries(file: InputFile, written: InputFile) -> Iterator[LeftOut]:
    """Return what is said of boundaries one by one; a model says the same of each."""
    geometry = file.data.section("GEOMETRY DATA")
    other = written.data.section("GEOMETRY DATA")
    for name in _OF_BOUNDARIES:
        for section in geometry.sections(name):
            _, *values = entries(section)
            *_, usual = entries(other.section(name))
            for number, entry in enumerate(values):
                if not _same(entry.value, usual.value):
                    what = f"boundary {number}"
                    yield LeftOut(name, entry.line, what, entry.value, usual.value, Reason.NO_KEY)


def _measurements(file: InputFile) -> Iterator[LeftOut]:
    """Return the fit for a settlement plate, with its measurements."""
    for section in file.data.sections("FIT"):
        if section.cursor().count("the number of items"):
            yield _whole_section(section, "the fit for a settlement plate")


def _unknown_sections(file: InputFile, written: InputFile) -> Iterator[LeftOut]:
    known = {section.name for section in written.data.outermost()}
    for section in file.data.outermost():
        if section.name not in known:
            yield _whole_section(section, "the whole section")


def _whole_section(section: Section, what: str) -> LeftOut:
    told = f"{len(section.lines)} lines"
    return LeftOut(section.name, section.number, what, told, "", Reason.NO_KEY)


def _differences(section: Section, written: Section) -> Iterator[tuple[Entry, Entry | None]]:
    """Return the lines of a section that say something else, with what is said in their place."""
    others = _keyed(written)
    for key, entry in _keyed(section).items():
        other = others.get(key)
        if other is None or not _same(entry.value, other.value):
            yield entry, other


def _keyed(section: Section) -> Mapping[Key, Entry]:
    seen: Counter[str] = Counter()
    keyed: dict[Key, Entry] = {}
    for entry in entries(section):
        keyed[entry.label, seen[entry.label]] = entry
        seen[entry.label] += 1
    return keyed


def _same(value: str, other: str) -> bool:
    """Return whether two values are the same, number by number where they are numbers."""
    return all(
        a == b or _number(a) == _number(b) is not None
        for a, b in zip_longest(value.split(), other.split(), fillvalue="")
    )


def _number(field: str) -> float | None:
    try:
        return float(field)
    except ValueError:
        return None


def _reason(file: InputFile, section: str, entry: Entry) -> Reason:
    if section == "VERTICAL DRAIN":
        return Reason.OTHER_DRAIN if file.has_drains else Reason.SWITCHED_OFF
    if option := _OF_OPTIONS.get(entry.label):
        lines = file.model if option[0] == "MODEL" else file.options
        return Reason.NO_KEY if lines.switch(option[1], absent=False) else Reason.SWITCHED_OFF
    if file.is_1d and entry.label in _OF_CROSS_SECTIONS:
        return Reason.ONE_DIMENSION
    return Reason.NO_KEY


def _left_out(
    section: str, what: str, entry: Entry, other: Entry | None, reason: Reason
) -> LeftOut:
    instead = other.told if other else ""
    return LeftOut(section, entry.line, what, entry.told, instead, reason)
