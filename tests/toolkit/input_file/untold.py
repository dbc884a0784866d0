"""What differs between an input file and the one that its model generates, and wasn't told.

Numbers of points, curves and lines are a model's own, and so is the order of materials: geometry is
compared by where it is, and materials by their names.
"""

from collections.abc import Iterable, Iterator
from itertools import pairwise
from typing import Any

from sembra.local.input_file import LeftOut
from sembra.local.sli.geometry_2d import Geometry2D
from sembra.local.sli.sections import Line, Section
from sembra.local.sli.whole_file import InputFile

TOLERANCE = 1e-3
"""How far a line may be off where it got a point for a load [m]."""

Place = tuple[str, int]
Shape = list[tuple[float, float]]


def untold(file: InputFile, generated: InputFile, left_out: Iterable[LeftOut]) -> list[str]:
    """Return each difference that isn't told, as a text.

    Args:
        file: what was read.
        generated: what came out.
        left_out: what was told.
    """
    told = {(one.section, one.line) for one in left_out}
    sections = {section.name: section for section in generated.data.outermost()}
    found: list[str] = []
    for section in file.data.outermost():
        match section.name:
            case "GEOMETRY DATA":
                found += _geometry(file, generated, told)
            case "NON-UNIFORM LOADS":
                found += _records(
                    section.name, file.non_uniform_loads, generated.non_uniform_loads, told
                )
            case "OTHER LOADS":
                found += _records(section.name, file.other_loads, generated.other_loads, told)
            case "WATER LOADS":
                found += _records(section.name, file.water_loads, generated.water_loads, told)
            case "VERTICALS":
                found += _records(section.name, file.verticals, generated.verticals, told)
            case "RESIDUAL TIMES":
                found += _records(section.name, file.residual_times, generated.residual_times, told)
            case "SOIL COLLECTION":
                assert sorted(file.materials) == sorted(generated.materials)
                for name, material in file.materials.items():
                    other = generated.materials[name].section
                    found += _lines(material.section, other, told)
            case name:
                if (name, section.number) not in told:
                    found += _lines(section, sections[name], told)
    return found


def _lines(section: Section, generated: Section, told: set[Place]) -> Iterator[str]:
    """The lines of a section that the other doesn't have, and the other way round."""
    there = {_meaning(line) for line in generated.lines}
    said = {_meaning(line) for line in section.lines}
    for line in section.lines:
        if _meaning(line) not in there and (section.name, line.number) not in told:
            yield f"[{section.name}], line {line.number}: {line.text}"
    new = [line for line in generated.lines if _meaning(line) not in said]
    excuses = [place for place in told if place[0] == section.name]
    if len(new) > len(excuses):
        yield f"[{section.name}] has got {[line.text for line in new]}"


def _meaning(line: Line) -> tuple[float | str, ...]:
    return tuple(map(_field, line.text.replace("=", " = ").split()))


def _field(text: str) -> float | str:
    try:
        return float(text)
    except ValueError:
        return text


def _records(
    name: str, expected: Iterable[Any], got: Iterable[Any], told: set[Place]
) -> Iterator[str]:
    """Records that differ in anything but their lines; one that was told may be missing."""
    left = [_without_line(record) for record in got]
    for record in expected:
        meaning = _without_line(record)
        if meaning in left:
            left.remove(meaning)
        elif (name, record.line) in told:
            left = [other for other in left if other.get("name") != meaning.get("name", "")]
        else:
            yield f"[{name}], line {record.line}: {record}"
    for other in left:
        yield f"[{name}] has got {other}"


def _without_line(record: Any) -> dict[str, Any]:
    meaning = {name: value for name, value in vars(record).items() if name != "line"}
    if "outline" in meaning:
        meaning["outline"] = _straightened(meaning["outline"])
    return meaning


def _geometry(file: InputFile, generated: InputFile, told: set[Place]) -> Iterator[str]:
    mine, other = file.cross_section, generated.cross_section
    layers = [layer for layer in mine.layers if ("LAYERS", layer.line) not in told]
    if len(layers) != len(other.layers):
        yield f"{len(layers)} layers became {len(other.layers)}"
    for layer, new in zip(layers, other.layers, strict=False):
        for what, old_number, new_number in (
            ("top", layer.top, new.top),
            ("bottom", layer.bottom, new.bottom),
        ):
            old_line = mine.boundaries[old_number].points
            if not _alike(old_line, other.boundaries[new_number].points):
                yield f"the {what} of the layer in line {layer.line}"
        if layer.material != new.material or _heads(mine, layer) != _heads(other, new):
            yield f"material or pl-lines of the layer in line {layer.line}"
    if {_line(mine, number) for number in mine.pl_lines} != {
        _line(other, number) for number in other.pl_lines
    }:
        yield "the pl-lines"
    if _line(mine, mine.phreatic_line) != _line(other, other.phreatic_line):
        yield "the phreatic line"
    geometry, new_geometry = (one.data.section("GEOMETRY DATA") for one in (file, generated))
    for name in (
        "USE PROBABILISTIC DEFAULTS BOUNDARIES", "STDV BOUNDARIES", "DISTRIBUTION BOUNDARIES",
    ):  # fmt: skip
        section = geometry.section(name)
        values = Section(name, section.number, section.lines[1:])
        usual = new_geometry.section(name)
        yield from _lines(values, Section(name, usual.number, usual.lines[-1:]), told)


def _heads(geometry: Geometry2D, layer: Any) -> tuple[Any, Any]:
    top, bottom = (
        _line(geometry, number) if number in geometry.pl_lines else number
        for number in (layer.pl_top, layer.pl_bottom)
    )
    return top, bottom


def _line(geometry: Geometry2D, number: int) -> tuple[tuple[float, float], ...]:
    return geometry.pl_lines[number].points


def _alike(line: Iterable[tuple[float, float]], other: Iterable[tuple[float, float]]) -> bool:
    """Whether two lines run alike, whatever points they go straight through."""
    mine, its = _straightened(line), _straightened(other)
    return len(mine) == len(its) and all(
        abs(x1 - x2) <= TOLERANCE and abs(y1 - y2) <= TOLERANCE
        for (x1, y1), (x2, y2) in zip(mine, its, strict=True)
    )


def _straightened(line: Iterable[tuple[float, float]]) -> Shape:
    """Leave out points that a line goes straight through, as far as millimetres tell."""
    points = list(line)
    kept = points[:1]
    for (x, y), (x2, y2) in pairwise(points[1:]):
        x1, y1 = kept[-1]
        length = ((x2 - x1) ** 2 + (y2 - y1) ** 2) ** 0.5
        off = abs((x - x1) * (y2 - y1) - (y - y1) * (x2 - x1)) / length if length else 0.0
        if off > TOLERANCE:
            kept.append((x, y))
    return [*kept, *points[-1:]]
