"""Depths at which a column is calculated."""

from itertools import pairwise

import pytest
from sembra.local.worker.errors import WorkerError
from sembra.local.worker.ground.column import Column, Layer
from sembra.local.worker.ground.mesh import make_mesh

from tests.toolkit.worker.made_material import material

CLAY = material(drained=True)


def column(*levels: float, phreatic_level: float = -100.0) -> Column:
    layers = tuple(
        Layer(top, bottom, CLAY, phreatic_level, phreatic_level) for top, bottom in pairwise(levels)
    )
    return Column(0.0, 0.0, layers, phreatic_level)


def test_a_tenth_of_a_metre_in_the_first_metre_and_a_metre_below() -> None:
    levels = make_mesh(column(0.0, -4.0)).levels
    tenths = [-0.1 * k for k in range(1, 11)]
    assert levels == pytest.approx([-1e-5, *tenths, -2, -3, -4], abs=1e-12)


def test_middle_and_phreatic_level_have_nodes() -> None:
    levels = make_mesh(column(10.0, 9.0, 7.8, phreatic_level=8.2)).levels
    assert levels[-4:] == pytest.approx([8.99999, 8.4, 8.2, 7.8])


def test_the_last_step_is_thicker_than_half_a_metre() -> None:
    levels = make_mesh(column(0.0, -6.0, -11.0)).levels
    below = [level for level in levels if level < -6.000005]
    assert below == pytest.approx([-6.00001, -6.9, -7.9, -8.5, -9.4, -10.4, -11.0])


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
    with pytest.raises(WorkerError, match="no deeper"):
        make_mesh(column(0.0, -1e9))
