"""Sections of all samples, one- and two-dimensional, generated from documents made by hand.

What a one-dimensional model can't be made to hold, such as a drain or a load under a polyline, is
compared here, section by section.
"""

import re
from collections.abc import Callable
from pathlib import Path
from typing import Any

import pytest

from tests.toolkit.documents import Document, document_1d, document_2d, drain, soil_of_lines
from tests.toolkit.samples import input_files, needs_samples
from tests.toolkit.sli import SliFile, labels_of_differences

Fill = Callable[[dict[str, Any]], str]

EACH_SAMPLE = pytest.mark.parametrize("path", input_files(), ids=lambda path: path.stem)
EACH_2D_SAMPLE = pytest.mark.parametrize(
    "path", [path for path in input_files() if not SliFile.read(path).is_1d], ids=lambda p: p.stem
)

pytestmark = needs_samples


@EACH_SAMPLE
def test_soils(path: Path, fill: Fill) -> None:
    sample = SliFile.read(path)
    soils = [soil_of_lines(lines) for lines in sample.soils]
    document = document_1d(soils=soils)
    document["geometry"]["layers"] = [(0.0, soils[0]["name"])]
    generated = SliFile(fill(document)).sections["SOIL COLLECTION"]
    # The document has no keys for secondary swelling.
    assert labels_of_differences(sample.sections["SOIL COLLECTION"], generated) <= {
        "SoilSecondarySwellingFactor",
        "SoilUnloadingStressRatio",
    }


@EACH_SAMPLE
def test_loads_times_and_verticals(path: Path, fill: Fill) -> None:
    sample = SliFile.read(path)
    keys = ("name", "time", "unit_weight", "height", "y_application")
    generated = SliFile(
        fill(
            document_1d(
                other_loads=[
                    {"type": 3} | dict(zip(keys, load, strict=True)) for load in sample.other_loads
                ],
                non_uniform_loads=non_uniform_loads(sample.sections["NON-UNIFORM LOADS"]),
                residual_times=sample.residual_times,
                verticals=[{"x": x} for x, _z in verticals(sample)],
                verticals_z_coordinate=verticals(sample)[0][1],
            )
        )
    )
    for name in ("OTHER LOADS", "NON-UNIFORM LOADS", "RESIDUAL TIMES", "VERTICALS"):
        assert generated.sections[name] == sample.sections[name]


@EACH_SAMPLE
def test_vertical_drain(path: Path, fill: Fill) -> None:
    sample = SliFile.read(path)
    generated = SliFile(fill(document_1d(vertical_drain=drain_of(sample))))
    # No sample has sand walls. The pressures that hold for these are D-Settlement's own in the
    # sample, and zero in ours.
    rows = {"Time, Under pressure, Water level, Tube pressure"}
    assert labels_of_differences(
        sample.sections["VERTICAL DRAIN"], generated.sections["VERTICAL DRAIN"]
    ) == {"Tube pressure during dewatering"} | (rows if has_tube_pressure(sample) else set())


def has_tube_pressure(sample: SliFile) -> bool:
    """Whether the detailed schedule has a tube pressure."""
    return any(row[3] for row in drain_rows(sample))


def drain_rows(sample: SliFile) -> list[tuple[float, ...]]:
    """Return the detailed schedule of the drains: time, underpressure, head, tube pressure."""
    return [
        tuple(map(float, line.partition("=")[0].split()))
        for line in sample.sections["VERTICAL DRAIN"]
        if "Under pressure," in line
    ]


@EACH_2D_SAMPLE
def test_geometry_of_a_plane(path: Path, fill: Fill) -> None:
    sample = SliFile.read(path)
    generated = SliFile(fill(document_of_plane(sample)))
    # Standard deviations and distributions of levels have no key.
    unlike = r"(?s)\[USE PROBABILISTIC.*?\[END OF DISTRIBUTION BOUNDARIES]"
    expected, got = (
        re.sub(unlike, "", "\n".join(file.sections["GEOMETRY DATA"]))
        for file in (sample, generated)
    )
    assert got == expected
    assert generated.option("MODEL", "Dimension") == "1"


@EACH_2D_SAMPLE
def test_statistics_of_boundaries_have_their_lines(path: Path, fill: Fill) -> None:
    sample = SliFile.read(path)
    generated = SliFile(fill(document_of_plane(sample)))
    assert statistics(generated) == statistics(sample)


