"""Change of pore pressure by the water in drains, against closed solutions."""

import numpy as np
import pytest
from sembra.local.worker.consolidation.drains import DrainWater
from sembra.local.worker.consolidation.drawdown import drawdowns
from sembra.local.worker.consolidation.horizontal_flow import PlaneFlow
from sembra.local.worker.errors import WorkerError

from tests.toolkit.worker.drained_column import FLOW, column, drains, options
from tests.toolkit.worker.made_material import material

LEAKAGE = FLOW.leakage(0.01)
CLAY = column((4.0, material()), water=1.0)
VACUUM = DrainWater(0.0, 1.0, 40.0)


def lowering(*water: DrainWater, top: bool = False, bottom: bool = False) -> list[list[float]]:
    found = drawdowns(CLAY, drains(*water), options(top=top, bottom=bottom))
    return [[step.time, *step.lowering.tolist()] for step in found]


def test_underpressure_reaches_all_of_a_closed_layer() -> None:
    assert lowering(VACUUM) == [[0.0, pytest.approx(40.0)]]


def test_drained_boundaries_keep_their_pressure() -> None:
    x = 4.0 * np.sqrt(LEAKAGE / 0.01)
    one_side = 40 * (1 - np.tanh(x) / x)
    both_sides = 40 * (1 - np.tanh(x / 2) / (x / 2))
    assert lowering(VACUUM, top=True)[0][1] == pytest.approx(one_side, rel=2e-3)
    assert lowering(VACUUM, bottom=True)[0][1] == pytest.approx(one_side, rel=2e-3)
    assert lowering(VACUUM, top=True, bottom=True)[0][1] == pytest.approx(both_sides, rel=2e-3)


def test_lower_head() -> None:
    # Water falls from 1 m above the layer to 1 m below its top. The pressure falls from 10 and 20
    # kPa to nothing at the top and at the new level, and by 20 kPa below that level.
    profile = (10 + 20) / 2 * 1.0 + 20 * 3.0
    assert lowering(DrainWater(0.0, -1.0))[0][1] == pytest.approx(profile / 4, rel=1e-6)


def test_underpressure_acts_below_the_head_alone() -> None:
    profile = (10 + 20) / 2 * 1.0 + (20 + 40) * 3.0
    assert lowering(DrainWater(0.0, -1.0, 40.0))[0][1] == pytest.approx(profile / 4, rel=1e-6)


def test_higher_head_raises_the_pressure() -> None:
    assert lowering(DrainWater(5.0, 3.0)) == [[5.0, pytest.approx(-20.0)]]


def test_schedule_gives_changes_alone() -> None:
    water = [DrainWater(0.0, 1.0), DrainWater(10.0, 1.0, 40.0), DrainWater(20.0, 1.0, 40.0)]
    water += [DrainWater(800.0, 1.0), DrainWater(900.0, 1.0), DrainWater(10000.0, 1.0, 40.0)]
    assert lowering(*water) == [[10.0, pytest.approx(40.0)], [800.0, pytest.approx(0.0, abs=1e-9)]]


def test_dewatering_that_ends_too_early_is_refused() -> None:
    # Consolidation comes to 90 % after ln(10) times the time 1 / leakage.
    enough = 10.0 + np.log(10) / LEAKAGE
    stages = [DrainWater(10.0, 1.0, 40.0), DrainWater(enough + 0.1, 1.0)]
    assert len(lowering(*stages)) == 2
    stages[1] = DrainWater(enough / 2, 1.0)
    message = (
        r"ends before .* at x = 0 m the layer of Clay from 0 m downwards has come to \d\d % con"
    )
    with pytest.raises(WorkerError, match=message):
        lowering(*stages)


def test_dewatering_may_grow_at_any_time() -> None:
    stages = [DrainWater(10.0, 1.0, 20.0), DrainWater(11.0, 1.0, 40.0), DrainWater(12.0, 0.0, 40.0)]
    assert [step[0] for step in lowering(*stages)] == [10.0, 11.0, 12.0]


def test_below_the_drains_the_pressure_falls_towards_a_drained_bottom() -> None:
    stack = column((40.0, material()), (4.0, material()), water=1.0)
    found = drawdowns(stack, drains(VACUUM, bottom=-40.0), options(top=False))
    upper, lower = found[0].lowering
    # The flow through the lower layer is that out of the long upper one at its end.
    width = np.sqrt(0.01 / LEAKAGE)
    at_border = 40 * 4.0 / (4.0 + width)
    assert lower == pytest.approx(at_border / 2, rel=1e-2)
    assert upper == pytest.approx(40 - (40 - at_border) * width / 40, rel=1e-3)


def test_below_the_drains_a_closed_layer_takes_the_pressure_at_its_top() -> None:
    stack = column((4.0, material()), (4.0, material(cv=1e-4)), water=1.0)
    found = drawdowns(stack, drains(VACUUM, bottom=-4.0), options(top=False, bottom=False))
    assert found[0].lowering == pytest.approx([40.0, 40.0])


def test_sand_keeps_its_pressure() -> None:
    stack = column((2.0, material()), (1.0, material(drained=True)), (2.0, material()), water=1.0)
    upper, sand, lower = drawdowns(stack, drains(VACUUM), options(top=False))[0].lowering
    assert sand == 0
    assert 0 < lower < upper < 40


def test_clay_that_the_drains_do_not_reach_keeps_its_pressure() -> None:
    stack = column((2.0, material()), (1.0, material(drained=True)), (2.0, material()), water=1.0)
    found = drawdowns(stack, drains(VACUUM, bottom=-2.5), options())
    assert found[0].lowering[0] > 0
    assert found[0].lowering[1:].tolist() == [0, 0]


def test_a_cut_in_equal_layers_changes_nothing() -> None:
    parts = column((1.0, material()), (3.0, material()), water=1.0)
    found = drawdowns(parts, drains(VACUUM), options())[0].lowering
    assert found @ [0.25, 0.75] == pytest.approx(
        lowering(VACUUM, top=True, bottom=True)[0][1], rel=2e-3
    )


def test_sand_walls() -> None:
    flow = PlaneFlow(1.5)
    x = 2.0 * np.sqrt(flow.leakage(0.01) / 0.01)
    found = drawdowns(CLAY, drains(DrainWater(0.0, -8.0), flow=flow), options())[0].lowering[0]
    assert 0 < found < 30
    deep = column((4.0, material()), water=100.0)
    found = drawdowns(deep, drains(DrainWater(0.0, 90.0), flow=flow), options())[0].lowering[0]
    assert found == pytest.approx(100 * (1 - np.tanh(x) / x), rel=2e-3)
