"""Which line of the input file each key of the document reaches."""

from collections.abc import Callable
from typing import Any

import pytest
from sembra.local.sli.whole_file import InputFile

from tests.toolkit.documents import Document, document_1d, document_2d, drain, soil

Fill = Callable[[dict[str, Any]], str]

LOAD = {"name": "a", "type": 3, "time": 5, "unit_weight": 2.5, "height": 1, "y_application": 1.2345}


def filled(fill: Fill, **values: Any) -> InputFile:
    return InputFile(fill(document_1d(**values)))


@pytest.mark.parametrize(
    ("key", "value", "section", "line"),
    [
        ("calculation_model", 0, "MODEL", "0 : Model = NEN - Koppejan"),
        ("calculation_model", 1, "MODEL", "1 : Model = NEN - Bjerrum"),
        ("calculation_model", 2, "MODEL", "2 : Model = Isotache"),
        ("consolidation_model", 0, "MODEL", "0 : Calculation type = Darcy"),
        ("consolidation_model", 1, "MODEL", "1 : Calculation type = Terzaghi"),
        ("strain_type", "Natural", "MODEL", "1 : Strain type = Natural"),
        ("has_vertical_drains", True, "MODEL", "1 : Vertical drains = TRUE"),
        ("maintain_profile", True, "CALCULATION OPTIONS", "1 : Maintain profile = TRUE"),
        ("profile_time", 30, "CALCULATION OPTIONS", "    30 = Time superelevation"),
        (
            "profile_unit_weight_above_phreatic_level",
            17.5,
            "CALCULATION OPTIONS",
            "    17.50 = Gamma dry superelevation",
        ),
        (
            "profile_unit_weight_below_phreatic_level",
            19.125,
            "CALCULATION OPTIONS",
            "   19.125 = Gamma wet superelevation",
        ),
        (
            "end_of_settlement_calculation",
            365,
            "CALCULATION OPTIONS",
            "365 = End of consolidation [days]",
        ),
        (
            "stress_distribution_loads",
            True,
            "CALCULATION OPTIONS",
            "1 : Stress distribution loads = Simulate",
        ),
        ("verticals_z_coordinate", 2.5, "VERTICALS", "       0.000        2.500 = X, Z"),
        ("residual_times", [7], "RESIDUAL TIMES", "7"),
        ("title_2", "é", "RUN IDENTIFICATION", "é"),
        (
            "other_loads",
            [LOAD],
            "OTHER LOADS",
            "           5         2.50        1.000       1.2345 = Time, Gamma, H, Yapplication",
        ),
    ],
)
def test_key_reaches_its_line(fill: Fill, key: str, value: Any, section: str, line: str) -> None:
    assert line in filled(fill, **{key: value}).data.section(section).texts


@pytest.mark.parametrize(
    ("key", "label"),
    [
        ("date", "DATE"),
        ("time", "TIME"),
        ("file_name", "FILENAME"),
        ("company", "COMPANY"),
        ("created_by", "CREATED BY"),
    ],
)
def test_metadata_reach_the_header(fill: Fill, key: str, label: str) -> None:
    assert filled(fill, **{key: "something"}).header[label][1] == "something"


def soil_lines(file: InputFile) -> list[str]:
    [material] = file.materials.values()
    return material.section.texts


def test_every_soil_key_reaches_a_line_of_its_own(fill: Fill) -> None:
    unwritten = {"cohesion", "phi", "limit_stress"}
    plain = soil_lines(filled(fill))
    seen = {}
    for key, value in soil().items():
        other = "Clay2" if key == "name" else value + 1
        name = other if key == "name" else "Clay"
        geometry = {"layers": [(0.0, name)], "bottom_level": -1.0, "phreatic_level": None}
        lines = soil_lines(filled(fill, soils=[soil(**{key: other})], geometry=geometry))
        changed = [line for line, before in zip(lines, plain, strict=True) if line != before]
        assert len(changed) == (key not in unwritten), key
        if changed:
            seen[changed[0].partition("=")[0]] = key
    assert len(seen) == 110 - len(unwritten)


def test_column_of_several_layers(fill: Fill) -> None:
    geometry = {
        "layers": [(1, "Peat"), (0.25, "Clay"), (-3.1234, "Peat")],
        "bottom_level": -10,
        "phreatic_level": -0.5,
    }
    lines = (
        filled(fill, soils=[soil(), soil("Peat")], geometry=geometry)
        .data.section("GEOMETRY 1D DATA")
        .texts
    )
    assert lines[:10] == [
        "3",
        "        1.000",
        "Peat",
        "        0.250",
        "Clay",
        "      -3.1234",
        "Peat",
        "5",
        "       -0.500",
        "      -10.000",
    ]


def test_column_without_phreatic_level_is_dry(fill: Fill) -> None:
    geometry = {"layers": [(0.0, "Clay")], "bottom_level": -7.0, "phreatic_level": None}
    lines = filled(fill, geometry=geometry).data.section("GEOMETRY 1D DATA").texts
    assert lines[4:6] == ["       -7.000", "       -7.000"]


def test_dissipation_at_a_vertical(fill: Fill) -> None:
    lines = filled(fill, dissipation_calculation=12.5).data.section("CALCULATION OPTIONS").texts
    assert "1 : Dissipation = TRUE" in lines
    assert "      12.500 = X co-ordinate dissipation" in lines


def test_dissipation_at_x_zero_is_not_taken_for_none(fill: Fill) -> None:
    lines = filled(fill, dissipation_calculation=0.0).data.section("CALCULATION OPTIONS").texts
    assert "1 : Dissipation = TRUE" in lines


