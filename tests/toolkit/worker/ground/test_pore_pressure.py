"""Pore pressure in a column, against values worked by hand."""

from collections.abc import Sequence

import numpy as np
import pytest
from sembra.local.worker.failures import WorkerError
from sembra.local.worker.ground.column import Column, Layer
from sembra.local.worker.ground.cross_section import CrossSection, LayerBetween
from sembra.local.worker.ground.polyline import Polyline
from sembra.local.worker.ground.pore_pressure import layers_at, pore_pressures_at

from tests.toolkit.worker.made_material import material

CLAY = material(drained=True)
BETWEEN = LayerBetween.INTERPOLATED
NONE = LayerBetween.NO_PRESSURE


def pressures(
    layer: tuple[float, float, float, float],
    phreatic_level: float,
    levels: Sequence[float],
    settlements: float = 0.0,
) -> list[float]:
    """Return the pressures in one layer of a top, bottom, and level of water for each of them."""
    top, bottom, head_top, head_bottom = layer
    column = Column(0.0, 0.0, (Layer(top, bottom, CLAY, head_top, head_bottom),), phreatic_level)
    return list(pore_pressures_at(column, np.array(levels), 10.0, settlements))


def test_hydrostatic_below_the_level_and_zero_above() -> None:
    assert pressures((0, -2, -1, -1), -1.0, [-0.5, -1.0, -1.8]) == pytest.approx([0, 0, 8])


def test_linear_between_two_levels() -> None:
    assert pressures((-2, -6, -1, 1), -1.0, [-2, -3, -6]) == pytest.approx([10, 25, 70])


def test_a_suction_takes_part_in_the_line() -> None:
    # -20 kPa at the top and 60 kPa at the bottom: zero at a quarter.
    assert pressures((0, -4, -2, 2), 1.0, [0, -1, -2, -4]) == pytest.approx([0, 0, 20, 60])


def test_from_the_phreatic_line_where_the_suction_lies_above_it() -> None:
    assert pressures((0, -4, -2, 2), -1.0, [-0.5, -1, -2.5, -4]) == pytest.approx([0, 0, 25, 60])
    assert pressures((0, -4, -2, 2), -2.0, [-1, -2, -3, -4]) == pytest.approx([0, 0, 30, 60])


def test_hydrostatic_below_a_level_under_the_phreatic_line() -> None:
    drawn_down = (0.0, -20.0, -2.0, -2.0)
    assert pressures(drawn_down, -1.0, [-1, -2, -3, -20]) == pytest.approx([0, 0, 10, 180])


def test_a_pressure_above_the_phreatic_line_shapes_the_line_but_does_not_count() -> None:
    assert pressures((0, -4, 1, 3), -1.0, [-0.5, -2, -4]) == pytest.approx([0, 40, 70])


def test_no_pressure_above_the_phreatic_line_at_all() -> None:
    assert pressures((0, -4, 1, 3), -9.0, [0, -2, -4]) == [0, 0, 0]


def test_settlement_brings_points_deeper_below_the_phreatic_line() -> None:
    hydrostatic = (0.0, -2.0, -1.0, -1.0)
    assert pressures(hydrostatic, -1.0, [-0.2, -0.5, -1.5], 0.7) == pytest.approx([0, 2, 12])
    # Dry by its levels, yet below the phreatic line.
    assert pressures((0, -2, 0, -2), 1.0, [-2.0], 0.7) == pytest.approx([7])


def test_heave_lifts_points_out_of_the_water() -> None:
    assert pressures((0, -2, 0, 0), 0.0, [-0.1, -1.0], -0.3) == pytest.approx([0, 7])


def section(*heads: tuple[float | int, float | int], phreatic_level: float) -> CrossSection:
    """Return layers of a metre each from level 0 down; whole numbers are codes."""

    def line(level: float) -> Polyline:
        return Polyline(((0.0, level), (10.0, level)))

    def side(head: float | int) -> Polyline | int:
        return head if isinstance(head, int) else line(head)

    layers = tuple(
        LayerBetween(line(-k), line(-k - 1), CLAY, side(top), side(bottom))
        for k, (top, bottom) in enumerate(heads)
    )
    return CrossSection(layers, line(phreatic_level))


@pytest.mark.parametrize(
    ("heads", "phreatic_level", "expected"),
    [
        # 10 kPa at the top, 70 kPa at 3 m: 20 kPa a metre.
        ([(1.0, BETWEEN), (BETWEEN, BETWEEN), (BETWEEN, 4.0)], 1.0, [10, 30, 50, 70]),
        # A suction of 20 kPa below the phreatic line, 40 kPa at 3 m.
        ([(-2.0, BETWEEN), (BETWEEN, BETWEEN), (BETWEEN, 1.0)], 1.0, [0, 0, 20, 40]),
        # From 0 at the phreatic line 1 m deep to 40 kPa at 3 m.
        ([(-2.0, BETWEEN), (BETWEEN, BETWEEN), (BETWEEN, 1.0)], -1.0, [0, 0, 20, 40]),
        # From 0 at the phreatic line 1.5 m deep to 30 kPa at 3 m.
        ([(-2.0, BETWEEN), (BETWEEN, BETWEEN), (BETWEEN, 0.0)], -1.5, [0, 0, 10, 30]),
        # No pressure at the top.
        ([(NONE, BETWEEN), (BETWEEN, BETWEEN), (BETWEEN, 0.0)], 1.0, [0, 10, 20, 30]),
    ],
)
def test_between_the_nearest_known_pressures(
    heads: list[tuple[float | int, float | int]], phreatic_level: float, expected: list[float]
) -> None:
    column = section(*heads, phreatic_level=phreatic_level).column(5.0, 0.0)
    levels = np.array([0.0, -1.0, -2.0, -3.0])
    assert pore_pressures_at(column, levels, 10.0) == pytest.approx(expected)


def test_nothing_to_interpolate_from() -> None:
    with pytest.raises(WorkerError, match="x = 5 m has nothing to be interpolated from"):
        section((1.0, BETWEEN), phreatic_level=1.0).column(5.0, 0.0)


def test_a_border_belongs_to_the_upper_layer() -> None:
    column = section((0.0, 0.0), (5.0, 5.0), phreatic_level=0.0).column(5.0, 0.0)
    levels = np.array([-0.5, -1.0, -1.00001, -2.0])
    assert layers_at(column, levels).tolist() == [0, 0, 1, 1]
    assert pore_pressures_at(column, levels, 10.0) == pytest.approx([5, 10, 60.0001, 70])
