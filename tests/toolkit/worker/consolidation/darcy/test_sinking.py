"""Loads and soil that come under water as the ground settles, worked out by hand."""

from dataclasses import replace

import numpy as np
import pytest
from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.darcy.sinking import SinkingLoads
from sembra.local.worker.consolidation.interface import Situation
from sembra.local.worker.ground.column import Column, Layer
from sembra.local.worker.ground.mesh import Mesh
from sembra.local.worker.loads.load import Load
from sembra.local.worker.loads.strip_load import Fill, StripLoad
from sembra.local.worker.soil_models.koppejan import Koppejan
from sembra.local.worker.soil_models.soil_model import Elements
from sembra.local.worker.spreading.distribution import Distribution
from sembra.local.worker.spreading.strips import Strips

from tests.toolkit.worker.consolidation.darcy.layers import STIFF, UNIT_WEIGHT, material, options

LEVELS = np.array([0.0, -0.2, -0.5, -3.0, -10.0])
BELOW = slice(2, None)


def embankment(time: float, water_level: float = 0.0) -> StripLoad:
    """Two metres of 16 and 18 kN/m³, so wide that all of it reaches every point."""
    edge = np.array([-1e6]), np.array([1e6])
    strips = Strips(
        *edge, np.array([0.0]), np.array([2.0]), np.array([0.0]), Distribution.BOUSSINESQ
    )
    return StripLoad("Fill", time, strips, Fill(16.0, 18.0, UNIT_WEIGHT), np.array([water_level]))


def situation(loads: list[Load], x: float = 0.0, phreatic_level: float = -0.3) -> Situation:
    """A column of clay of 15 and 18 kN/m³."""
    clay = material(STIFF)
    layer = Layer(0.0, -10.0, clay, phreatic_level, phreatic_level)
    stress = np.full(4, 100.0)
    return Situation(
        column=Column(x, 0.0, (layer,), phreatic_level),
        mesh=Mesh(LEVELS, np.zeros(5, dtype=np.intp)),
        initial=np.full(5, 100.0),
        water=np.zeros(5),
        model=Koppejan(Elements([clay] * 4, stress, stress), options()),
        loads=loads,
        drains=None,
        options=options(),
        wanted_times=(),
    )


def increase(
    loads: list[Load], settlement: float, time: float = 0.0, phreatic_level: float = 5.0
) -> Floats:
    """The increase in a column whose nodes settle by the same; without loss of soil."""
    sinking = SinkingLoads([situation(loads, phreatic_level=phreatic_level)], [100.0])
    (increase,) = sinking.increases(time, np.full((1, 5), settlement))
    return np.asarray(increase)


def test_a_load_loses_weight_as_far_as_it_is_wet() -> None:
    assert increase([embankment(0.0)], 0.0) == pytest.approx(np.full(5, 32.0))
    # Half a metre weighs 18 - 10 instead of 16 kN/m³.
    assert increase([embankment(0.0)], 0.5) == pytest.approx(np.full(5, 32.0 - 0.5 * 8))
    assert increase([embankment(0.0)], 9.0) == pytest.approx(np.full(5, 2 * 8.0))


def test_an_initial_load_counts_by_its_loss_alone() -> None:
    assert increase([embankment(-1.0)], 0.5) == pytest.approx(np.full(5, -0.5 * 8))


def test_loads_that_have_not_come_yet_do_not_count() -> None:
    assert increase([embankment(20.0)], 0.5, time=19.9) == pytest.approx(np.zeros(5))
    assert increase([embankment(20.0)], 0.5, time=20.0) == pytest.approx(np.full(5, 28.0))
    assert increase([embankment(200.0)], 0.5, time=300.0) == pytest.approx(np.zeros(5))


def test_soil_between_the_phreatic_level_and_the_surface_comes_under_water() -> None:
    sinking = SinkingLoads([situation([])], [100.0])
    # The level rises to the surface, and no further: 18 - 10 - 15 kN/m³ for 0.3 m at most.
    assert sinking.increases(0.0, np.full((1, 5), 0.1))[0][BELOW] == pytest.approx(-0.7)
    assert sinking.increases(0.0, np.full((1, 5), 0.5))[0] == pytest.approx(
        [0, -1.4, -2.1, -2.1, -2.1]
    )


def test_the_phreatic_level_rises_by_the_settlement_where_it_is() -> None:
    sinking = SinkingLoads([situation([])], [100.0])
    settlements = np.array([[0.4, 0.4, 0.1, 0.0, 0.0]])
    # 0.3 m lies a third of the way from 0.2 to 0.5 m.
    assert sinking.increases(0.0, settlements)[0][BELOW] == pytest.approx(-7 * 0.3)
    sinking = SinkingLoads([situation([], phreatic_level=-1.0)], [100.0])
    assert sinking.increases(0.0, settlements)[0][3:] == pytest.approx(-7 * 0.08)


def test_free_water_keeps_the_weight_of_the_soil() -> None:
    assert increase([], 0.5, phreatic_level=0.0) == pytest.approx(np.zeros(5))


def test_between_columns_the_surface_is_straight() -> None:
    load = embankment(0.0)
    strips = replace(load.strips, left=np.array([5.0]), right=np.array([7.0]))
    load = replace(load, strips=strips)
    # The settlement at x = 6 m is 0.6 of the way from 0.1 to 0.5 m, whatever order they come in.
    for places, settlements in (([0.0, 10.0], [0.1, 0.5]), ([10.0, 0.0], [0.5, 0.1])):
        columns = [situation([load], x, phreatic_level=5.0) for x in places]
        sinking = SinkingLoads(columns, [100.0])
        found = np.split(sinking.increases(0.0, np.repeat([settlements], 5, axis=1))[0], 2)
        expected = load.submerged(lambda x: np.full_like(x, 0.34)).stress(0.0, 0.0, LEVELS)
        assert found[places.index(0.0)] == pytest.approx(expected)
