"""The vertical drains, in words."""

from collections.abc import Iterator

from sembra.external.dsettlement import DrainGrid, DrainType

from sembra.local.look.options import Fact
from sembra.local.look.table import Column, Name, Table, number
from sembra.local.sli.whole_file import InputFile

_KINDS = {
    DrainType.STRIP: "strips",
    DrainType.COLUMN: "columns",
    DrainType.SAND_WALL: "sand walls",
}
_GRIDS = {
    DrainGrid.TRIANGULAR: ", in a triangular grid",
    DrainGrid.RECTANGULAR: ", in a rectangular grid",
    DrainGrid.UNDETERMINED: "",
}
_OFF, _SIMPLE = 0, 1


def drains(file: InputFile) -> Iterator[Fact]:
    """Yield what a file says of its drains, if they are switched on.

    Raises:
        InputFileError: The section is malformed.
    """
    if not file.has_drains:
        return
    lines = file.drain
    kind = _kind(file)

    def value(label: str) -> str:
        return number(lines.number(label))

    size = {
        DrainType.STRIP: f"{value('Width')} m wide and {value('Thickness')} m thick",
        DrainType.COLUMN: f"{value('Diameter')} m in diameter",
        DrainType.SAND_WALL: f"{value('Diameter')} m wide",
    }[kind]
    grid = "" if kind is DrainType.SAND_WALL else _GRIDS[DrainGrid(lines.code("Grid"))]
    yield "Kind", f"{_KINDS[kind]}, {size}"
    yield "Distance", f"{value('Center to center distance')} m from centre to centre{grid}"
    yield (
        "Place",
        (
            f"from x = {value('Position of the leftmost drain')} m to "
            f"{value('Position of the rightmost drain')} m, down to {value('Bottom position')} m"
        ),
    )
    if file.schedule.code in (_OFF, _SIMPLE):
        yield (
            "Drainage",
            (
                f"from day {value('Start of drainage')}, with water in the drains at "
                f"{value('Phreatic level in drain')} m"
            ),
        )
    if file.schedule.code == _SIMPLE:
        yield "Dewatering", _simple(file, kind)


def schedule(file: InputFile) -> Table | None:
    """Return the detailed schedule of the drains, if they have one.

    Raises:
        InputFileError: The section is malformed.
    """
    if not file.has_drains or file.schedule.code in (_OFF, _SIMPLE):
        return None
    is_wall = _kind(file) is DrainType.SAND_WALL
    third = Column("Tube pressure", "kPa") if is_wall else Column("Water level", "m")
    rows: list[list[Name | str]] = [
        [
            Name(f"from day {number(row.time)}"),
            number(row.underpressure),
            number(row.tube_pressure if is_wall else row.water_level),
        ]
        for row in file.schedule.rows
    ]
    columns = [Column("Time", numbers=False), Column("Underpressure", "kPa"), third]
    return Table("Dewatering by the drains", columns, rows)


def _kind(file: InputFile) -> DrainType:
    return DrainType(file.drain.one_of("Flow type", [kind.value for kind in DrainType]))


def _simple(file: InputFile, kind: DrainType) -> str:
    lines = file.drain
    is_wall = kind is DrainType.SAND_WALL
    of_kind = "sand wall" if is_wall else "strips and columns"
    what = "tube pressure" if is_wall else "water level"
    label = f"{'Tube pressure' if is_wall else 'Water head'} during dewatering"
    return (
        f"from day {number(lines.number('Begin time'))} to "
        f"{number(lines.number('End time'))}, underpressure "
        f"{number(lines.number(f'Under pressure for {of_kind}'))} kPa, {what} "
        f"{number(lines.number(label))} {'kPa' if is_wall else 'm'}"
    )
