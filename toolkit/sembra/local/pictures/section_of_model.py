"""The cross-section of a model, read from the document that it turns into."""

from collections.abc import Mapping, Sequence
from typing import Any

from sembra.external.dsettlement import DrainGrid, DrainType, Model2D

from sembra.local.pictures.column import uniform_loads
from sembra.local.pictures.cross_section import CrossSection, DrainBand, Embankment, Layer, Line

Document = Mapping[str, Any]

KINDS_OF_DRAINS = {
    DrainType.STRIP.value: "Strip drains",
    DrainType.COLUMN.value: "Column drains",
    DrainType.SAND_WALL.value: "Sand walls",
}
GRIDS = {DrainGrid.TRIANGULAR.value: " triangular", DrainGrid.RECTANGULAR.value: " rectangular"}


def section_of(model: Model2D, datum: str, pl_line_names: Sequence[str]) -> CrossSection:
    """Return what stands in the picture of a model."""
    document = model._serialize()
    if not document["layers"]:
        raise ValueError("the model has no layer to draw")
    lines = [_line(document, chain) for chain in document["boundaries"]]
    pl_lines = [_line(document, chain) for chain in document["pl_lines"]]
    phreatic = document["phreatic_line"]
    return CrossSection(
        layers=[_layer(model, layer, lines) for layer in document["layers"]],
        phreatic_line=pl_lines[phreatic - 1] if phreatic else (),
        pl_lines=_named(pl_lines, phreatic, pl_line_names),
        verticals=[vertical.x for vertical in model.verticals],
        loads=[_embankment(load) for load in document["non_uniform_loads"]],
        drains=_drains(document),
        datum=datum,
        uniform_loads=uniform_loads(document["other_loads"]),
    )


def _line(document: Document, chain: Sequence[int]) -> Line:
    """Return the points of a boundary or a pl-line, which is given by the numbers of its curves."""
    curves = [document["curves"][number - 1] for number in chain]
    numbers = [curves[0][0], *(end for _, end in curves)]
    return [tuple(document["points"][number - 1][:2]) for number in numbers]


def _layer(model: Model2D, layer: Document, lines: Sequence[Line]) -> Layer:
    soil = model.materials[layer["material"]]
    return Layer(
        lines[layer["boundary_top"]],
        lines[layer["boundary_bottom"]],
        layer["material"],
        soil.color,
        (soil.gam_dry, soil.gam_wet),
    )


def _named(lines: Sequence[Line], phreatic: int, names: Sequence[str]) -> dict[str, Line]:
    others = [(number, line) for number, line in enumerate(lines, 1) if number != phreatic]
    return {
        f"Pl-line {number}" + (f", {names[place]}" if place < len(names) else ""): line
        for place, (number, line) in enumerate(others)
    }


def _embankment(load: Document) -> Embankment:
    return Embankment(
        load["name"],
        load["points"],
        load["time"],
        load["end_time"] if load["temporary"] else None,
        (load["gamma_dry"], load["gamma_wet"]),
    )


def _drains(document: Document) -> DrainBand | None:
    if not document["has_vertical_drains"]:
        return None
    drain = document["vertical_drain"]
    grid = "" if drain["type"] == DrainType.SAND_WALL.value else GRIDS.get(drain["grid"], "")
    return DrainBand(
        f"{KINDS_OF_DRAINS[drain['type']]}, {drain['center_to_center']:g} m{grid}",
        drain["range_from"],
        drain["range_to"],
        drain["bottom_position"],
        drain["center_to_center"],
    )
