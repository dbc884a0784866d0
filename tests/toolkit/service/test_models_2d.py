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
from sembra.local.sli.whole_file import InputFile

Polyline = list[tuple[float, float]]

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


def generated(model: Model2D, **arguments: Any) -> InputFile:
    file = model.generate_input_file(**arguments)
    assert isinstance(file, BytesIO)
    return InputFile(file.getvalue().decode())


def part(file: InputFile, name: str) -> list[str]:
    """The lines of a part of the geometry."""
    return file.data.section("GEOMETRY DATA").section(name).texts


def test_boundaries_that_share_a_curve() -> None:
    file = generated(create_story())
    assert part(file, "CURVES")[:7] == [
        "  10 - Number of curves -",
        "     1 - Curve number",
        "       2 - number of points on curve,  next line(s) are pointnumbers",
        "         1     2",
        "     2 - Curve number",
        "       2 - number of points on curve,  next line(s) are pointnumbers",
        "         3     4",
    ]
    assert part(file, "BOUNDARIES") == [
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
    lines = [list(boundary.points) for boundary in file.cross_section.boundaries.values()]
    assert lines[1:] == list(BOUNDARIES)


def test_points_of_whole_metres_are_written_like_others() -> None:
    rows = part(generated(create_story()), "POINTS")
    assert rows[0] == "     16  - Number of geometry points -"
    assert rows[9:11] == [
        "       9          0.000         10.000          0.000",
        "      10         25.000         10.000          0.000",
    ]


def test_pl_lines_of_layers() -> None:
    file = generated(create_story())
    layers = file.cross_section.layers
    assert [layer.material for layer in layers] == ["Sand", "Soft Clay", "Loam"]
    assert [(layer.pl_top, layer.pl_bottom) for layer in layers] == [(99, 2), (99, 99), (1, 99)]
    assert [(layer.top, layer.bottom) for layer in layers] == [(1, 0), (2, 1), (3, 2)]
    assert part(file, "LAYERS")[:7] == [
        "   3 - Number of layers -",
        "     1 - Layer number, next line is material of layer",
        "       Sand",
        "      99 - Piezometric level line at top of layer",
        "       2 - Piezometric level line at bottom of layer",
        "       1 - Boundarynumber at top of layer",
        "       0 - Boundarynumber at bottom of layer",
    ]
    assert file.cross_section.phreatic_line == 1


def test_phreatic_line_behind_another_and_layer_without_pressure() -> None:
    model = Model2D(
        CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI, [(0.0, 0.0), (100.0, 0.0)]
    )
    model.create_pl_line(create_points(model, [(0.0, 6.0), (100.0, 6.0)]))
    model.create_pl_line(create_points(model, [(0.0, 4.0), (100.0, 4.0)]), is_phreatic=True)
    # Codes that are floating-point numbers stand for the same.
    model.create_layer(create_points(model, SURFACE), "Sand", pl_line_top=0, pl_line_bottom=0.0)  # type: ignore[arg-type]
    file = generated(model)
    assert part(file, "PHREATIC LINE") == [
        "   2 - Number of the piezometric level line acting as phreatic line -"
    ]
    [layer] = file.cross_section.layers
    assert (layer.pl_top, layer.pl_bottom) == (0, 0)


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
    lines = file.data.section("NON-UNIFORM LOADS").texts
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
    above = file.non_uniform_loads[2]
    assert (above.name, above.outline) == ("above", tuple(ends))
    assert (above.time, above.end_time, above.temporary) == (10, 200, True)


def test_verticals_with_their_level_from_left_to_right() -> None:
    file = generated(create_story(verticals_z_coordinate=-2.5))
    assert [(vertical.x, vertical.z) for vertical in file.verticals] == [
        (45.0, -2.5),
        (50.0, -2.5),
        (55.0, -2.5),
    ]
    assert file.data.section("VERTICALS").texts[2] == "      50.000       -2.500 = X, Z"


@pytest.mark.parametrize(
    ("simulated", "line"),
    [
        (True, "1 : Stress distribution loads = Simulate"),
        (False, "0 : Stress distribution loads = None"),
    ],
)
def test_stress_distribution_of_loads(simulated: bool, line: str) -> None:
    file = generated(create_story(stress_distribution_loads=simulated))
    assert line in file.data.section("CALCULATION OPTIONS").texts


def test_superelevation() -> None:
    file = generated(create_story(maintain_profile=True, profile_time=30))
    assert "1 : Maintain profile = TRUE" in file.data.section("CALCULATION OPTIONS").texts
    assert "    30 = Time superelevation" in file.data.section("CALCULATION OPTIONS").texts


def test_dissipation_at_a_vertical() -> None:
    model = create_story()
    lines = (
        generated(model, dissipation_calculation=model.verticals[1])
        .data.section("CALCULATION OPTIONS")
        .texts
    )
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
    assert file.has_drains
    number = file.drain.number
    assert file.data.section("VERTICAL DRAIN").texts[0] == "2 : Flow type = "
    assert number("Position of the leftmost drain") == 5.0
    assert number("Position of the rightmost drain") == 90.0
    assert number("Width") == number("Diameter") == 4.0
    assert number("Start of drainage") == 2.0
    assert number("Phreatic level in drain") == 4.0


def test_statistics_of_boundaries_are_the_defaults_of_each() -> None:
    file = generated(create_story())
    count = "   4 - Number of boundaries -"
    assert part(file, "USE PROBABILISTIC DEFAULTS BOUNDARIES") == [count, *["  1"] * 4]
    assert part(file, "STDV BOUNDARIES") == [count, *["   1.00000000000000E-0001"] * 4]
    assert part(file, "DISTRIBUTION BOUNDARIES") == [count, *["  0"] * 4]
