"""Columns that verticals cut out of a cross-section."""

from base64 import b64decode

import pytest
from sembra.local.worker import run_job
from sembra.local.worker.errors import WorkerError
from sembra.local.worker.ground.cross_section import Geometry2D, LayerBetween
from sembra.local.worker.ground.polyline import Polyline

from tests.toolkit.worker.input_file import calculated, input_text, job, refused
from tests.toolkit.worker.made_material import material
from tests.toolkit.worker.result_file import residuals, verticals

CLAY = material(drained=True)
SURFACE = Polyline(((0.0, 0.0), (40.0, 0.0), (50.0, 5.0), (100.0, 5.0)))
MIDDLE = Polyline(((0.0, -3.0), (100.0, -3.0)))
BOTTOM = Polyline(((0.0, -10.0), (100.0, -12.0)))
WATER = Polyline(((0.0, -1.0), (100.0, 1.0)))
DEEP_WATER = Polyline(((0.0, 2.0), (100.0, 2.0)))
INTERPOLATED = LayerBetween.INTERPOLATED
NO_PRESSURE = LayerBetween.NO_PRESSURE


def section(top: Polyline | int, border: Polyline | int, bottom: Polyline | int) -> Geometry2D:
    return Geometry2D(
        (
            LayerBetween(SURFACE, MIDDLE, CLAY, top, border),
            LayerBetween(MIDDLE, BOTTOM, CLAY, border, bottom),
        ),
        WATER,
    )


def test_levels_at_the_vertical() -> None:
    column = section(WATER, WATER, WATER).column(45.0, 7.0)
    assert (column.x, column.z) == (45.0, 7.0)
    assert column.surface == pytest.approx(2.5)
    assert column.phreatic_level == pytest.approx(-0.1)
    assert [layer.bottom for layer in column.layers] == pytest.approx([-3.0, -10.9])


def test_interpolated_pressure_between_the_nearest_known_ones() -> None:
    column = section(WATER, INTERPOLATED, DEEP_WATER).column(20.0, 0.0)
    head_at_border = column.layers[0].head_bottom
    # From no pressure at the water level of -0.6 m to 12.4 m of water at -10.4 m.
    part = (3.0 - 0.6) / (10.4 - 0.6)
    assert head_at_border + 3.0 == pytest.approx(part * 12.4)
    assert column.layers[1].head_top == head_at_border


def test_a_side_without_pressure() -> None:
    column = section(WATER, NO_PRESSURE, WATER).column(20.0, 0.0)
    assert column.layers[0].head_bottom == -3.0


def test_layers_without_thickness_are_left_out() -> None:
    flat = Geometry2D(
        (
            LayerBetween(SURFACE, SURFACE, CLAY, WATER, WATER),
            LayerBetween(SURFACE, BOTTOM, CLAY, WATER, WATER),
        ),
        WATER,
    )
    assert len(flat.column(10.0, 0.0).layers) == 1


@pytest.mark.parametrize("x", [-0.1, 100.1])
def test_a_vertical_outside_is_refused(x: float) -> None:
    with pytest.raises(WorkerError, match="lies outside the geometry"):
        section(WATER, WATER, WATER).column(x, 0.0)


def test_nothing_to_interpolate_from_is_refused() -> None:
    with pytest.raises(WorkerError, match="nothing to be interpolated from"):
        section(INTERPOLATED, WATER, WATER).column(20.0, 0.0)


def test_crossing_boundaries_are_refused() -> None:
    crossed = Geometry2D((LayerBetween(BOTTOM, SURFACE, CLAY, WATER, WATER),), WATER)
    with pytest.raises(WorkerError, match=r"^At x = 20 m the bottom of the layer of Clay lies"):
        crossed.column(20.0, 0.0)


GEOMETRY_2D = """[GEOMETRY DATA]
[POINTS]
      4  - Number of geometry points -
       1          0.000          0.000          0.000
       2        100.000          0.000          0.000
       3          0.000         -4.000          0.000
       4        100.000         -4.000          0.000
[END OF POINTS]

[CURVES]
   2 - Number of curves -
     1 - Curve number
       2 - number of points on curve,  next line(s) are pointnumbers
         3     4
     2 - Curve number
       2 - number of points on curve,  next line(s) are pointnumbers
         1     2
[END OF CURVES]

[BOUNDARIES]
   2 - Number of boundaries -
     0 - Boundary number
       1 - number of curves on boundary, next line(s) are curvenumbers
         1
     1 - Boundary number
       1 - number of curves on boundary, next line(s) are curvenumbers
         2
[END OF BOUNDARIES]

[PIEZO LINES]
   1 - Number of piezometric level lines -
     1 - PlLine number
       1 - number of curves on PlLine,  next line(s) are curvenumbers
         2
[END OF PIEZO LINES]

[PHREATIC LINE]
   1 - Number of the piezometric level line acting as phreatic line -
[END OF PHREATIC LINE]

[LAYERS]
   1 - Number of layers -
     1 - Layer number, next line is material of layer
       Clay
       1 - Piezometric level line at top of layer
       1 - Piezometric level line at bottom of layer
       1 - Boundarynumber at top of layer
       0 - Boundarynumber at bottom of layer
[END OF LAYERS]

[END OF GEOMETRY DATA]
"""


def two_dimensional(times: tuple[float, ...] = ()) -> str:
    text = input_text(model={"Dimension": 1}, phreatic_level=0.0, times=times)
    before, _, rest = text.partition("[GEOMETRY 1D DATA]\n")
    after = rest.partition("[END OF GEOMETRY 1D DATA]\n")[2]
    one = "    1 = number of items\n       0.000        0.000 = X, Z\n"
    three = "3 = number of items\n 10 0 = X, Z\n 20.5 0 = X, Z\n 90 1 = X, Z\n"
    return (before + GEOMETRY_2D + after).replace(one, three)


def test_level_ground_settles_as_one_column() -> None:
    column = verticals(calculated(input_text(phreatic_level=0.0)))[0]
    text = calculated(two_dimensional(times=(0, 100)))
    found = verticals(text)
    assert [vertical["coordinates"] for vertical in found] == [
        {"x": 10.0, "z": 0.0},
        {"x": 20.5, "z": 0.0},
        {"x": 90.0, "z": 1.0},
    ]
    assert all(vertical["stresses"] == column["stresses"] for vertical in found)
    assert list(residuals(text)) == [1, 2, 3]


def test_every_vertical_is_progress() -> None:
    fractions: list[float] = []
    result = run_job(job(two_dimensional()), fractions.append)
    assert b64decode(result["files"][".sld"])
    assert fractions == sorted(fractions)
    assert (fractions[0], fractions[-1], len(fractions)) == (0.0, 1.0, 5)


@pytest.mark.parametrize(
    ("old", "new", "message"),
    [
        (
            "         3     4",
            "         3     9",
            "section [CURVES], line 59: point 9 does not exist",
        ),
        ("       0 - Boundarynumber", "       7 - Boundarynumber", "boundary 7 does not exist"),
        ("       Clay\n", "       Mud\n", 'the material "Mud" is unknown'),
        ("   1 - Number of the p", "   2 - Number of the p", "piezometric level line 2 does not"),
        ("         3     4", "         4     3", "a line should run from left to right"),
    ],
)
def test_malformed_geometry(old: str, new: str, message: str) -> None:
    text = two_dimensional()
    assert old in text
    assert message in refused(text.replace(old, new))
