"""Labels that don't cover each other."""

from itertools import pairwise

import pytest
from hypothesis import given
from hypothesis import strategies as st
from sembra.local.pictures.spreading import spread

positions = st.lists(st.floats(-100, 100), max_size=12)


def test_positions_far_enough_apart_stay() -> None:
    assert spread([3.0, 0.0, 1.0], 1.0) == [3.0, 0.0, 1.0]


def test_two_positions_that_are_too_close_share_the_move() -> None:
    assert spread([1.0, 1.2, 9.0], 1.0) == pytest.approx([0.6, 1.6, 9.0])


def test_equal_positions_keep_their_order() -> None:
    assert spread([2.0, 2.0, 2.0], 0.5) == pytest.approx([1.5, 2.0, 2.5])


def test_there_may_be_no_positions() -> None:
    assert spread([], 1.0) == []


@given(positions, st.floats(0.01, 10))
def test_neighbours_have_the_gap_and_the_order_stays(wanted: list[float], gap: float) -> None:
    placed = spread(wanted, gap)
    pairs = sorted(zip(wanted, placed, strict=True))
    assert all(high - low >= gap - 1e-9 for (_, low), (_, high) in pairwise(pairs))


@given(positions, st.floats(0.01, 10))
def test_the_labels_as_a_whole_stay_where_they_were(wanted: list[float], gap: float) -> None:
    assert sum(spread(wanted, gap)) == pytest.approx(sum(wanted), abs=1e-6)
