"""What the water in drains does to the pore pressure of clusters."""

import functools

import numpy as np
import pytest
from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.drains.equal_drains import Drains
from sembra.local.worker.consolidation.drains.flow import PlaneFlow
from sembra.local.worker.consolidation.drains.water import (
    DrainWater,
    PipeWater,
    ScheduleKind,
    Stage,
    StandingWater,
)
from sembra.local.worker.consolidation.terzaghi.degrees import TerzaghiColumn
from sembra.local.worker.consolidation.terzaghi.dewatering import Drawdown, drawdowns
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.mesh import make_mesh

from tests.toolkit.worker.consolidation.drains.made_drains import RATE, drains
from tests.toolkit.worker.made_column import column
from tests.toolkit.worker.made_material import material
from tests.toolkit.worker.made_options import options

SAND, CLAY = material("Sand", drained=True), material()
GROUND = column((2.0, SAND), (4.0, CLAY))
"""Full of water. The sand keeps the clay away from the surface, near which drains count as full."""

VACUUM = StandingWater(0.0, 40.0)
"""40 kPa less than at rest, at every depth."""


def fall(
    found: Drains, ground: Column = GROUND, *, top: bool = True, bottom: bool = True
) -> list[Drawdown]:
    mesh = make_mesh(ground)
    whole = TerzaghiColumn(ground, mesh, options(top=top, bottom=bottom), found)
    return drawdowns(ground, mesh, found, whole, 10.0)


def lowering(found: Drains, ground: Column = GROUND, *, bottom: bool = True) -> Floats:
    (only,) = fall(found, ground, bottom=bottom)
    return only.lowering


@functools.cache
def steady(rate: float, length: float, *, bottom: bool, cells: int = 1000) -> float:
    """The mean part of the pressure in drains that soil takes on in the end.

    By finite differences for c_v d²u / dz² = r (u - w), over a length with a drained top.

    Args:
        rate: r / c_v, in 1/m².
        length: in metres.
        bottom: whether the bottom is drained too.
        cells: how many parts the length is cut into.
    """
    step = length / cells
    main = np.full(cells, -2.0)
    main[0], main[-1] = -3.0, -3.0 if bottom else -1.0
    matrix = np.diag(main) + np.diag(np.ones(cells - 1), 1) + np.diag(np.ones(cells - 1), -1)
    solution = np.linalg.solve(matrix / step**2 - rate * np.eye(cells), np.full(cells, -rate))
    return float(solution.mean())


@pytest.mark.parametrize("bottom", [True, False])
def test_share_of_an_underpressure_against_finite_differences(bottom: bool) -> None:
    sand, clay = lowering(drains(Stage(0.0, VACUUM)), bottom=bottom)
    assert sand == 0
    assert clay == pytest.approx(40 * steady(RATE, 4.0, bottom=bottom), rel=2e-5)
    # x = 2 sqrt(8 / (4 · 1.578344)) = 2.25136 for two sides: 1 - 0.97808 / 2.25136.
    if bottom:
        assert clay == pytest.approx(40 * 0.565560, rel=2e-5)


def test_share_by_horizontal_permeability() -> None:
    ground = column((2.0, SAND), (4.0, material(horizontal_factor=3.0)))
    found = lowering(drains(Stage(0.0, VACUUM)), ground)
    assert found[1] == pytest.approx(40 * steady(3 * RATE, 4.0, bottom=True), rel=2e-5)


def test_clusters_go_their_own_ways_and_layers_of_one_together() -> None:
    ground = column((2.0, SAND), (1.0, CLAY), (3.0, CLAY), (1.0, SAND), (2.0, CLAY))
    found = lowering(drains(Stage(0.0, VACUUM)), ground)
    upper, lower = steady(RATE, 4.0, bottom=True), steady(RATE, 2.0, bottom=True)
    assert found == pytest.approx([0, 40 * upper, 40 * upper, 0, 40 * lower], rel=2e-5)


def test_drains_lower_what_they_reach_and_slower() -> None:
    # Down to the middle of the clay: half of the difference, by half of half of the rate.
    found = lowering(drains(Stage(0.0, VACUUM), bottom=-4.0))
    assert found[1] == pytest.approx(20 * steady(RATE / 4, 4.0, bottom=True), rel=1e-4)
    assert fall(drains(Stage(0.0, VACUUM), bottom=-1.5)) == []


def difference(found: DrainWater, ground: Column = GROUND) -> float:
    """The mean difference of pressure in the lowest layer, by drains that leave none of it."""
    dense = drains(Stage(0.0, found), flow=PlaneFlow(1.0 + 1e-6, 1.0))
    return float(lowering(dense, ground)[-1])


