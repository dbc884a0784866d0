"""Depths at which a column is calculated."""

from dataclasses import replace
from itertools import pairwise

import numpy as np
import pytest
from sembra.local.worker.failures import WorkerError
from sembra.local.worker.ground.column import Column, Layer
from sembra.local.worker.ground.imaginary_surface import SoilAbove
from sembra.local.worker.ground.mesh import make_mesh
from sembra.local.worker.spreading.distribution import Distribution
from sembra.local.worker.spreading.strips import Strips

from tests.toolkit.worker.made_material import material

CLAY = material(drained=True)


def column(
    *levels: float, phreatic_level: float = -100.0, others: tuple[float, ...] = ()
) -> Column:
    layers = tuple(
        Layer(top, bottom, CLAY, phreatic_level, phreatic_level) for top, bottom in pairwise(levels)
    )
    return Column(0.0, 0.0, layers, phreatic_level, others)


def test_a_tenth_of_a_metre_in_the_first_metre_and_a_metre_below() -> None:
    levels = make_mesh(column(0.0, -4.0)).levels
    tenths = [-0.1 * k for k in range(1, 11)]
    assert levels == pytest.approx([-1e-5, *tenths, -2, -3, -4], abs=1e-12)


def test_middle_and_phreatic_level_have_nodes() -> None:
    levels = make_mesh(column(10.0, 9.0, 7.8, phreatic_level=8.2)).levels
    assert levels[-4:] == pytest.approx([8.99999, 8.4, 8.2, 7.8])


@pytest.mark.parametrize(
    ("length", "steps"),
    [
        (1.0, [1.0]),
        (1.5, [0.8, 0.7]),
        (1.6, [0.8, 0.8]),
        (1.975, [0.975, 1.0]),
        (2.015, [0.615, 1.0, 0.4]),
        (2.5, [0.9, 1.0, 0.6]),
        (2.725, [0.925, 1.0, 0.8]),
        (3.0, [1.0, 1.0, 1.0]),
        (3.5, [0.8, 1.0, 1.0, 0.7]),
        (3.7, [1.0, 1.0, 1.0, 0.7]),
        (4.5, [0.9, 1.0, 1.0, 1.0, 0.6]),
        (7.5, [0.6, 0.6, *[1.0] * 6, 0.3]),
        (11.5, [0.5, *[1.0] * 11]),
    ],
)
def test_steps_between_fixed_levels(length: float, steps: list[float]) -> None:
    # The upper half of a layer, at the depth of which the surface doesn't matter.
    levels = make_mesh(column(0.0, -2.0, -2.0 - 2 * length)).levels
    half = [level for level in levels if -2.0 - length - 1e-6 < level < -2.000005]
    assert [upper - lower for upper, lower in pairwise(half)] == pytest.approx(steps, abs=2e-5)


def test_an_interval_at_a_surface_starts_where_the_fine_steps_end() -> None:
    levels = make_mesh(column(0.0, -5.0)).levels
    assert [level for level in levels if level < -0.95] == pytest.approx(
        [-1.0, -1.7, -2.5, -3.4, -4.4, -5.0]
    )


def test_deep_below_the_surface_steps_are_two_metres() -> None:
    levels = make_mesh(column(0.0, -25.0, phreatic_level=-0.5)).levels
    assert [level for level in levels if level < -12.45] == pytest.approx(
        [-12.5, -14.2, -15.2, -16.2, -17.2, -18.2, -20.2, -22.2, -24.2, -25.0]
    )


def test_every_piezometric_level_has_a_node() -> None:
    levels = make_mesh(column(0.0, -20.0, phreatic_level=-1.0, others=(-1.0, -2.282, 3.0))).levels
    assert [level for level in levels if -4.5 < level < -0.95] == pytest.approx(
        [-1.0, -1.682, -2.282, -3.0, -4.0]
    )


def test_an_imaginary_surface_has_tenths_around_it() -> None:
    nothing = np.zeros(1)
    strips = Strips(nothing, nothing + 1, nothing, nothing, nothing, Distribution.BUISMAN)
    above = SoilAbove(0.0, 0.0, strips, nothing)
    levels = make_mesh(replace(column(4.0, 0.0, -5.0), soil_above=above)).levels
    tenths = [0.4, 0.3, 0.2, 0.1, 0.0, -1e-5, -0.1, -0.2, -0.3, -0.4, -0.5]
    assert [level for level in levels if level < 2.95] == pytest.approx(
        [2.0, 1.2, *tenths, -1.5, -2.5, -3.4, -4.4, -5.0], abs=1e-9
    )


def test_thin_element_at_a_border_belongs_to_the_lower_layer() -> None:
    mesh = make_mesh(column(0.0, -0.1, -0.2))
    assert mesh.thicknesses == pytest.approx([0.04999, 0.05, 1e-5, 0.04999, 0.05])
    assert mesh.element_layers.tolist() == [0, 0, 1, 1, 1]


def test_elements_fill_the_column() -> None:
    mesh = make_mesh(column(3.21, 2.9, 1.234, -5.4321, -17.9, phreatic_level=0.77))
    assert mesh.thicknesses.sum() == pytest.approx(3.21 + 17.9 - 1e-5)
    assert (mesh.thicknesses > 0).all()


def test_a_layer_without_thickness_is_refused() -> None:
    with pytest.raises(WorkerError, match="too thin"):
        make_mesh(column(0.0, -1.0, -1.00001, -2.0))


def test_a_column_of_endless_depth_is_refused() -> None:
    with pytest.raises(WorkerError, match="at x = 0 m the ground is deeper"):
        make_mesh(column(0.0, -1e9))
