"""Puts the sections of an input file together."""

from __future__ import annotations

from ..model import Column, Project
from ..sections import read_whole
from .geometry_1d import read_column
from .loads import read_uniform_loads
from .options import check_model, read_options, read_residual_times
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
    columns: list[Column] = []
    cursor = whole.section("VERTICALS").cursor()
    for number in range(1, cursor.count("the number of verticals") + 1):
        x, z = cursor.numbers(f"X and Z of vertical {number}", 2)
        columns.append(read_column(whole, materials, x, z))
    if not columns:
        raise cursor.error("there are no verticals")
    return Project(
        columns=tuple(columns),
        uniform_loads=loads,
        options=options,
        residual_times=read_residual_times(whole, options.end),
    )
