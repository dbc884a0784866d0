"""How high the columns of a load stand in water, step by step, worked out by hand."""

import numpy as np
import pytest
from sembra.local.worker.consolidation.darcy.wet_columns import WetColumns
from sembra.local.worker.loads.strip_load import Fill, StripLoad
from sembra.local.worker.spreading.distribution import Distribution
from sembra.local.worker.spreading.strips import Strips


def wet_column(
    *,
    height: float = 2.0,
    slope: float = 0.0,
    top_slope: float = 0.0,
    water_level: float = -0.3,
) -> WetColumns:
    """One column of a metre, whose base has the level 0 in the middle."""
    one = np.ones(1)
    strips = Strips(
        left=0 * one,
        right=one,
        base=0 * one,
        height=height * one,
        slope=slope * one,
        distribution=Distribution.BOUSSINESQ,
        top_slope=top_slope * one,
    )
    load = StripLoad("Fill", 0.0, strips, Fill(16.0, 18.0, 10.0), water_level * one)
    return WetColumns([load], 1)


def heights(column: WetColumns, *settlements: float) -> list[float]:
    """Heights in water after settlements, one for each step."""
    there = np.ones((1, 1), dtype=np.bool_)
    return [
        float(column.heights(np.array([[settlement]]), there)[0, 0]) for settlement in settlements
    ]


def test_a_level_column_is_wet_as_far_as_it_has_sunk() -> None:
    found = heights(wet_column(), 0.0, 0.25, 0.4, 1.3, 5.0)
    assert found == pytest.approx([0, 0, 0.1, 1.0, 2.0])


def test_it_dries_again_where_the_ground_heaves() -> None:
    assert heights(wet_column(), 0.0, 0.8, 0.4) == pytest.approx([0, 0.5, 0.1])


def test_parallel_slopes_are_wet_to_the_mean_of_their_ends() -> None:
    # The ends of the base lie 0.1 m below and above the middle; the second is under water too.
    column = wet_column(slope=0.2, top_slope=0.2, water_level=0.3)
    assert heights(column, 0.0, 0.1) == pytest.approx([0.3, 0.4])


def test_a_lead_over_an_end_that_is_full_is_cut_off_once() -> None:
    # The top falls to nothing at the left end, and stands at 0.4 m at the right one.
    column = wet_column(height=0.2, top_slope=0.4)
    # At first the right end is wet by 0.03 m, less than the step of 0.05 m; then the step of
    # 0.04 m is all that it may be ahead, and remains so.
    found = heights(column, 0.0, 0.28, 0.33, 0.37, 0.45, 0.9)
    assert found == pytest.approx([0, 0, 0.015, 0.02, 0.02, 0.02])


def test_a_lead_of_the_lower_end_is_cut_off_once() -> None:
    # The left end lies 0.1 m below the middle, under water from a settlement of 0.2 m on; the
    # right one comes under water at 0.4 m, and only one step before that the left one does too.
    column = wet_column(slope=0.2, top_slope=0.2)
    found = heights(column, 0.0, 0.1, 0.2, 0.26, 0.31, 0.38, 0.39, 0.45, 1.0)
    left = [0, 0, 0, 0, 0, 0.05, 0.06, 0.12, 0.67]
    right = [0, 0, 0, 0, 0, 0, 0, 0.05, 0.6]
    assert found == pytest.approx([(a + b) / 2 for a, b in zip(left, right, strict=True)])


def test_a_lead_from_the_beginning_stays() -> None:
    column = wet_column(slope=0.2, top_slope=0.2, water_level=0.0)
    # The left end is 0.1 m under water, the right one as much above it.
    assert heights(column, 0.0, 0.02, 0.3) == pytest.approx([0.05, 0.06, 0.3])
