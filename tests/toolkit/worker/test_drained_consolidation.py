"""Consolidation of columns with drains."""

import numpy as np
import pytest
from sembra.local.worker.consolidation.degrees import degrees_of_consolidation
from sembra.local.worker.consolidation.horizontal_flow import PlaneFlow
from sembra.local.worker.errors import WorkerError

from tests.toolkit.worker.drained_column import FLOW, column, drains
from tests.toolkit.worker.made_material import material

TIMES = np.array([0.0, 1.0, 10.0, 50.0, 200.0])


def balance(times: np.ndarray, leakage: float, cells: int = 400) -> list[float]:
    """Mean degree of 4 m of clay between drained sides, by the balance of flow in both directions.

    It is solved by finite differences in depth and exactly in time.
    """
    step = 4.0 / cells
    main = np.full(cells, -2.0)
    main[[0, -1]] = -3.0
    matrix = np.diag(main) + np.diag(np.ones(cells - 1), 1) + np.diag(np.ones(cells - 1), -1)
    values, vectors = np.linalg.eigh(0.01 * matrix / step**2 - leakage * np.eye(cells))
    start = vectors.T @ np.ones(cells)
    return [1 - float((vectors @ (np.exp(values * t) * start)).mean()) for t in times]


def test_vertical_and_horizontal_flow_together() -> None:
    clay = column((4.0, material(horizontal_factor=2.0)))
    degrees = degrees_of_consolidation(clay, TIMES, True, True, drains())
    assert degrees[0] == pytest.approx(balance(TIMES, FLOW.leakage(0.02)), abs=1e-4)


def test_drains_alone_where_top_and_bottom_hold_water() -> None:
    clay = column((4.0, material()))
    for flow in (FLOW, PlaneFlow(1.5)):
        degrees = degrees_of_consolidation(clay, TIMES, False, False, drains(flow=flow))
        assert degrees[0] == pytest.approx(flow.degree(TIMES, 0.01))


@pytest.mark.parametrize(("load_time", "delay"), [(0.0, 10.0), (4.0, 6.0), (10.0, 0.0), (30.0, 0)])
def test_drains_work_from_their_start_on(load_time: float, delay: float) -> None:
    clay = column((4.0, material()))
    late = degrees_of_consolidation(clay, TIMES, True, True, drains(start=10.0), load_time)
    vertical = degrees_of_consolidation(clay, TIMES, True, True)
    expected = 1 - (1 - vertical) * (1 - FLOW.degree(TIMES - delay, 0.01))
    assert late == pytest.approx(expected)


def test_layers_below_the_drains_drain_vertically_alone() -> None:
    stack = column((2.0, material()), (2.0, material()), (2.0, material()))
    plain = degrees_of_consolidation(stack, TIMES, True, True)
    drained = degrees_of_consolidation(stack, TIMES, True, True, drains(bottom=-3.0))
    whole = degrees_of_consolidation(stack, TIMES, True, True, drains(bottom=-6.0))
    assert drained[0] == pytest.approx(whole[0])
    assert drained[1] == pytest.approx((plain[1] + whole[1]) / 2)
    assert drained[2] == pytest.approx(plain[2])


def test_a_drained_layer_needs_no_drains() -> None:
    sand = column((1.0, material(drained=True, horizontal_factor=0.0)))
    assert degrees_of_consolidation(sand, TIMES[:2], False, False, drains()).tolist() == [[0, 1]]


def test_water_below_the_drains_that_cannot_leave_is_refused() -> None:
    stack = column((2.0, material()), (2.0, material()))
    with pytest.raises(WorkerError, match="Clay at -2 m can drain neither"):
        degrees_of_consolidation(stack, TIMES, False, False, drains(bottom=-2.0))


def test_a_material_without_horizontal_permeability_is_refused() -> None:
    clay = column((2.0, material(horizontal_factor=0.0)))
    with pytest.raises(WorkerError, match="horizontal to vertical permeability greater than zero"):
        degrees_of_consolidation(clay, TIMES, True, True, drains())
    assert degrees_of_consolidation(clay, TIMES, True, True)[0, -1] > 0