def test_without_dissipation_the_first_vertical_is_named(fill: Fill) -> None:
    file = filled(fill, verticals=[{"x": 3}, {"x": 4}])
    lines = file.data.section("CALCULATION OPTIONS").texts
    assert "0 : Dissipation = FALSE" in lines
    assert "       3.000 = X co-ordinate dissipation" in lines
    assert "       3.000 = X co-ordinate fit" in lines
    assert "Reliability X Co-ordinate=3.000" in file.data.section("PROBABILISTIC DATA").texts


def test_model_without_verticals(fill: Fill) -> None:
    assert filled(fill, verticals=[]).data.section("VERTICALS").texts == ["    0 = number of items"]


def drain_lines(fill: Fill, values: Document) -> list[str]:
    return filled(fill, vertical_drain=drain(**values)).data.section("VERTICAL DRAIN").texts


@pytest.mark.parametrize(
    ("kind", "line"),
    [(0, "0 : Flow type = Radial"), (1, "1 : Flow type = Plane"), (2, "2 : Flow type = ")],
)
def test_type_of_drain(fill: Fill, kind: int, line: str) -> None:
    assert drain_lines(fill, {"type": kind})[0] == line


@pytest.mark.parametrize(
    ("kind", "diameter", "width"),
    [(0, "0.100", "0.250"), (1, "0.250", "0.100"), (2, "0.250", "0.250")],
)
def test_width_or_diameter(fill: Fill, kind: int, diameter: str, width: str) -> None:
    lines = drain_lines(fill, {"type": kind, "width_diameter": 0.25})
    assert lines[6:8] == [f"{diameter:>12} = Diameter", f"{width:>12} = Width"]


@pytest.mark.parametrize(
    ("kind", "head", "pressure"),
    [(0, "-2.000", "10.00"), (1, "-2.000", "10.00"), (2, "0.000", "-2.00")],
)
def test_simple_schedule(fill: Fill, kind: int, head: str, pressure: str) -> None:
    schedule = {"begin_time": 1.5, "end_time": 20, "underpressure": 35.0}
    lines = drain_lines(
        fill, schedule | {"type": kind, "schedule_type": 1, "dewatering_head_or_pressure": -2.0}
    )
    under = ["35.000", "0.000"] if kind != 2 else ["0.000", "35.000"]
    assert "1 : Flow type = Simple input" in lines
    assert "       1.500 = Begin time" in lines
    assert "      20.000 = End time" in lines
    assert f"{under[0]:>12} = Under pressure for strips and columns" in lines
    assert f"{under[1]:>12} = Under pressure for sand wall" in lines
    assert f"{head:>12} = Water head during dewatering" in lines
    assert f"{pressure:>9} = Tube pressure during dewatering" in lines


def test_detailed_schedule(fill: Fill) -> None:
    rows = [(0.0, 10.0, -1.0), (5, 20.0, -2.5)]
    title = "= Time, Under pressure, Water level, Tube pressure"
    lines = drain_lines(fill, {"schedule_type": 2, "detailed_schedule": rows})
    assert lines[-4:] == [
        "2 : Flow type = Detailed input",
        "2 = number of items",
        f"     0.000       10.000     -1.000      0.00 {title}",
        f"     5.000       20.000     -2.500      0.00 {title}",
    ]
    lines = drain_lines(fill, {"type": 2, "schedule_type": 2, "detailed_schedule": rows})
    assert lines[-1] == f"     5.000       20.000      0.000     -2.50 {title}"


def test_empty_detailed_schedule(fill: Fill) -> None:
    lines = drain_lines(fill, {"schedule_type": 2, "detailed_schedule": []})
    assert lines[-1] == "0 = number of items"


def test_long_chain_goes_over_several_lines(fill: Fill) -> None:
    points = [(float(x), y, 0) for y in (0.0, 5.0) for x in range(24)]
    curves = [(i + 1, i + 2) for i in range(47) if i != 23]
    chains = [list(range(1, 24)), list(range(24, 47))]
    document = document_2d(points=points, curves=curves, boundaries=chains, pl_lines=[chains[1]])
    lines = InputFile(fill(document)).data.section("GEOMETRY DATA").texts
    begin = lines.index("      23 - number of curves on boundary, next line(s) are curvenumbers")
    rows = [line.split() for line in lines[begin + 1 : begin + 4]]
    assert [len(row) for row in rows] == [10, 10, 3]
    assert [number for row in rows for number in row] == [str(number) for number in chains[0]]


def test_numbers_stay_apart_however_long_they_are(fill: Fill) -> None:
    long = 0.1 + 0.2
    points = [(-long, -long, 0), (100.0, 0.0, 0), (0.0, 5.0, 0), (100.0, 5.0, 0)]
    lines = InputFile(fill(document_2d(points=points))).data.section("GEOMETRY DATA").texts
    assert lines[2].split() == ["1", str(-long), str(-long), "0.000"]


def test_text_is_taken_literally(fill: Fill) -> None:
    file = filled(fill, title_1="{{ document }} {% if %} <&>", company="a \\ b")
    assert file.data.section("RUN IDENTIFICATION").texts[0] == "{{ document }} {% if %} <&>"
    assert file.header["COMPANY"][1] == "a \\ b"


def test_file_has_line_feeds_only_and_ends_with_one(fill: Fill) -> None:
    text = fill(document_1d())
    assert "\r" not in text
    assert text.endswith("[END OF INPUT FILE]\n")


def test_same_document_gives_the_same_text(fill: Fill) -> None:
    assert fill(document_2d()) == fill(document_2d())
