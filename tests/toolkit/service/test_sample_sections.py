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
from tests.toolkit.sli_drain import drain_keys, drain_rows
from tests.toolkit.sli_geometry import Geometry
from tests.toolkit.sli_loads import non_uniform_loads, verticals

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
                non_uniform_loads=[load._asdict() for load in non_uniform_loads(sample)],
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
    generated = SliFile(fill(document_1d(vertical_drain=drain(**drain_keys(sample)))))
    # No sample has sand walls. A document with strips or columns has no tube pressures, though some
    # samples have them in the rows of their schedules.
    rows = {"Time, Under pressure, Water level, Tube pressure"}
    assert labels_of_differences(
        sample.sections["VERTICAL DRAIN"], generated.sections["VERTICAL DRAIN"]
    ) == (rows if has_tube_pressure(sample) else set())


def has_tube_pressure(sample: SliFile) -> bool:
    """Whether the detailed schedule has a tube pressure."""
    return any(row[3] for row in drain_rows(sample))


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


def document_of_plane(sample: SliFile) -> Document:
    """Return a document with the geometry of a sample."""
    geometry = Geometry.of(sample)
    return document_2d(
        soils=[soil_of_lines(lines) for lines in sample.soils],
        points=geometry.points,
        curves=geometry.curves,
        boundaries=geometry.boundaries,
        pl_lines=geometry.pl_lines,
        layers=[layer._asdict() for layer in geometry.layers],
        phreatic_line=geometry.phreatic_line,
    )
