"""Puts the sections of an input file together."""

from __future__ import annotations

from collections.abc import Callable

from ..model import Column, Material, Project
from ..sections import Section, read_whole
from .geometry_1d import read_column
from .geometry_2d import read_geometry
from .loads import read_uniform_loads
from .options import Labelled, check_model, read_options, read_residual_times
from .soils import read_materials


def read_project(text: str) -> Project:
    """The project that the text of an `.sli` file describes.

    Args:
        text: the file, with CRLF, LF or CR as line ends.

    Raises:
        InputFileError: the text is malformed; the message names section and line.
        NotCoveredError: the file asks for what the worker doesn't calculate.
    """
    whole = read_whole(text).section("INPUT DATA")
    check_model(whole)
    options = read_options(whole)
    loads = read_uniform_loads(whole)
    for load in loads:
        if load.time >= options.end:
            raise whole.section("OTHER LOADS").error(
                f'the load "{load.name}" comes at {load.time:g} days, which is not before the end '
                f"of consolidation at {options.end:g} days"
            )
    materials = read_materials(whole)
    cut = _read_cut(whole, materials)
    columns: list[Column] = []
    cursor = whole.section("VERTICALS").cursor()
    for number in range(1, cursor.count("the number of verticals") + 1):
        x, z = cursor.numbers(f"X and Z of vertical {number}", 2)
        columns.append(cut(x, z))
    if not columns:
        raise cursor.error("there are no verticals")
    return Project(
        columns=tuple(columns),
        uniform_loads=loads,
        options=options,
        residual_times=read_residual_times(whole, options.end),
    )


def _read_cut(whole: Section, materials: dict[str, Material]) -> Callable[[float, float], Column]:
    """What gives the column of a vertical at x and z."""
    if Labelled(whole.section("MODEL")).switch("Dimension"):
        return read_geometry(whole, materials).column
    return read_column(whole, materials).at
