"""Comparing two input files of cross-sections, section by section.

Points and curves are compared by where they are, since their numbers depend on the order in which
they were made.
"""

from itertools import pairwise

from tests.toolkit.sli import SliFile, labels_of_differences
from tests.toolkit.sli_geometry import Geometry, Polyline

Differences = set[tuple[str, str]]

ORDER = "order"
NUMBERS = "numbers"
HEADINGS = "headings"
LENGTH = "number of lines"

NUMBERED = ("POINTS", "CURVES", "BOUNDARIES", "PIEZO LINES")
"""Parts of the geometry that numbers of points or curves stand in."""


def differences(sample: SliFile, generated: SliFile) -> Differences:
    """Return section, or part of the geometry, and label of each difference.

    The label says what differs: the label of a line, "order", "numbers" of points and curves in
    lines that otherwise mean the same, "headings" above these, or "number of lines".
    """
    assert list(generated.sections) == list(sample.sections)
    found = {("header", label) for label in _labels(sample.header, generated.header)}
    for name, lines in sample.sections.items():
        if name == "SOIL COLLECTION":
            found |= {(name, label) for label in _labels_of_soils(sample, generated)}
        elif name == "GEOMETRY DATA":
            found |= _geometry(Geometry.of(sample), Geometry.of(generated))
        else:
            found |= {(name, label) for label in _labels(lines, generated.sections[name])}
    return found


def _labels(expected: list[str], generated: list[str]) -> set[str]:
    shared = min(len(expected), len(generated))
    labels = labels_of_differences(expected[:shared], generated[:shared])
    return labels if len(expected) == len(generated) else labels | {LENGTH}


def _labels_of_soils(sample: SliFile, generated: SliFile) -> set[str]:
    count = [file.sections["SOIL COLLECTION"][0] for file in (sample, generated)]
    assert count[0] == count[1]
    expected, got = ({soil[0]: soil for soil in file.soils} for file in (sample, generated))
    labels = set() if list(expected) == list(got) else {ORDER}
    assert expected.keys() == got.keys()
    return labels.union(*(labels_of_differences(expected[name], got[name]) for name in expected))


def _geometry(sample: Geometry, generated: Geometry) -> Differences:
    assert list(generated.parts) == list(sample.parts)
    changed = {name for name, lines in sample.parts.items() if lines != generated.parts[name]}
    found = {(name, NUMBERS) for name in changed.intersection(NUMBERED)}
    for name in changed.difference(NUMBERED):
        assert len(sample.parts[name]) == len(generated.parts[name])
        found.add((name, "values"))
    found |= {
        (name, label)
        for name, texts in _places(sample).items()
        for label in texts ^ _places(generated)[name]
    }
    for name in ("BOUNDARIES", "PIEZO LINES"):
        assert _outlines(sample, name) == _outlines(generated, name)
        if _headings(sample.parts[name]) != _headings(generated.parts[name]):
            found.add((name, HEADINGS))
    return found


def _headings(lines: list[str]) -> list[str]:
    """Return the lines that don't consist of numbers alone."""
    return [line for line in lines if not line.replace(" ", "").isdigit()]


def _places(geometry: Geometry) -> dict[str, set[str]]:
    """Return points and curves as texts of where they are."""
    rows = geometry.parts["POINTS"][1:]
    assert all(len(row) == 53 for row in rows)
    texts = [" ".join(row.split()[1:3]) for row in rows]
    curves = {" - ".join(texts[number - 1] for number in curve) for curve in geometry.curves}
    return {"POINTS": set(texts), "CURVES": curves}


def _outlines(geometry: Geometry, name: str) -> list[Polyline]:
    chains = geometry.boundaries if name == "BOUNDARIES" else geometry.pl_lines
    return [_without_straight_points(geometry.polyline(chain)) for chain in chains]


def _without_straight_points(line: Polyline) -> Polyline:
    """Leave out points that a line goes straight through."""
    kept = [line[0]]
    for (x, y), (next_x, next_y) in pairwise(line[1:]):
        last_x, last_y = kept[-1]
        if (x - last_x) * (next_y - y) != (y - last_y) * (next_x - x):
            kept.append((x, y))
    return [*kept, line[-1]]