def test_a_lower_level_by_hand() -> None:
    # The clay lies from -2 to -6, the water falls to -3: by 20 to 30 kPa over the first metre, of
    # which each element counts with its upper node, and by 30 kPa below.
    mesh = make_mesh(GROUND)
    inside = (mesh.levels[:-1] > -3.0) & (mesh.element_layers == 1)
    upper = -10 * mesh.levels[:-1][inside] @ mesh.thicknesses[inside]
    assert 20 < upper < 25
    found = difference(StandingWater(-3.0))
    assert found == pytest.approx((upper + 3 * 30) / 4, rel=2e-5)


def test_a_level_and_an_underpressure_add_up() -> None:
    both = difference(StandingWater(-3.0, 25.0))
    assert both == pytest.approx(difference(StandingWater(-3.0)) + 25, rel=2e-5)


def test_water_around_a_pipe_by_hand() -> None:
    # 50 kPa in a pipe at -7 are 40 kPa at -6, water up to a level of -2.
    assert difference(PipeWater(-7.0, 50.0)) == pytest.approx(20.0, rel=2e-5)
    # With an underpressure the pressure falls to -12 kPa, 1.2 m above where there would be none.
    shallow = difference(PipeWater(-4.0, 0.0, 12.0))
    mesh = make_mesh(GROUND)
    inside = mesh.element_layers == 1
    levels = mesh.levels[:-1][inside]
    expected = -10 * levels - np.maximum((-4 - levels) * 10, -12)
    assert shallow == pytest.approx(expected @ mesh.thicknesses[inside] / 4, rel=2e-5)


def test_above_the_phreatic_line_there_is_no_pressure_to_lower() -> None:
    deep = column((2.0, SAND), (4.0, CLAY), water=-10.0)
    assert difference(StandingWater(-10.0, 40.0), deep) == pytest.approx(40.0, rel=2e-5)
    ground = column((2.0, SAND), (4.0, CLAY), water=-4.0)
    mesh = make_mesh(ground)
    inside = mesh.element_layers == 1
    at_rest = np.maximum(-4 - mesh.levels[:-1][inside], 0.0) * 10
    expected = at_rest @ mesh.thicknesses[inside] / 4
    assert difference(StandingWater(-9.0), ground) == pytest.approx(expected, rel=2e-5)


def test_near_the_surface_drains_count_as_full() -> None:
    ground = column((4.0, CLAY))
    mesh = make_mesh(ground)
    depth = -mesh.levels[:-1]
    expected = np.where(depth < 1.0, -10 * depth, 40.0) @ mesh.thicknesses / mesh.thicknesses.sum()
    assert difference(VACUUM, ground) == pytest.approx(expected, rel=2e-5)
    assert 40 * 3 / 4 - 2 < expected < 40 * 3 / 4


@pytest.mark.parametrize("level", [0.0, 2.0])
@pytest.mark.parametrize("kind", [ScheduleKind.OFF, ScheduleKind.SIMPLE])
def test_drains_that_are_full_do_nothing(kind: ScheduleKind, level: float) -> None:
    assert fall(drains(Stage(0.0, StandingWater(level)), kind=kind)) == []


def test_drains_that_are_more_than_full_raise_the_pressure_in_a_detailed_schedule() -> None:
    found = drains(Stage(3.0, StandingWater(2.0)), kind=ScheduleKind.DETAILED)
    (only,) = fall(found)
    assert only.time == 3.0
    assert only.lowering[1] == pytest.approx(-20 * steady(RATE, 4.0, bottom=True), rel=2e-5)


def test_an_underpressure_acts_in_full_drains() -> None:
    found = lowering(drains(Stage(0.0, StandingWater(2.0, 60.0)), kind=ScheduleKind.SIMPLE))
    assert found[1] == pytest.approx(40 * steady(RATE, 4.0, bottom=True), rel=2e-5)


def test_a_schedule_gives_changes_alone() -> None:
    idle = StandingWater(0.0)
    waters = [idle, VACUUM, VACUUM, idle, idle, VACUUM]
    stages = [Stage(10.0 * index, water) for index, water in enumerate(waters)]
    found = fall(drains(*stages))
    assert [one.time for one in found] == [10.0, 30.0, 50.0]
    full = 40 * steady(RATE, 4.0, bottom=True)
    assert [one.lowering[1] for one in found] == pytest.approx([full, 0, full], rel=2e-5)


def test_dewatering_may_end_at_any_time() -> None:
    # After a minute next to no water has come out.
    found = fall(drains(Stage(10.0, VACUUM), Stage(10.0007, StandingWater(0.0))))
    assert [one.time for one in found] == [10.0, 10.0007]
