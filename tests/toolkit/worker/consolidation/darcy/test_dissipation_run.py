"""Dissipation by Darcy's law, against textbook solutions, by hand, and published results."""

import re
from math import exp, pi

import numpy as np
import pytest
from sembra.local.worker.arrays import Floats
from sembra.local.worker.calculation import calculate
from sembra.local.worker.consolidation.darcy.dissipation_run import LEAST_LOAD, dissipation
from sembra.local.worker.consolidation.interface import Situation
from sembra.local.worker.consolidation.terzaghi.local_degree import local_degree
from sembra.local.worker.ground.column import Column, Layer
from sembra.local.worker.ground.material import Material
from sembra.local.worker.ground.mesh import Mesh
from sembra.local.worker.input import read_project
from sembra.local.worker.soil_models.isotache import Isotache
from sembra.local.worker.soil_models.koppejan import Koppejan
from sembra.local.worker.soil_models.soil_model import Elements, SoilModel

from tests.toolkit.samples import FOLDER, needs_samples
from tests.toolkit.worker.consolidation.darcy.layers import (
    CREEPING,
    INITIAL,
    STIFF,
    UNIT_WEIGHT,
    material,
    options,
)
from tests.toolkit.worker.drain_section import SIMPLE, with_drains
from tests.toolkit.worker.input_file import input_text

PERMEABILITY = 1e-3
COEFFICIENT = PERMEABILITY / UNIT_WEIGHT * STIFF["cp1"] * INITIAL
TIMES = np.concatenate([[0.0], np.geomspace(0.1, 1e3, 201)])
COUNT = 20


