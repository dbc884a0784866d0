"""Water loads: from other water levels to a load step."""

import numpy as np
import pytest
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.cross_section import CrossSection, LayerBetween
from sembra.local.worker.ground.mesh import make_mesh
from sembra.local.worker.ground.polyline import Polyline
from sembra.local.worker.ground.pore_pressure import pore_pressures_at
from sembra.local.worker.loads.load import Load
from sembra.local.worker.loads.load_steps import load_steps
from sembra.local.worker.loads.uniform import UniformLoad
from sembra.local.worker.loads.water_load import WaterStage, in_the_end, water_loads

from tests.toolkit.worker.embankments import without_uniform_load
from tests.toolkit.worker.input_file import calculated, input_text, refused
from tests.toolkit.worker.input_section import two_dimensional
from tests.toolkit.worker.made_material import material
from tests.toolkit.worker.result_file import verticals

CLAY = material(drained=True)  # 15 kN/m³ dry and 18 kN/m³ wet


def line(level: float) -> Polyline:
    return Polyline(((0.0, level), (10.0, level)))


def ground(phreatic_level: float, deep_level: float | None = None) -> CrossSection:
    deep = line(phreatic_level if deep_level is None else deep_level)
    shallow = line(phreatic_level)
    return CrossSection((LayerBetween(line(0), line(-4), CLAY, shallow, deep),), shallow)


def stage(phreatic_level: float, time: float = 0, deep_level: float | None = None) -> WaterStage:
    return WaterStage(f"Pump {time:g}", time, ground(phreatic_level, deep_level))


def test_lowered_water_presses_by_its_weight_and_the_soil_above_it_gets_lighter() -> None:
    (load,) = water_loads(ground(-1.0), [stage(-3.0)], 10.0)
    # Between the levels 15 instead of 18 - 10 kN/m³.
    expected = [0.0, 0.0, 7.0, 14.0, 14.0]
    assert load.stress(5.0, 0.0, np.array([-0.5, -1, -2, -3, -4])) == pytest.approx(expected)


def test_less_pressure_in_the_deep_presses_only_there() -> None:
    (load,) = water_loads(ground(-1.0), [stage(-1.0, deep_level=-3.0)], 10.0)
    # 30 kPa at the bottom falls to 10 kPa.
    assert load.stress(5.0, 0.0, np.array([-1.0, -4.0])) == pytest.approx([0.0, 20.0])


def test_free_water_only_adds_to_both_stresses() -> None:
    (load,) = water_loads(ground(0.0), [stage(2.0)], 10.0)
    assert load.stress(5.0, 0.0, np.array([-1e-5, -2.0])) == pytest.approx([0.0, 0.0])


def test_each_takes_the_place_of_the_one_before_whatever_their_order() -> None:
    stages = [stage(-1.0, 400), stage(-2.0, 50), stage(-3.0, 200)]
    loads = water_loads(ground(-1.0), stages, 10.0)
    changes = [load.stress(5.0, 0.0, np.array([-4.0]))[0] for load in loads]
    assert [load.time for load in loads] == [50, 200, 400]
    assert changes == pytest.approx([7.0, 7.0, -14.0])


def test_of_several_at_one_time_the_last_counts() -> None:
    loads = water_loads(ground(-1.0), [stage(-2.0, 50), stage(-3.0, 50)], 10.0)
    assert sum(load.stress(5.0, 0.0, np.array([-4.0]))[0] for load in loads) == pytest.approx(14.0)


def column_of(phreatic_level: float) -> Column:
    return ground(phreatic_level).column(5.0, 0.0)


def test_the_water_in_the_end() -> None:
    column = column_of(-1.0)
    loads = water_loads(ground(-1.0), [stage(-2.0, 50), stage(-3.0, 200)], 10.0)
    assert in_the_end(column, []) == column
    level = np.array([-4.0])
    assert pore_pressures_at(in_the_end(column, loads), level, 10.0) == pytest.approx([10.0])


@pytest.mark.parametrize(
    ("times", "other", "steps"),
    [
        ([0], False, [(0, False)]),
        ([0, 9], False, [(0, False), (9, False)]),
        ([9], False, [(0, True), (9, False)]),
        ([0], True, [(0, True), (0, False)]),
        ([], False, [(0, True)]),
    ],
)
def test_alone_one_at_the_start_takes_the_place_of_the_own_weight(
    times: list[float], other: bool, steps: list[tuple[float, bool]]
) -> None:
    column = column_of(-1.0)
    mesh = make_mesh(column)
    initial = np.ones_like(mesh.levels)
    stages = [stage(-2.0 - 0.1 * time, time) for time in times]
    others = [UniformLoad("Fill", 0, 1.0, 1.0, 0.0)] if other else []
    loads: list[Load] = [*water_loads(ground(-1.0), stages, 10.0), *others]
    found = load_steps(column, mesh, initial, loads)
    assert [(step.time, step.is_own_weight) for step in found] == steps


WATER = """[WATER LOADS]
    1 = number of items
Pumping
    {time} = Time
    {line} = Phreatic line
    {layers} = number of items

    {line}    {line} = PL-line top, PL-line bottom
"""


def with_water_load(text: str, *, time: float = 0, line: int = 2, layers: int = 1) -> str:
    text = text.replace("[PIEZO LINES]\n   1 -", "[PIEZO LINES]\n   2 -")
    text = text.replace(
        "[END OF PIEZO LINES]",
        "     2 - PlLine number\n       1 - number of curves\n         1\n[END OF PIEZO LINES]",
    )
    block = WATER.format(time=time, line=line, layers=layers)
    return text.replace("[WATER LOADS]\n    0 = number of items\n", block)


def test_from_the_file_to_settlement() -> None:
    # The water falls from the surface to the bottom, 4 m deep: as much as 7 kPa a metre of depth.
    bare = without_uniform_load(two_dimensional())
    results = verticals(calculated(with_water_load(bare)))[0]
    assert results["counts"][1] == 1
    assert results["per_load"][-1][-1] > 0.05
    assert results["stresses"]["Initial water stress"][-1] == pytest.approx(40.0)
    assert results["stresses"]["Final water stress"][-1] == 0.0
    assert results["stresses"]["Final total stress"][-1] == pytest.approx(60.0)


@pytest.mark.parametrize(
    ("changes", "problem"),
    [
        ({"line": 3}, "piezometric level line 3 does not exist"),
        ({"layers": 2}, 'the water load "Pumping" is not for 1 layers'),
        ({"time": -1}, 'The water load "Pumping" comes at -1 days. That should not be negative.'),
    ],
)
def test_malformed_water_loads(changes: dict[str, int], problem: str) -> None:
    assert problem in refused(with_water_load(two_dimensional(), **changes))


def test_level_ground_has_no_lines_for_them() -> None:
    message = refused(with_water_load(input_text()))
    assert message == "The worker does not cover water loads on one-dimensional models."
