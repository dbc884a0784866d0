"""The tables of layers."""

from sembra.local.look.table import Column, Name, Table, number
from sembra.local.sli.geometry_2d import INTERPOLATED, NO_PL_LINE, Geometry2D
from sembra.local.sli.whole_file import InputFile

_MATERIAL = Column("Material", numbers=False)


def layers(file: InputFile) -> Table:
    """Return the layers of a file, the highest first.

    Raises:
        InputFileError: A section is malformed, or it refers to what doesn't exist.
    """
    return _column(file) if file.is_1d else _cross_section(file.cross_section)


def pl_line(code: int) -> str:
    """Return what the water does at a side of a layer, by its code in the file."""
    return {NO_PL_LINE: "none", INTERPOLATED: "interpolated"}.get(code, f"pl-line {code}")


def _column(file: InputFile) -> Table:
    column = file.column
    bottoms = [*(layer.top for layer in column.layers[1:]), column.bottom]
    rows: list[list[Name | str]] = [
        [Name(layer.material), number(layer.top), number(bottom), number(layer.top - bottom)]
        for layer, bottom in zip(column.layers, bottoms, strict=True)
    ]
    columns = [_MATERIAL, Column("top", "m"), Column("bottom", "m"), Column("thickness", "m")]
    return Table("Layers", columns, rows, f"Phreatic level {number(column.phreatic_level)} m.")


def _cross_section(geometry: Geometry2D) -> Table:
    rows: list[list[Name | str]] = [
        [Name(layer.material), _levels(geometry, layer.top), _levels(geometry, layer.bottom),
         pl_line(layer.pl_top), pl_line(layer.pl_bottom)]
        for layer in reversed(geometry.layers)
    ]  # fmt: skip
    columns = [
        _MATERIAL,
        Column("top", "m"),
        Column("bottom", "m"),
        Column("water at its top", numbers=False),
        Column("at its bottom", numbers=False),
    ]
    note = f"Pl-line {geometry.phreatic_line} is the phreatic line."
    return Table("Layers", columns, rows, note)


def _levels(geometry: Geometry2D, boundary: int) -> str:
    """Return the lowest and the highest level of a boundary."""
    levels = [level for _, level in geometry.boundaries[boundary].points]
    low, high = number(min(levels)), number(max(levels))
    return low if low == high else f"{low} to {high}"
