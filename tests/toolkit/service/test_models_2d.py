"""What no sample of a cross-section shows, from the public interface to the lines of the file."""

import traceback
from io import BytesIO
from typing import Any

import pytest
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    DrainType,
    Model2D,
    VerticalDrain,
    _Point,
)

from tests.toolkit.sli import SliFile
from tests.toolkit.sli_geometry import Geometry, Layer, Polyline
from tests.toolkit.sli_loads import NonUniformLoad, non_uniform_loads, verticals

SURFACE = [(0.0, 10.0), (25, 10.0), (75, 10.0), (100.0, 10.0)]
BOUNDARIES = (
    [(0.0, 5.0), (50.0, 5.0), (100.0, 2.5)],
    [(0.0, 5.0), (50.0, 5.0), (100.0, 7.5)],
    SURFACE,
)


def create_points(model: Model2D, line: Polyline) -> list[_Point]:
    return [model.create_point(x, y) for x, y in line]


def create_story(**options: Any) -> Model2D:
    """Make a cross-section in which two boundaries share a curve."""
    model = Model2D(
        CalculationModel.NEN_KOPPEJAN,
        ConsolidationModel.TERZAGHI,
        [(0.0, 0.0), (100.0, 0.0)],
        **options,
    )
    lines = [create_points(model, line) for line in BOUNDARIES]
    pl_lines = [create_points(model, [(0.0, y), (100.0, y)]) for y in (4.0, 6.0)]
    phreatic = model.create_pl_line(pl_lines[0], is_phreatic=True)
    deep = model.create_pl_line(pl_lines[1])
    model.create_layer(lines[0], "Sand", pl_line_top=99, pl_line_bottom=deep)
    model.create_layer(lines[1], "Soft Clay", pl_line_top=99, pl_line_bottom=99)
    model.create_layer(lines[2], "Loam", pl_line_top=phreatic, pl_line_bottom=99)
    for x in (55.0, 45.0, 50):
        model.create_vertical(x)
    model.create_non_uniform_load("load1", [(25, 10.0), (50.0, 12.0), (75, 10.0)])
    model.set_calculation_times(1, 4, 2, 5)
    return model


def generated(model: Model2D, **arguments: Any) -> SliFile:
    file = model.generate_input_file(**arguments)
    assert isinstance(file, BytesIO)
    return SliFile(file.getvalue().decode())


def test_boundaries_that_share_a_curve() -> None:
    geometry = Geometry.of(generated(create_story()))
    assert geometry.parts["CURVES"][:7] == [
        "  10 - Number of curves -",
        "     1 - Curve number",
        "       2 - number of points on curve,  next line(s) are pointnumbers",
        "         1     2",
        "     2 - Curve number",
        "       2 - number of points on curve,  next line(s) are pointnumbers",
        "         3     4",
    ]
    assert geometry.parts["BOUNDARIES"] == [
        "   4 - Number of boundaries -",
        "     0 - Boundary number",
        "       1 - number of curves on boundary, next line(s) are curvenumbers",
        "         1",
        "     1 - Boundary number",
        "       2 - number of curves on boundary, next line(s) are curvenumbers",
        "         2     3",
        "     2 - Boundary number",
        "       2 - number of curves on boundary, next line(s) are curvenumbers",
        "         2     5",
        "     3 - Boundary number",
        "       3 - number of curves on boundary, next line(s) are curvenumbers",
        "         6     7     8",
    ]
    assert [geometry.polyline(chain) for chain in geometry.boundaries[1:]] == list(BOUNDARIES)


def test_points_of_whole_metres_are_written_like_others() -> None:
    rows = Geometry.of(generated(create_story())).parts["POINTS"]
    assert rows[0] == "     16  - Number of geometry points -"
    assert rows[9:11] == [
        "       9          0.000         10.000          0.000",
        "      10         25.000         10.000          0.000",
    ]


def test_pl_lines_of_layers() -> None:
    geometry = Geometry.of(generated(create_story()))
    assert geometry.layers == [
        Layer("Sand", pl_top=99, pl_bottom=2, boundary_top=1, boundary_bottom=0),
        Layer("Soft Clay", pl_top=99, pl_bottom=99, boundary_top=2, boundary_bottom=1),
        Layer("Loam", pl_top=1, pl_bottom=99, boundary_top=3, boundary_bottom=2),
    ]
    assert geometry.parts["LAYERS"][:7] == [
        "   3 - Number of layers -",
        "     1 - Layer number, next line is material of layer",
        "       Sand",
        "      99 - Piezometric level line at top of layer",
        "       2 - Piezometric level line at bottom of layer",
        "       1 - Boundarynumber at top of layer",
        "       0 - Boundarynumber at bottom of layer",
    ]
    assert geometry.phreatic_line == 1


