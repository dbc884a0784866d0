"""Columns that verticals cut out of a cross-section."""

import numpy as np
import pytest
from sembra.local.worker.failures import WorkerError
from sembra.local.worker.ground.cross_section import CrossSection, LayerBetween
from sembra.local.worker.ground.polyline import Polyline

from tests.toolkit.worker.made_material import material

CLAY = material(drained=True)
SURFACE = Polyline(((0.0, 0.0), (40.0, 0.0), (50.0, 5.0), (100.0, 5.0)))
MIDDLE = Polyline(((0.0, -3.0), (100.0, -3.0)))
BOTTOM = Polyline(((0.0, -10.0), (100.0, -12.0)))
WATER = Polyline(((0.0, -1.0), (100.0, 1.0)))
DEEP_WATER = Polyline(((0.0, 2.0), (100.0, 2.0)))
INTERPOLATED = LayerBetween.INTERPOLATED
NO_PRESSURE = LayerBetween.NO_PRESSURE


def section(top: Polyline | int, border: Polyline | int, bottom: Polyline | int) -> CrossSection:
    return CrossSection(
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


def test_where_a_line_is_vertical_the_level_is_that_of_its_first_point() -> None:
    steps = Polyline(((0.0, 1.0), (0.0, 2.0), (5.0, 2.0), (5.0, -3.0), (5.0, 4.0), (9.0, 0.0)))
    assert steps.levels(np.array([0.0, 5.0, 7.0, 9.0])) == pytest.approx([1.0, 2.0, 2.0, 0.0])
    assert [steps.level(x) for x in (0.0, 5.0, 7.0, 9.0)] == pytest.approx([1.0, 2.0, 2.0, 0.0])


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
    flat = CrossSection(
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
    crossed = CrossSection((LayerBetween(BOTTOM, SURFACE, CLAY, WATER, WATER),), WATER)
    with pytest.raises(WorkerError, match=r"^At x = 20 m the bottom of the layer of Clay lies"):
        crossed.column(20.0, 0.0)


def test_a_side_between_two_on_the_same_level_has_their_pressure() -> None:
    flat = CrossSection(
        (
            LayerBetween(SURFACE, SURFACE, CLAY, WATER, INTERPOLATED),
            LayerBetween(SURFACE, BOTTOM, CLAY, WATER, WATER),
        ),
        WATER,
    )
    plain = CrossSection((LayerBetween(SURFACE, BOTTOM, CLAY, WATER, WATER),), WATER)
    assert flat.column(10.0, 0.0) == plain.column(10.0, 0.0)
