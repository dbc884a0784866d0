"""Checks that what a document refers to by name or number is there."""

from collections.abc import Iterator

from sembra.local.service.frame import Frame
from sembra.local.service.geometry_1d import Document1D
from sembra.local.service.geometry_2d import INTERPOLATE, NO_PL_LINE, Document2D


def check_references(document: Frame) -> Iterator[str]:
    """Yield a reason for each reference that leads nowhere."""
    if isinstance(document, Document1D):
        yield from _check_1d(document)
    elif isinstance(document, Document2D):
        yield from _check_2d(document)


def _check_1d(document: Document1D) -> Iterator[str]:
    names = document.material_names
    for index, layer in enumerate(document.geometry.layers):
        if layer.material not in names:
            yield _no_material(f"geometry.layers[{index}]", layer.material)


def _check_2d(document: Document2D) -> Iterator[str]:
    for index, curve in enumerate(document.curves):
        for number in curve:
            if not 1 <= number <= len(document.points):
                yield f"curves[{index}]: there is no point {number}"
    for key, chains in (("boundaries", document.boundaries), ("pl_lines", document.pl_lines)):
        for index, chain in enumerate(chains):
            for number in chain:
                if not 1 <= number <= len(document.curves):
                    yield f"{key}[{index}]: there is no curve {number}"
    yield from _check_layers(document)
    if not 1 <= document.phreatic_line <= len(document.pl_lines):
        yield f"phreatic_line: there is no pl-line {document.phreatic_line}"


def _check_layers(document: Document2D) -> Iterator[str]:
    names = document.material_names
    for index, layer in enumerate(document.layers):
        where = f"layers[{index}]"
        if layer.material not in names:
            yield _no_material(where, layer.material)
        for number in (layer.boundary_top, layer.boundary_bottom):
            if not 0 <= number < len(document.boundaries):
                yield f"{where}: there is no boundary {number}"
        for number in (layer.pl_top, layer.pl_bottom):
            if number not in (NO_PL_LINE, INTERPOLATE) and not (
                1 <= number <= len(document.pl_lines)
            ):
                yield f"{where}: there is no pl-line {number}"


def _no_material(where: str, material: str) -> str:
    return f"{where}: the material '{material}' is not among the soils"
