"""Sections of all samples, one- and two-dimensional, generated from documents made by hand.

What a one-dimensional model can't be made to hold, such as a drain or a load under a polyline, is
compared here, section by section.
"""

import re
from collections.abc import Callable
from pathlib import Path
from typing import Any

import pytest
from sembra.local.sli.entries import entries
from sembra.local.sli.whole_file import InputFile

from tests.toolkit.documents import Document, document_1d, document_2d, drain, soil_of
from tests.toolkit.samples import input_files, needs_samples

Fill = Callable[[dict[str, Any]], str]

EACH_SAMPLE = pytest.mark.parametrize("path", input_files(), ids=lambda path: path.stem)
EACH_2D_SAMPLE = pytest.mark.parametrize(
    "path", [path for path in input_files() if not InputFile.read(path).is_1d], ids=lambda p: p.stem
)

pytestmark = needs_samples


def labels_of_differences(sample: InputFile, generated: InputFile, section: str) -> set[str]:
    """Compare a section line by line and return the labels of the lines that differ."""
    pairs = zip(
        entries(sample.data.section(section)),
        entries(generated.data.section(section)),
        strict=True,
    )
    return {one.label for one, other in pairs if (one.label, one.told) != (other.label, other.told)}


@EACH_SAMPLE
def test_soils(path: Path, fill: Fill) -> None:
    sample = InputFile.read(path)
    soils = [soil_of(material) for material in sample.materials.values()]
    document = document_1d(soils=soils)
    document["geometry"]["layers"] = [(0.0, soils[0]["name"])]
    # The document has no keys for secondary swelling.
    assert labels_of_differences(sample, InputFile(fill(document)), "SOIL COLLECTION") <= {
        "SoilSecondarySwellingFactor",
        "SoilUnloadingStressRatio",
    }


@EACH_SAMPLE
def test_loads_times_and_verticals(path: Path, fill: Fill) -> None:
    sample = InputFile.read(path)
    generated = InputFile(
        fill(
            document_1d(
                other_loads=[
                    {"type": 3, "name": load.name, "time": load.time}
                    | dict(zip(("unit_weight", "height"), load.weight, strict=True))
                    | {"y_application": load.place[0]}
                    for load in sample.other_loads
                ],
                non_uniform_loads=[
                    {
                        "name": load.name,
                        "points": load.outline,
                        "time": load.time,
                        "end_time": load.end_time,
                        "gamma_dry": load.unit_weight_dry,
                        "gamma_wet": load.unit_weight_wet,
                        "temporary": load.temporary,
                    }
                    for load in sample.non_uniform_loads
                ],
                residual_times=[time.days for time in sample.residual_times],
                verticals=[{"x": vertical.x} for vertical in sample.verticals],
                verticals_z_coordinate=sample.verticals[0].z,
            )
        )
    )
    for name in ("OTHER LOADS", "NON-UNIFORM LOADS", "RESIDUAL TIMES", "VERTICALS"):
        assert generated.data.section(name).texts == sample.data.section(name).texts


@EACH_SAMPLE
def test_vertical_drain(path: Path, fill: Fill) -> None:
    sample = InputFile.read(path)
    generated = InputFile(fill(document_1d(vertical_drain=drain(**drain_keys(sample)))))
    # No sample has sand walls. A document with strips or columns has no tube pressures, though some
    # samples have them in the rows of their schedules.
    has_tube_pressure = any(row.tube_pressure for row in sample.schedule.rows)
    rows = {"Time, Under pressure, Water level, Tube pressure"}
    assert labels_of_differences(sample, generated, "VERTICAL DRAIN") == (
        rows if has_tube_pressure else set()
    )


def drain_keys(sample: InputFile) -> Document:
    """Return the drain of a sample by the keys of a document."""
    number, code = sample.drain.number, sample.drain.code("Flow type")
    return {
        "type": code,
        "range_from": number("Position of the leftmost drain"),
        "range_to": number("Position of the rightmost drain"),
        "bottom_position": number("Bottom position"),
        "center_to_center": number("Center to center distance"),
        "width_diameter": number("Diameter" if code else "Width"),
        "thickness": number("Thickness"),
        "position_drain": number("Position of the drain pipe"),
        "grid": sample.drain.code("Grid"),
        "schedule_type": sample.schedule.code,
        "start_of_drainage": number("Start of drainage"),
        "phreatic_level": number("Phreatic level in drain"),
        "begin_time": number("Begin time"),
        "end_time": number("End time"),
        "underpressure": number("Under pressure for strips and columns"),
        "dewatering_head_or_pressure": number("Water head during dewatering"),
        "detailed_schedule": [
            (row.time, row.underpressure, row.water_level) for row in sample.schedule.rows
        ],
    }


@EACH_2D_SAMPLE
def test_geometry_of_a_plane(path: Path, fill: Fill) -> None:
    sample = InputFile.read(path)
    generated = InputFile(fill(document_of_plane(sample)))
    # Standard deviations and distributions of levels have no key.
    unlike = r"(?s)\[USE PROBABILISTIC.*?\[END OF DISTRIBUTION BOUNDARIES]"
    expected, got = (
        re.sub(unlike, "", "\n".join(file.data.section("GEOMETRY DATA").texts))
        for file in (sample, generated)
    )
    assert got == expected
    assert generated.model.code("Dimension") == 1


@EACH_2D_SAMPLE
def test_statistics_of_boundaries_have_their_lines(path: Path, fill: Fill) -> None:
    sample = InputFile.read(path)
    assert statistics(InputFile(fill(document_of_plane(sample)))) == statistics(sample)


def statistics(file: InputFile) -> list[str]:
    """Return the lines about the statistics of boundaries, without the values."""
    lines = file.data.section("GEOMETRY DATA").texts
    begin = lines.index("[USE PROBABILISTIC DEFAULTS BOUNDARIES]")
    end = lines.index("[END OF DISTRIBUTION BOUNDARIES]")
    return [re.sub(r"\d(?=\.)|E[+-]\d+|^  [0-3]$", "#", line) for line in lines[begin:end]]


def document_of_plane(sample: InputFile) -> Document:
    """Return a document with the geometry of a sample."""
    geometry = sample.cross_section
    return document_2d(
        soils=[soil_of(material) for material in sample.materials.values()],
        points=[(x, y, 0.0) for x, y in geometry.points.values()],
        curves=list(geometry.curves.values()),
        boundaries=[chain.curves for chain in geometry.boundaries.values()],
        pl_lines=[chain.curves for chain in geometry.pl_lines.values()],
        layers=[
            {
                "material": layer.material,
                "boundary_top": layer.top,
                "boundary_bottom": layer.bottom,
                "pl_top": layer.pl_top,
                "pl_bottom": layer.pl_bottom,
            }
            for layer in geometry.layers
        ],
        phreatic_line=geometry.phreatic_line,
    )
