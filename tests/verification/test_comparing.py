"""Differences between results."""

import numpy as np
import pytest

from tests.verification.made_verticals import vertical
from verification.comparing import MEASURES, compare, worst


def test_equal_results_do_not_differ() -> None:
    (difference,) = compare([vertical()], [vertical()])
    assert [getattr(difference, measure) for measure in MEASURES] == [0.0] * len(MEASURES)
    assert difference.same_times
    assert difference.same_nodes
    assert difference.missing == []


def test_settlements_count_by_the_final_one() -> None:
    (difference,) = compare([vertical(2.0)], [vertical(2.02)])
    assert difference.final == difference.curve == difference.depth == pytest.approx(1.0)
    assert difference.loads == pytest.approx(1.0)
    assert difference.residual == pytest.approx(0.5)


def test_a_vertical_that_hardly_settles_counts_by_the_largest() -> None:
    small, large = compare([vertical(0.01), vertical(1.0)], [vertical(0.02), vertical(1.0)])
    assert small.final == pytest.approx(1.0)
    assert large.final == 0.0
    (above,) = compare([vertical(0.03)], [vertical(0.06)])
    assert above.final == pytest.approx(100.0)


def test_one_wrong_point_of_a_curve_is_found() -> None:
    settlements = vertical().settlements.copy()
    settlements[1, 0] += 0.02
    (difference,) = compare([vertical()], [vertical(settlements=settlements)])
    assert (difference.final, difference.loads) == (0.0, 0.0)
    assert difference.curve == difference.depth == pytest.approx(2.0)


def test_stresses_count_by_the_largest_of_their_kind() -> None:
    ours = vertical(
        initial_stress=np.array([0.0, 21.0]),
        final_stress=np.array([57.0, 70.0]),
        preconsolidation=np.array([10.0, 0.0]),
    )
    (difference,) = compare([vertical()], [ours])
    assert difference.stresses == 0.0
    assert difference.initial_stress == pytest.approx(5.0)
    assert difference.final_stress == pytest.approx(10.0)
    assert difference.preconsolidation == 0.0


def test_kinds_of_settlement_count_by_the_final_one() -> None:
    (difference,) = compare([vertical(2.0)], [vertical(2.0, kinds=vertical(2.02).kinds)])
    assert difference.kinds == pytest.approx(0.5)
    assert difference.final == 0.0
    more = np.zeros((2, 6))
    (difference,) = compare([vertical()], [vertical(kinds=more)])
    assert difference.missing == ["kinds of 2 layers instead of 1"]


def test_dissipation_counts_by_full_consolidation() -> None:
    degrees = vertical().dissipation
    assert degrees is not None
    wrong = degrees.copy()
    wrong[1, 2] += 0.007
    (difference,) = compare([vertical()], [vertical(dissipation=wrong)])
    assert difference.dissipation == pytest.approx(0.7)
    (difference,) = compare([vertical()], [vertical(dissipation=degrees[[0, 2]])])
    # Without the row of one day, a tenth of 0.9 and of 1 stands there, instead of 0.3 and 0.4.
    assert difference.dissipation == pytest.approx(30.0)
    (difference,) = compare([vertical()], [vertical(dissipation=degrees[:, :2])])
    assert difference.missing == ["dissipation of 1 layers instead of 2"]
    (difference,) = compare([vertical()], [vertical(dissipation=None)])
    assert difference.missing == ["no dissipation"]


def test_stresses_of_every_time_are_compared() -> None:
    stresses = vertical().stresses.copy()
    stresses[1, 0] += 0.7
    (difference,) = compare([vertical()], [vertical(stresses=stresses)])
    assert (difference.initial_stress, difference.final_stress) == (0.0, 0.0)
    assert difference.stresses == pytest.approx(1.0)


def test_other_nodes_and_times_are_interpolated_and_told() -> None:
    ours = vertical(
        depths=np.array([0.0, -1.0, -2.0]),
        settlements=np.array([[0.0, 0.0, 0.0], [0.5, 0.25, 0.0], [1.0, 0.5, 0.0]]),
        stresses=np.array([[0.0, 10.0, 20.0], [50.0, 60.0, 70.0], [50.0, 60.0, 70.0]]),
        initial_stress=np.array([0.0, 10.0, 20.0]),
        final_stress=np.array([50.0, 60.0, 70.0]),
        preconsolidation=np.array([10.0, 5.0, 0.0]),
    )
    (difference,) = compare([vertical()], [ours])
    assert (difference.same_times, difference.same_nodes) == (True, False)
    assert difference.depth == difference.final_stress == 0.0
    later = vertical(
        times=np.array([0.0, 2.0, 10.0]),
        settlements=np.array([[0.0, 0.0], [1.0, 0.0], [1.0, 0.0]]),
        stresses=np.array([[0.0, 20.0], [100.0, 120.0], [50.0, 70.0]]),
        loads=np.array([[0.0, 0.0], [0.5, 1.0], [0.5, 1.0]]),
    )
    (difference,) = compare([vertical()], [later])
    assert (difference.same_times, difference.same_nodes) == (False, True)
    assert difference.curve == difference.loads == difference.stresses == 0.0


def test_what_one_file_lacks_is_told() -> None:
    bare = vertical(loads=None, initial_stress=None, residual=np.empty((0, 3)))
    (difference,) = compare([vertical()], [bare])
    assert difference.missing == [
        "no settlement per load",
        "0 residual times instead of 1",
        "no initial stress",
    ]
    (difference,) = compare([bare], [vertical(loads=np.zeros((3, 1)))])
    assert "settlement per load, not published" in difference.missing
    (difference,) = compare([vertical()], [vertical(loads=np.zeros((3, 1)))])
    assert difference.missing == ["1 load steps instead of 2"]


def test_another_number_of_verticals() -> None:
    with pytest.raises(ValueError, match="1 verticals instead of 2"):
        compare([vertical(), vertical()], [vertical()])


def test_the_worst_of_all_verticals() -> None:
    both = compare([vertical(), vertical()], [vertical(1.01), vertical(1.03, loads=None)])
    assert worst(both).final == pytest.approx(3.0)
    assert worst(both).missing == ["vertical 2: no settlement per load"]
    assert worst(both).loads == pytest.approx(1.0)
