"""The ground of a file, put into a model."""

from collections.abc import Mapping
from typing import TYPE_CHECKING

from sembra.external.dsettlement import Model2D

from sembra.errors import ModelError
from sembra.local.input_file.left_out import LeftOut, Reason
from sembra.local.input_file.points_of_loads import Line
from sembra.local.sli.geometry_2d import INTERPOLATED, NO_PL_LINE, Geometry2D, LayerBetween

if TYPE_CHECKING:
    from sembra.external.dsettlement import PlLine, PorePressure


def create_layers(
    model: Model2D, geometry: Geometry2D, boundaries: Mapping[int, Line]
) -> list[LeftOut]:
    """Put pl-lines and layers of a file into a model, and return what it doesn't take.

    Args:
        model: The model, with its bottom.
        geometry: The geometry of the file.
        boundaries: The points of each boundary that a layer lies below, by its number.

    Raises:
        ModelError: A line doesn't run from one limit to the other, or a layer doesn't lie on the
            one before it.
    """
    pressures = _create_pl_lines(model, geometry)
    left_out = []
    below = geometry.layers[0].bottom
    for layer in geometry.layers:
        if boundaries[layer.bottom] != boundaries[below]:
            raise ModelError(
                f"the layer of {layer.material} in line {layer.line} does not lie on the one "
                "before it"
            )
        if boundaries[layer.top] == boundaries[layer.bottom]:
            left_out.append(_without_thickness(layer))
            continue
        model.create_layer(
            [model.create_point(x, y) for x, y in boundaries[layer.top]],
            layer.material,
            pressures[layer.pl_top],
            pressures[layer.pl_bottom],
        )
        below = layer.top
    return [*left_out, *_unused(geometry)]


def _create_pl_lines(model: Model2D, geometry: Geometry2D) -> "dict[int, PorePressure]":
    phreatic = geometry.pl_lines[geometry.phreatic_line].points
    made: dict[Line, PlLine] = {}
    for line in geometry.pl_lines.values():
        # Of lines that are equal a model has one, which is the phreatic line if any of them is.
        if line.points not in made:
            points = [model.create_point(x, y) for x, y in line.points]
            made[line.points] = model.create_pl_line(points, is_phreatic=line.points == phreatic)
    pressures: dict[int, PorePressure] = {NO_PL_LINE: 0, INTERPOLATED: 99}
    pressures |= {number: made[line.points] for number, line in geometry.pl_lines.items()}
    return pressures


def _without_thickness(layer: LayerBetween) -> LeftOut:
    return LeftOut(
        "LAYERS", layer.line, f"the layer of {layer.material}", "", "", Reason.REFUSED,
        "its top is its bottom",
    )  # fmt: skip


def _unused(geometry: Geometry2D) -> list[LeftOut]:
    """Return the boundaries that no layer has."""
    used = {number for layer in geometry.layers for number in (layer.top, layer.bottom)}
    return [
        LeftOut("BOUNDARIES", chain.line, f"boundary {number}", "", "", Reason.UNUSED)
        for number, chain in geometry.boundaries.items()
        if number not in used
    ]