def test_phreatic_line_behind_another_and_layer_without_pressure() -> None:
    model = Model2D(
        CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI, [(0.0, 0.0), (100.0, 0.0)]
    )
    model.create_pl_line(create_points(model, [(0.0, 6.0), (100.0, 6.0)]))
    model.create_pl_line(create_points(model, [(0.0, 4.0), (100.0, 4.0)]), is_phreatic=True)
    # Codes that are floating-point numbers stand for the same.
    model.create_layer(create_points(model, SURFACE), "Sand", pl_line_top=0, pl_line_bottom=0.0)  # type: ignore[arg-type]
    geometry = Geometry.of(generated(model))
    assert geometry.parts["PHREATIC LINE"] == [
        "   2 - Number of the piezometric level line acting as phreatic line -"
    ]
    assert [layer[1:3] for layer in geometry.layers] == [(0, 0)]


def test_a_truth_value_is_no_pl_line() -> None:
    model = create_story()
    top = create_points(model, [(0.0, 11.0), (100.0, 11.0)])
    model.create_layer(top, "Sand", pl_line_top=False, pl_line_bottom=0)  # type: ignore[arg-type]
    with pytest.raises(Exception, match="Input file could not be generated") as refusal:
        model.generate_input_file()
    assert "layer 4 of 'Sand', pl_line_top: input" in str(refusal.value.__cause__)
    assert "layer 4 of 'Sand', pl_line_top: input" in traceback.format_exception(refusal.value)[-1]


def test_loads_initial_temporary_and_on_other_loads() -> None:
    model = create_story()
    ends: Polyline = [(50.0, 12.0), (75, 10.0)]
    model.create_non_uniform_load("initial", SURFACE, time=-1, gamma_dry=17, gamma_wet=19.25)
    model.create_non_uniform_load("above", ends, time=10, end_time=200, temporary=True)
    file = generated(model)
    title = "= Time, Gamma dry, Gamma wet, Temporary, Endtime"
    lines = file.sections["NON-UNIFORM LOADS"]
    assert lines[:2] == ["    3 = number of items", "load1"]
    assert [line for line in lines if title in line] == [
        f"           0        10.00        10.00   0            0  {title}",
        f"          -1        17.00        19.25   0            0  {title}",
        f"          10        10.00        10.00   1          200  {title}",
    ]
    assert lines[3:7] == [
        "    3 = Number of co-ordinates",
        "      25.000       10.000 = X, Y",
        "      50.000       12.000 = X, Y",
        "      75.000       10.000 = X, Y",
    ]
    assert non_uniform_loads(file)[2] == NonUniformLoad("above", ends, 10, 200, 10.0, 10.0, True)


def test_verticals_with_their_level_from_left_to_right() -> None:
    file = generated(create_story(verticals_z_coordinate=-2.5))
    assert verticals(file) == [(45.0, -2.5), (50.0, -2.5), (55.0, -2.5)]
    assert file.sections["VERTICALS"][2] == "      50.000       -2.500 = X, Z"


@pytest.mark.parametrize(
    ("simulated", "line"),
    [
        (True, "1 : Stress distribution loads = Simulate"),
        (False, "0 : Stress distribution loads = None"),
    ],
)
def test_stress_distribution_of_loads(simulated: bool, line: str) -> None:
    file = generated(create_story(stress_distribution_loads=simulated))
    assert line in file.sections["CALCULATION OPTIONS"]


def test_superelevation() -> None:
    file = generated(create_story(maintain_profile=True, profile_time=30))
    assert "1 : Maintain profile = TRUE" in file.sections["CALCULATION OPTIONS"]
    assert "    30 = Time superelevation" in file.sections["CALCULATION OPTIONS"]


def test_dissipation_at_a_vertical() -> None:
    model = create_story()
    lines = generated(model, dissipation_calculation=model.verticals[1]).sections[
        "CALCULATION OPTIONS"
    ]
    assert "1 : Dissipation = TRUE" in lines
    assert "      50.000 = X co-ordinate dissipation" in lines
    assert "      45.000 = X co-ordinate fit" in lines


def test_sand_wall_without_schedule() -> None:
    drain = VerticalDrain(
        DrainType.SAND_WALL,
        5.0,
        90.0,
        0.0,
        2.0,
        4.0,
        start_of_drainage=2.0,
        phreatic_level_in_drain=4.0,
    )
    file = generated(create_story(vertical_drain=drain))
    assert file.option("MODEL", "Vertical drains") == "1"
    section = "VERTICAL DRAIN"
    assert file.sections[section][0] == "2 : Flow type = "
    assert file.number(section, "Position of the leftmost drain") == 5.0
    assert file.number(section, "Position of the rightmost drain") == 90.0
    assert file.number(section, "Width") == file.number(section, "Diameter") == 4.0
    assert file.number(section, "Start of drainage") == 2.0
    assert file.number(section, "Phreatic level in drain") == 4.0


def test_statistics_of_boundaries_are_the_defaults_of_each() -> None:
    parts = Geometry.of(generated(create_story())).parts
    count = "   4 - Number of boundaries -"
    assert parts["USE PROBABILISTIC DEFAULTS BOUNDARIES"] == [count, *["  1"] * 4]
    assert parts["STDV BOUNDARIES"] == [count, *["   1.00000000000000E-0001"] * 4]
    assert parts["DISTRIBUTION BOUNDARIES"] == [count, *["  0"] * 4]
