"""The section GEOMETRY 1D DATA: one column of horizontal layers.

The section holds, one value a line: the number of layers; the top level and the material's name
of each layer, from top to bottom; a whole number that the calculation doesn't need; the phreatic
level; the bottom level. What follows (probabilistic data of the layers) isn't read.
"""

from collections.abc import Mapping

from sembra.local.input_file.sections import Section
from sembra.local.worker.ground.column import Column, Layer
from sembra.local.worker.ground.material import Material


def read_column(whole: Section, materials: Mapping[str, Material]) -> Column:
    """The column of a one-dimensional file.

    Args:
        whole: the whole file.
        materials: the materials of the file by name.

    Raises:
        InputFileError: the section is malformed, a material is unknown, or the levels don't
            descend from the first layer to the bottom.
    """
    section = whole.section("GEOMETRY 1D DATA")
    cursor = section.cursor()
    tops: list[tuple[float, Material]] = []
    for number in range(1, cursor.count("the number of layers") + 1):
        top = cursor.number(f"the top level of layer {number}")
        name = cursor.name(f"the material of layer {number}")
        if name not in materials:
            raise cursor.error(f'the material "{name}" is unknown')
        if tops and top >= tops[-1][0]:
            raise cursor.error(f"the top level of layer {number} is not below that of layer above")
        tops.append((top, materials[name]))
    if not tops:
        raise cursor.error("there are no layers")
    cursor.integer("the number that follows the layers")
    phreatic_level = cursor.number("the phreatic level")
    bottom = cursor.number("the bottom level")
    if bottom >= tops[-1][0]:
        raise cursor.error("the bottom level is not below the top level of the last layer")
    bottoms = [top for top, _ in tops[1:]] + [bottom]
    layers = tuple(
        Layer(top, lower, material, phreatic_level, phreatic_level)
        for (top, material), lower in zip(tops, bottoms, strict=True)
    )
    return Column(0.0, 0.0, layers, phreatic_level)
