"""Effective stress below loads, and the loads that bring it too low."""

import numpy as np
import pytest
from sembra.local.worker.arrays import Floats
from sembra.local.worker.failures import LocalError, Problems, WorkerError
from sembra.local.worker.ground.mesh import Mesh
from sembra.local.worker.loads.load_steps import LoadStep
from sembra.local.worker.loads.stresses import load_stress
from sembra.local.worker.loads.uniform import UniformLoad

from tests.toolkit.worker.made_column import column
from tests.toolkit.worker.made_material import material

CLAY, SAND = material("Clay"), material("Sand")
GROUND = column((2.0, CLAY), (3.0, SAND), x=7.0)
MESH = Mesh(np.array([0.0, -1.0, -2.0, -5.0]), np.array([0, 0, 0, 1]))
FILL = UniformLoad("Fill", 0, 20.0, 1.5, -1.0)
PIT = UniformLoad("Pit", 5, -20.0, 3.0, 0.0)


def step(effective: Floats, *loads: UniformLoad) -> LoadStep:
    return LoadStep(5.0, effective, loads)


def refused(one: LoadStep) -> LocalError:
    with pytest.raises(LocalError) as caught:
        one.element_stress(GROUND, MESH)
    return caught.value


def test_a_load_acts_at_and_below_its_level() -> None:
    stress = load_stress([FILL, FILL], GROUND, np.array([-0.9, -1.0, -2.0]))
    assert stress == pytest.approx([0.0, 60.0, 60.0])


def test_elements_have_the_mean_of_their_ends() -> None:
    found = step(np.array([0.0, 10.0, 20.0, 50.0]), FILL).element_stress(GROUND, MESH)
    assert found == pytest.approx([5.0, 15.0, 35.0])


def test_the_load_that_lifts_is_named_with_the_worst_place() -> None:
    error = refused(step(np.array([1.0, -2.0, 3.0, -9.0]), FILL, PIT))
    assert str(error) == (
        'The load "Pit" brings the effective stress down to -9.000 kPa at x = 7 m and a level of '
        "-5.000 m, in Sand. Soil needs an effective stress above zero."
    )


def test_a_load_that_has_gone_again_is_not_named() -> None:
    gone = UniformLoad("Fill", 5, -20.0, 1.5, -1.0)
    error = refused(step(np.array([1.0, 2.0, 3.0, -9.0]), FILL, gone))
    assert str(error).startswith("The pore pressure carries more than the weight above it: ")


def test_an_element_without_stress_is_refused() -> None:
    error = refused(step(np.array([1.0, 0.0, 0.0, 9.0]), PIT))
    assert "down to 0.000 kPa at x = 7 m and a level of -2.000 m, in Clay" in str(error)


def test_of_one_cause_the_worst_place_is_told_and_each_cause_once() -> None:
    problems = Problems()
    for worst, load in ((-1.0, PIT), (-4.0, PIT), (-2.0, PIT), (-3.0, FILL)):
        with problems.collecting():
            step(np.array([worst, 2.0, 3.0, 9.0]), load).element_stress(GROUND, MESH)
    with pytest.raises(WorkerError) as caught:
        problems.check()
    message = str(caught.value)
    assert message.count("Pit") == 1
    assert "down to -4.000 kPa" in message
    assert "The pore pressure carries more than the weight above it: it leaves an" in message
