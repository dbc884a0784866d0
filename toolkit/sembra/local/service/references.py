"""Checks that what a document refers to by name or number is there."""

from collections.abc import Iterator

from sembra.local.places import Step, place, quoted
from sembra.local.service.frame import Frame
from sembra.local.service.geometry_1d import Document1D
from sembra.local.service.geometry_2d import INTERPOLATE, NO_PL_LINE, Document2D

type Fault = tuple[tuple[Step, ...], str]
"""A place and what is wrong there."""


def check_references(document: Frame, given: object) -> Iterator[str]:
    """Yield a reason for each reference that leads nowhere.

    Args:
        document: The document.
        given: What it was read from, to tell the places by.
    """
    faults: Iterator[Fault] = iter(())
    if isinstance(document, Document1D):
        faults = _check_1d(document)
    elif isinstance(document, Document2D):
        faults = _check_2d(document)
    for path, fault in faults:
        yield f"{place(given, path)}: {fault}"


def _check_1d(document: Document1D) -> Iterator[Fault]:
    names = document.material_names
    for index, layer in enumerate(document.geometry.layers):
        if layer.material not in names:
            yield ("geometry", "layers", index), _no_material(layer.material)


def _check_2d(document: Document2D) -> Iterator[Fault]:
    for index, curve in enumerate(document.curves):
        for number in curve:
            if not 1 <= number <= len(document.points):
                yield ("curves", index), f"there is no point {number}"
    for key, chains in (("boundaries", document.boundaries), ("pl_lines", document.pl_lines)):
        for index, chain in enumerate(chains):
            for number in chain:
                if not 1 <= number <= len(document.curves):
                    yield (key, index), f"there is no curve {number}"
    yield from _check_layers(document)
    if not 1 <= document.phreatic_line <= len(document.pl_lines):
        yield ("phreatic_line",), f"there is no pl-line {document.phreatic_line}"


def _check_layers(document: Document2D) -> Iterator[Fault]:
    names = document.material_names
    for index, layer in enumerate(document.layers):
        where = ("layers", index)
        if layer.material not in names:
            yield where, _no_material(layer.material)
        for number in (layer.boundary_top, layer.boundary_bottom):
            if not 0 <= number < len(document.boundaries):
                yield where, f"there is no boundary {number}"
        for number in (layer.pl_top, layer.pl_bottom):
            if number not in (NO_PL_LINE, INTERPOLATE) and not (
                1 <= number <= len(document.pl_lines)
            ):
                yield where, f"there is no pl-line {number}"


def _no_material(name: str) -> str:
    return f"there is no material {quoted(name)}"
