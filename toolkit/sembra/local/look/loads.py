"""The tables of loads."""

from collections.abc import Iterator

from sembra.local.look.ground import pl_line
from sembra.local.look.table import Column, Name, Table, day, number
from sembra.local.sli.non_uniform_loads import NonUniformLoad
from sembra.local.sli.other_loads import KindOfLoad, OtherLoad, find_unknown_loads
from sembra.local.sli.whole_file import InputFile

_COLUMNS = (
    Column("Load", numbers=False),
    Column("Kind", numbers=False),
    Column("Comes", numbers=False),
    Column("Weight", numbers=False),
    Column("Place", numbers=False),
)


def loads(file: InputFile) -> Iterator[Table]:
    """Yield the tables of the loads that a file has.

    Raises:
        InputFileError: A section is malformed.
    """
    rows = [_non_uniform(load) for load in file.non_uniform_loads]
    note = ""
    if unknown := find_unknown_loads(file.data):
        names = ", ".join(f"{load.name} ({load.word})" for load in unknown)
        note = f"The other loads can't be read, since some are of kinds that aren't known: {names}."
    else:
        rows += [_other(load) for load in file.other_loads]
    if rows or note:
        yield Table("Loads", _COLUMNS, rows, note)
    if file.water_loads:
        yield _water_loads(file)


def _non_uniform(load: NonUniformLoad) -> list[Name | str]:
    comes = day(load.time)
    if load.temporary:
        comes += f", goes {day(load.end_time)}"
    points = [f"({number(x)}, {number(y)})" for x, y in load.outline]
    weight = f"γ {number(load.unit_weight_dry)} dry, {number(load.unit_weight_wet)} wet kN/m³"
    return [Name(load.name), "non-uniform", comes, weight, " ".join(points) + " m"]


def _other(load: OtherLoad) -> list[Name | str]:
    first, second = map(number, load.weight)
    at = [number(value) for value in load.place]
    match load.kind:
        case KindOfLoad.UNIFORM:
            weight = _pressure(load)
            place = f"everywhere, at level {at[0]} m"
        case KindOfLoad.TRAPEZIFORM:
            weight = _pressure(load)
            place = (
                f"slopes {at[0]} m left and {at[2]} m right, {at[1]} m between; "
                f"from x = {at[3]} m at level {at[4]} m"
            )
        case KindOfLoad.CIRCULAR:
            weight = f"{first} kPa, α {second}"
            place = f"centre ({at[0]}, {at[1]}, {at[2]}) m, radius {at[3]} m"
        case KindOfLoad.RECTANGULAR:
            weight = f"{first} kPa, α {second}"
            place = f"centre ({at[0]}, {at[1]}, {at[2]}) m, {at[3]} m along x by {at[4]} m along z"
    return [Name(load.name), load.kind.name.lower(), day(load.time), weight, place]


def _pressure(load: OtherLoad) -> str:
    unit_weight, height = load.weight
    pressure = number(unit_weight * height)
    return f"{pressure} kPa ({number(height)} m of {number(unit_weight)} kN/m³)"


def _water_loads(file: InputFile) -> Table:
    layers = file.cross_section.layers
    columns = [
        Column("Water load", numbers=False),
        Column("Comes", numbers=False),
        Column("Phreatic line", numbers=False),
        Column("Pl-lines of the layers, the lowest first", numbers=False),
    ]
    rows: list[list[Name | str]] = []
    for load in file.water_loads:
        sides = [
            f"{layer.material}: {pl_line(top)} / {pl_line(bottom)}"
            for layer, (top, bottom) in zip(layers, load.pl_lines, strict=True)
        ]
        rows.append([Name(load.name), day(load.time), str(load.phreatic_line), "; ".join(sides)])
    return Table("Water loads", columns, rows, "Pl-lines at top / bottom of each layer.")
