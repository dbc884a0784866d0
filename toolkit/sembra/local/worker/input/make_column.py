"""The column of a one-dimensional file."""

from collections.abc import Mapping

from sembra.local.sli.geometry_1d import read_geometry_1d
from sembra.local.sli.input_file_error import InputFileError
from sembra.local.sli.sections import Section
from sembra.local.worker.ground.column import Column, Layer
from sembra.local.worker.ground.material import Material


def make_column(whole: Section, materials: Mapping[str, Material]) -> Column:
    """Return the column of a one-dimensional file.

    Args:
        whole: The whole file.
        materials: The materials of the file by name.

    Raises:
        InputFileError: The section is malformed, a material is unknown, or the levels don't
            descend from the first layer to the bottom.
    """
    read = read_geometry_1d(whole)
    for layer in read.layers:
        if layer.material not in materials:
            raise InputFileError(
                "GEOMETRY 1D DATA", layer.line, f'the material "{layer.material}" is unknown'
            )
    level = read.phreatic_level
    bottoms = [layer.top for layer in read.layers[1:]] + [read.bottom]
    layers = tuple(
        Layer(layer.top, bottom, materials[layer.material], level, level)
        for layer, bottom in zip(read.layers, bottoms, strict=True)
    )
    return Column(0.0, 0.0, layers, level)