def unloaded(
    *clays: Material, model: type[SoilModel] = Koppejan, dry: float = 0.0, bottom: bool = True
) -> Situation:
    """Layers as thick as each other, 10 m in all, dry down to a depth, at 100 kPa everywhere."""
    levels = -np.linspace(0.0, 10.0, COUNT + 1)
    borders = -np.linspace(0.0, 10.0, len(clays) + 1)
    of_elements = np.repeat(np.arange(len(clays)), COUNT // len(clays))
    materials = [clays[number] for number in of_elements]
    stress = np.full(COUNT, INITIAL)
    chosen = options(drained_bottom=bottom)
    layers = tuple(
        Layer(top, low, clay, -dry, -dry)
        for top, low, clay in zip(borders[:-1], borders[1:], clays, strict=True)
    )
    return Situation(
        column=Column(0.0, 0.0, layers, -dry),
        mesh=Mesh(levels, np.append(0, of_elements)),
        initial=np.full(COUNT + 1, INITIAL),
        water=np.zeros(COUNT + 1),
        model=model(Elements(materials, stress, stress), chosen),
        loads=[],
        drains=None,
        options=chosen,
        wanted_times=(),
    )


def degrees(
    situation: Situation, load: float = LEAST_LOAD, *, times: Floats = TIMES, sinking: bool = False
) -> Floats:
    return dissipation(situation, np.full(COUNT + 1, load), times, sinking=sinking)


@pytest.mark.parametrize(("bottom", "path"), [(True, 5.0), (False, 10.0)])
def test_linear_storage_has_the_mean_degree_of_terzaghi(bottom: bool, path: float) -> None:
    (found,) = degrees(unloaded(material(STIFF, PERMEABILITY), bottom=bottom))
    assert found[0] == 0
    waves = [(2 * n + 1) * pi / 2 for n in range(200)]
    expected = [
        1 - sum(2 / wave**2 * exp(-(wave**2) * COEFFICIENT * time / path**2) for wave in waves)
        for time in TIMES
    ]
    assert found[TIMES > 1] == pytest.approx(np.array(expected)[TIMES > 1], abs=0.006)


def test_each_layer_has_its_own_degree() -> None:
    clay = material(STIFF, PERMEABILITY)
    outer, inner, _ = degrees(unloaded(clay, clay, clay, clay))[:3]
    factor = COEFFICIENT * TIMES / 10.0**2
    later = TIMES > 1
    assert outer[later] == pytest.approx(local_degree(factor, 0.0, 0.25)[later], abs=0.02)
    assert inner[later] == pytest.approx(local_degree(factor, 0.25, 0.5)[later], abs=0.02)
    assert np.all(outer[later][:50] > inner[later][:50])


def test_drained_layers_carry_all_from_the_first_time_on() -> None:
    clay, sand = material(STIFF, PERMEABILITY), material(STIFF, drained=True)
    above, between, below, _ = degrees(unloaded(clay, sand, clay, clay))
    assert between[0] == 0
    assert np.all(between[1:] == 1)
    assert above[5] > below[5]


def test_small_loads_count_as_the_least() -> None:
    clay = unloaded(material(CREEPING, 1e-4), model=Isotache)
    least = degrees(clay, LEAST_LOAD)
    assert degrees(clay, 3.0) == pytest.approx(least)
    assert degrees(clay, -50.0) == pytest.approx(least)
    assert np.abs(degrees(clay, 3 * LEAST_LOAD) - least).max() > 0.05


def test_creep_takes_the_degree_back() -> None:
    # Where no water flows out, creep alone changes the pressure.
    (found,) = degrees(unloaded(material(CREEPING, 1e-12), model=Isotache))
    assert np.all(np.diff(found[1:]) < 0)
    assert found[-1] < -0.1


def test_soil_that_sinks_unloads_but_the_load_stays() -> None:
    sand = material({**STIFF, "cp": 0.5, "cp1": 0.5}, drained=True)
    clay = material({**STIFF, "cp": 2e5, "cp1": 2e5}, PERMEABILITY * 1e-4)
    situation = unloaded(sand, clay, dry=4.9)
    times = np.array([0.0, 1.0, 10.0, 100.0])
    resting = degrees(situation, 50.0, times=times)[1]
    from_second_on = degrees(situation, 50.0, times=times[1:] - 1.0)[1]
    sinking = degrees(situation, 50.0, times=times, sinking=True)[1]
    # The phreatic level comes to the surface of sand that is 10 m thick no more: it rises by what
    # the sand below it, 0.1 m, is compressed, ln(1.5) / 0.5 of it. So much more of 15 kN/m³ is at
    # 18 - 10 instead.
    rise = 0.1 * np.log(1.5) / 0.5
    lost = rise * (18.0 - UNIT_WEIGHT - 15.0)
    assert sinking[1] == pytest.approx(resting[1])
    # By superposition: the load, and what it loses from the second time on.
    left = 50.0 * (1 - resting[2:]) + lost * (1 - from_second_on[1:])
    assert sinking[2:] == pytest.approx(1 - left / (50.0 + lost), abs=1e-4)


def test_initial_loads_come_with_the_others_at_time_0() -> None:
    def found(loads: list[tuple[str, float, float, float, float]]) -> Floats:
        text = input_text(
            soils={"Clay": {"SoilDrained": 0, "SoilStorageType": 0}},
            loads=loads,
            model={"Calculation type": 0},
            options={"Dissipation": 1},
        )
        (result,) = calculate(read_project(text), lambda _: None)
        assert result.dissipation is not None
        return result.dissipation.degrees

    parts = found([("A", -1, 30.0, 1.0, 0.0), ("B", 0, 40.0, 1.0, 0.0), ("C", 50, 30.0, 1.0, 0.0)])
    assert parts == pytest.approx(found([("All", 0, 100.0, 1.0, 0.0)]))
    assert np.abs(parts - found([("Half", 0, 50.0, 1.0, 0.0)])).max() > 1e-3


def test_times_begin_anew_where_the_water_in_drains_changes() -> None:
    text = input_text(
        soils={"Clay": {"SoilDrained": 0}},
        phreatic_level=-0.5,
        model={"Calculation type": 0},
        options={"Dissipation": 1},
    )
    (result,) = calculate(read_project(with_drains(text, SIMPLE)), lambda _: None)
    assert result.dissipation is not None
    times, (degrees,) = result.dissipation.times, result.dissipation.degrees
    # Drainage starts on day 1; the drains are pumped from day 10 to day 90.
    for start in (1.0, 10.0, 90.0):
        assert np.isclose(times, start).any()
        assert np.isclose(times, start + 0.1).any()
    while_pumped = (times > 80) & (times <= 90)
    assert np.all(degrees[while_pumped] > 1.01)
    assert degrees[-1] == pytest.approx(1.0, abs=1e-3)


@needs_samples
@pytest.mark.parametrize("name", ["Tutorial-1a", "bm4-7b", "bm4-7c"])
def test_published_dissipation(name: str) -> None:
    results = calculate(read_project((FOLDER / f"{name}.sli").read_text("latin-1")), lambda _: None)
    (ours,) = (result.dissipation for result in results if result.dissipation)
    text = (FOLDER / f"{name}.sld").read_text("latin-1")
    blocks = re.findall(r"\[Dissipation layer\]\s+\d+  =  Layer Number *\n(.*?)\n\[End", text, re.S)
    assert len(blocks) == len(ours.degrees)
    for degree, block in zip(ours.degrees[::-1], blocks, strict=True):
        theirs = np.array([line.split() for line in block.splitlines()], float)
        assert ours.times == pytest.approx(theirs[:, 0])
        assert degree == pytest.approx(theirs[:, 1], abs=4e-4)
