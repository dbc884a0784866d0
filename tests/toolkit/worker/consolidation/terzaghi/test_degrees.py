"""Degrees of consolidation of a column, with drains and without."""

import numpy as np
import pytest
from sembra.local.worker.consolidation.drains.equal_drains import Drains
from sembra.local.worker.consolidation.drains.flow import PlaneFlow
from sembra.local.worker.consolidation.terzaghi.degrees import TerzaghiColumn, mean_degree
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.mesh import make_mesh

from tests.toolkit.worker.consolidation.drains.made_drains import RATE, drains
from tests.toolkit.worker.made_column import column
from tests.toolkit.worker.made_material import material
from tests.toolkit.worker.made_options import options

TIMES = np.array([0.0, 1.0, 10.0, 50.0, 200.0])
SAND = material("Sand", drained=True, cv=0.0)
CLAY = material()


def terzaghi(
    ground: Column,
    found: Drains | None = None,
    *,
    top: bool = True,
    bottom: bool = True,
    reference_time: float = 1.0,
) -> TerzaghiColumn:
    chosen = options(top=top, bottom=bottom, reference_time=reference_time)
    return TerzaghiColumn(ground, make_mesh(ground), chosen, found)


def test_textbook_half_of_consolidation() -> None:
    # c_v t / h² = 0.197, with h = 2 m to the nearer of two drained sides.
    time = 0.197 * 2.0**2 / 0.01
    found = terzaghi(column((4.0, CLAY))).degrees(np.array([time]), 0.0)
    assert found == pytest.approx(np.array([[0.5]]), abs=1e-3)


def test_all_layers_of_a_cluster_have_its_mean() -> None:
    # 10 + 20 in h / sqrt(c_v), as 3 m of one clay.
    stack = terzaghi(column((1.0, CLAY), (4.0, material(cv=0.04))))
    upper, lower = stack.degrees(TIMES, 0.0)
    assert upper.tolist() == lower.tolist()
    assert upper == pytest.approx(mean_degree(TIMES / (30 - 1e-4) ** 2))


@pytest.mark.parametrize("sides", [(True, False), (False, True), (False, False)])
def test_undrained_sides_double_the_length(sides: tuple[bool, bool]) -> None:
    found = terzaghi(column((2.0, CLAY)), top=sides[0], bottom=sides[1]).degrees(TIMES, 0.0)
    assert found[0] == pytest.approx(mean_degree(TIMES / (2 * (20 - 1e-4)) ** 2))


def test_clusters_go_their_own_ways() -> None:
    stack = terzaghi(column((1.0, CLAY), (1.0, SAND), (3.0, CLAY)), bottom=False)
    upper, sand, lower = stack.degrees(TIMES, 0.0)
    assert upper == pytest.approx(mean_degree(TIMES / (10 - 1e-4) ** 2))
    assert sand.tolist() == [0, 1, 1, 1, 1]
    assert lower == pytest.approx(mean_degree(TIMES / 60**2))


def test_time_counts_from_the_load() -> None:
    stack = terzaghi(column((1.0, CLAY), (1.0, SAND)))
    late = stack.degrees(TIMES + 30.0, 30.0)
    assert late == pytest.approx(stack.degrees(TIMES, 0.0))
    before = stack.degrees(np.array([0.0, 29.0, 30.0]), 30.0)
    assert before.tolist() == [[0, 0, 0], [0, 0, 0]]


def test_time_counts_in_reference_times() -> None:
    ground = column((4.0, CLAY))
    for found in (None, drains()):
        slow = terzaghi(ground, found, reference_time=4.0).degrees(4 * TIMES, 0.0)
        assert slow == pytest.approx(terzaghi(ground, found).degrees(TIMES, 0.0))


def balance(times: np.ndarray, leakage: float, cells: int = 320) -> list[float]:
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
    clay = terzaghi(column((4.0, material(horizontal_factor=2.0))), drains())
    expected = balance(TIMES, RATE * 0.02)
    assert clay.degrees(TIMES, 0.0)[0] == pytest.approx(expected, abs=1e-4)


def test_rate_of_a_cluster_by_hand() -> None:
    # Drains go through the upper layer and half of the lower one. (3 / 20)² = 0.0225 m²/day.
    stack = column((1.0, material(cv=0.01, horizontal_factor=2.0)), (2.0, material(cv=0.04)))
    found = terzaghi(stack, drains(bottom=-2.0))
    (cluster,) = found.clusters
    part, factor = (1 + 1) / 3, (2 * 1 + 1 * 1) / 3
    assert found.drain_rate(cluster) == pytest.approx(part * factor * RATE * 0.0225, rel=2e-5)


def test_without_drains_none_flows_to_them() -> None:
    plain = terzaghi(column((4.0, CLAY)))
    assert [plain.drain_rate(cluster) for cluster in plain.clusters] == [0.0]


def test_drains_that_do_not_reach_a_cluster() -> None:
    ground = column((1.0, CLAY), (1.0, SAND), (3.0, CLAY))
    upper, _, lower = terzaghi(ground, drains(bottom=-1.5)).degrees(TIMES, 0.0)
    plain = terzaghi(ground).degrees(TIMES, 0.0)
    assert np.all(upper[1:] > plain[0, 1:])
    assert lower.tolist() == plain[2].tolist()


def test_sand_walls() -> None:
    clay = terzaghi(column((4.0, CLAY)), drains(flow=PlaneFlow(1.7, 0.2)))
    left = 1 - terzaghi(column((4.0, CLAY))).degrees(TIMES, 0.0)
    found = clay.degrees(TIMES, 0.0)
    assert 1 - found[:, 1:] == pytest.approx(left[:, 1:] * np.exp(-0.12 / 1.5**2 * TIMES[1:]))


def test_beside_the_drains_they_act_less() -> None:
    found = [
        terzaghi(column((4.0, CLAY), x=x), drains()).degrees(TIMES, 0.0)[0, -2]
        for x in (0.0, 10.5, 11.0, 13.0, 1e4)
    ]
    plain = terzaghi(column((4.0, CLAY))).degrees(TIMES, 0.0)[0, -2]
    assert found[0] == found[1] > found[2] > found[3] > found[4]
    assert found[4] == pytest.approx(plain, rel=1e-5)


@pytest.mark.parametrize(("load_time", "delay"), [(0.0, 10.0), (4.0, 6.0), (10.0, 0.0), (30.0, 0)])
def test_drains_work_from_their_start_on(load_time: float, delay: float) -> None:
    times = load_time + TIMES[1:]
    late = terzaghi(column((4.0, CLAY)), drains(start=10.0)).degrees(times, load_time)
    vertical = terzaghi(column((4.0, CLAY))).degrees(times, load_time)
    flowing = np.maximum(TIMES[1:] - delay, 0.0)
    assert 1 - late == pytest.approx((1 - vertical) * np.exp(-RATE * 0.01 * flowing), rel=1e-6)