def statistics(file: SliFile) -> list[str]:
    """Return the lines about the statistics of boundaries, without the values."""
    lines = file.sections["GEOMETRY DATA"]
    begin = lines.index("[USE PROBABILISTIC DEFAULTS BOUNDARIES]")
    end = lines.index("[END OF DISTRIBUTION BOUNDARIES]")
    return [re.sub(r"\d(?=\.)|E[+-]\d+|^  [0-3]$", "#", line) for line in lines[begin:end]]


def non_uniform_loads(lines: list[str]) -> list[Document]:
    """Return the loads under polylines."""
    rest = iter(lines[1:])
    loads = []
    for name in rest:
        time, dry, wet, temporary, end_time = next(rest).partition("=")[0].split()
        count = int(next(rest).split()[0])
        points = [tuple(map(float, next(rest).partition("=")[0].split())) for _ in range(count)]
        loads.append(
            {
                "name": name,
                "points": points,
                "time": int(time),
                "end_time": int(end_time),
                "gamma_dry": float(dry),
                "gamma_wet": float(wet),
                "temporary": temporary == "1",
            }
        )
    return loads


def verticals(sample: SliFile) -> list[tuple[float, float]]:
    """Return x and z of each vertical."""
    rows = (line.partition("=")[0].split() for line in sample.sections["VERTICALS"][1:])
    return [(float(x), float(z)) for x, z in rows]


def drain_of(sample: SliFile) -> Document:
    """Return the drain as a document has it."""

    def number(label: str) -> float:
        return sample.number("VERTICAL DRAIN", label)

    lines = sample.sections["VERTICAL DRAIN"]
    is_column = lines[0] == "1 : Flow type = Plane"
    assert is_column or lines[0] == "0 : Flow type = Radial"
    schedule = next(line for line in lines[1:] if " : Flow type" in line)
    return drain(
        type=1 if is_column else 0,
        range_from=number("Position of the leftmost drain"),
        range_to=number("Position of the rightmost drain"),
        bottom_position=number("Bottom position"),
        center_to_center=number("Center to center distance"),
        width_diameter=number("Diameter" if is_column else "Width"),
        thickness=number("Thickness"),
        position_drain=number("Position of the drain pipe"),
        grid=int(number("Grid")),
        schedule_type=int(schedule[0]),
        start_of_drainage=number("Start of drainage"),
        phreatic_level=number("Phreatic level in drain"),
        begin_time=number("Begin time"),
        end_time=number("End time"),
        underpressure=number("Under pressure for strips and columns"),
        dewatering_head_or_pressure=number("Water head during dewatering"),
        detailed_schedule=[row[:3] for row in drain_rows(sample)],
    )


def document_of_plane(sample: SliFile) -> Document:
    """Return a document with the geometry of a sample."""
    text = "\n".join(sample.sections["GEOMETRY DATA"])

    def block(name: str) -> list[str]:
        body = re.search(rf"(?s)\[{name}]\n(.*?)\[END OF {name}]", text)
        assert body
        return body[1].splitlines()[1:]

    def chains(name: str) -> list[list[int]]:
        return [list(map(int, line.split())) for line in block(name) if "number" not in line]

    def number_of(line: str) -> int:
        return int(line.split()[0])

    rows = block("LAYERS")
    layers = [
        {
            "material": rows[i + 1].strip(),
            "pl_top": number_of(rows[i + 2]),
            "pl_bottom": number_of(rows[i + 3]),
            "boundary_top": number_of(rows[i + 4]),
            "boundary_bottom": number_of(rows[i + 5]),
        }
        for i in range(0, len(rows), 6)
    ]
    phreatic_line = re.search(r"(\d+) - Number of the piezometric level line acting", text)
    assert phreatic_line
    return document_2d(
        soils=[soil_of_lines(lines) for lines in sample.soils],
        points=[tuple(map(float, line.split()[1:])) for line in block("POINTS")],
        curves=chains("CURVES"),
        boundaries=chains("BOUNDARIES"),
        pl_lines=chains("PIEZO LINES"),
        layers=layers,
        phreatic_line=int(phreatic_line[1]),
    )
