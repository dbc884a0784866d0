"""The drains of a file, as those of a model."""

from sembra.external.dsettlement import DrainageSimpleMode, DrainGrid, DrainType, VerticalDrain

from sembra.local.sli.whole_file import InputFile

_TYPE = "Flow type"
_OFF, _SIMPLE, _DETAILED = 0, 1, 2


def read_drain(file: InputFile) -> VerticalDrain | None:
    """Return the drains of a file, or None if they are switched off.

    Raises:
        InputFileError: The section is malformed.
        ModelError: A value is out of its range.
    """
    if not file.has_drains:
        return None
    lines = file.drain
    kind = DrainType(lines.one_of(_TYPE, [member.value for member in DrainType]))
    return VerticalDrain(
        kind,
        lines.number("Position of the leftmost drain"),
        lines.number("Position of the rightmost drain"),
        lines.number("Bottom position"),
        lines.number("Center to center distance"),
        lines.number("Width" if kind is DrainType.STRIP else "Diameter"),
        thickness=lines.number("Thickness"),
        position_drain=(
            lines.number("Position of the drain pipe") if kind is DrainType.SAND_WALL else None
        ),
        grid=DrainGrid(lines.one_of("Grid", [member.value for member in DrainGrid])),
        start_of_drainage=lines.number("Start of drainage"),
        phreatic_level_in_drain=lines.number("Phreatic level in drain"),
        schedule=_schedule(file, kind),
    )


def _schedule(
    file: InputFile, kind: DrainType
) -> DrainageSimpleMode | list[tuple[float, float, float]] | None:
    lines, schedule = file.drain, file.schedule
    is_wall = kind is DrainType.SAND_WALL
    if schedule.code == _OFF:
        return None
    if schedule.code == _DETAILED:
        return [
            (row.time, row.underpressure, row.tube_pressure if is_wall else row.water_level)
            for row in schedule.rows
        ]
    if schedule.code != _SIMPLE:
        raise file.data.section("VERTICAL DRAIN").error(
            f"the kind {schedule.code} of schedule is unknown", schedule.line
        )
    of_kind = "sand wall" if is_wall else "strips and columns"
    return DrainageSimpleMode(
        lines.number("Begin time"),
        lines.number("End time"),
        lines.number(f"Under pressure for {of_kind}"),
        lines.number(f"{'Tube pressure' if is_wall else 'Water head'} during dewatering"),
    )
