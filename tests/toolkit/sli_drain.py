"""The drains of an input file, in the words of a model's document."""

from typing import Any

from tests.toolkit.sli import SliFile


def drain_keys(file: SliFile) -> dict[str, Any]:
    """Return the drain of a file by the keys of a document.

    There is no sample of a sand wall to read one after.
    """

    def number(label: str) -> float:
        return file.number("VERTICAL DRAIN", label)

    lines = file.sections["VERTICAL DRAIN"]
    is_column = lines[0] == "1 : Flow type = Plane"
    assert is_column or lines[0] == "0 : Flow type = Radial"
    schedule = next(line for line in lines[1:] if " : Flow type" in line)
    return {
        "type": 1 if is_column else 0,
        "range_from": number("Position of the leftmost drain"),
        "range_to": number("Position of the rightmost drain"),
        "bottom_position": number("Bottom position"),
        "center_to_center": number("Center to center distance"),
        "width_diameter": number("Diameter" if is_column else "Width"),
        "thickness": number("Thickness"),
        "position_drain": number("Position of the drain pipe"),
        "grid": int(number("Grid")),
        "schedule_type": int(schedule[0]),
        "start_of_drainage": number("Start of drainage"),
        "phreatic_level": number("Phreatic level in drain"),
        "begin_time": number("Begin time"),
        "end_time": number("End time"),
        "underpressure": number("Under pressure for strips and columns"),
        "dewatering_head_or_pressure": number("Water head during dewatering"),
        "detailed_schedule": [row[:3] for row in drain_rows(file)],
    }


def drain_rows(file: SliFile) -> list[tuple[float, ...]]:
    """Return the detailed schedule of the drains: time, underpressure, head, tube pressure."""
    return [
        tuple(map(float, line.partition("=")[0].split()))
        for line in file.sections["VERTICAL DRAIN"]
        if "Under pressure," in line
    ]
