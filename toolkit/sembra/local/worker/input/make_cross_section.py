"""The cross-section of a two-dimensional file."""

from collections.abc import Mapping

from sembra.local.sli.geometry_2d import Chain, read_geometry_2d
from sembra.local.sli.input_file_error import InputFileError
from sembra.local.sli.sections import Section
from sembra.local.worker.ground.cross_section import CrossSection, LayerBetween
from sembra.local.worker.ground.material import Material
from sembra.local.worker.ground.polyline import Polyline


def make_cross_section(whole: Section, materials: Mapping[str, Material]) -> CrossSection:
    """Return the cross-section of a two-dimensional file.

    Raises:
        InputFileError: The section is malformed, or it refers to what doesn't exist.
    """
    read = read_geometry_2d(whole)
    boundaries = _polylines("BOUNDARIES", read.boundaries)
    pl_lines = _polylines("PIEZO LINES", read.pl_lines)
    layers = []
    for layer in read.layers:
        if layer.material not in materials:
            raise InputFileError(
                "LAYERS", layer.line, f'the material "{layer.material}" is unknown'
            )
        layers.append(
            LayerBetween(
                boundaries[layer.top],
                boundaries[layer.bottom],
                materials[layer.material],
                pl_lines.get(layer.pl_top, layer.pl_top),
                pl_lines.get(layer.pl_bottom, layer.pl_bottom),
            )
        )
    return CrossSection(
        tuple(reversed(layers)), pl_lines[read.phreatic_line], tuple(pl_lines.values())
    )


def make_pl_lines(whole: Section) -> dict[int, Polyline]:
    """Return the piezometric level lines of a two-dimensional file by their numbers.

    Raises:
        InputFileError: The section is malformed, or it refers to what doesn't exist.
    """
    return _polylines("PIEZO LINES", read_geometry_2d(whole).pl_lines)


def _polylines(section: str, chains: Mapping[int, Chain]) -> dict[int, Polyline]:
    lines = {}
    for number, chain in chains.items():
        try:
            lines[number] = Polyline(chain.points)
        except ValueError as error:
            raise InputFileError(section, chain.line, str(error)) from None
    return lines
