"""The section GEOMETRY 1D DATA: one column of horizontal layers.

The section holds, one value a line: the number of layers; the top level and the material's name
of each layer, from top to bottom; a whole number whose meaning isn't known; the phreatic level; the
bottom level. What follows (probabilistic data of the layers) isn't read.
"""

from dataclasses import dataclass

from sembra.local.sli.sections import Section


@dataclass(frozen=True)
class LevelLayer:
    """A layer of a column.

    Args:
        line: Line of the file where its material stands.
        top: Level of its top in metres.
        material: Name of the material.
    """

    line: int
    top: float
    material: str


@dataclass(frozen=True)
class Geometry1D:
    """A column.

    Args:
        layers: From top to bottom, at least one.
        phreatic_level: In metres.
        bottom: Level of the bottom in metres, below the top of the last layer.
    """

    layers: tuple[LevelLayer, ...]
    phreatic_level: float
    bottom: float


def read_geometry_1d(whole: Section) -> Geometry1D:
    """Return the column of a one-dimensional file.

    Raises:
        InputFileError: The section is malformed, or the levels don't descend from the first layer
            to the bottom.
    """
    cursor = whole.section("GEOMETRY 1D DATA").cursor()
    layers: list[LevelLayer] = []
    for number in range(1, cursor.count("the number of layers") + 1):
        top = cursor.number(f"the top level of layer {number}")
        if layers and top >= layers[-1].top:
            raise cursor.error(f"the top level of layer {number} is not below that of layer above")
        name = cursor.name(f"the material of layer {number}")
        layers.append(LevelLayer(cursor.line_number, top, name))
    if not layers:
        raise cursor.error("there are no layers")
    cursor.integer("the number that follows the layers")
    phreatic_level = cursor.number("the phreatic level")
    bottom = cursor.number("the bottom level")
    if bottom >= layers[-1].top:
        raise cursor.error("the bottom level is not below the top level of the last layer")
    return Geometry1D(tuple(layers), phreatic_level, bottom)
