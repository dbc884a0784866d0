"""Soil above an imaginary surface, against values worked by hand."""

from math import atan, cos, pi, sin

import numpy as np
import pytest
from sembra.local.worker.ground.cross_section import CrossSection, LayerBetween
from sembra.local.worker.ground.imaginary_surface import make_imaginary_surface
from sembra.local.worker.ground.mesh import make_mesh
from sembra.local.worker.ground.polyline import Polyline
from sembra.local.worker.ground.stresses import soil_effective_stress, soil_stress
from sembra.local.worker.loads.load_steps import load_steps
from sembra.local.worker.loads.uniform import UniformLoad
from sembra.local.worker.spreading.distribution import Distribution, Spreading

from tests.toolkit.worker.input_file import calculated, refused
from tests.toolkit.worker.input_section import two_dimensional
from tests.toolkit.worker.made_material import material
from tests.toolkit.worker.result_file import verticals

CLAY = material(drained=True)  # 15 kN/m³ dry and 18 kN/m³ wet
SPREADING = Spreading(Distribution.BOUSSINESQ, False, 1.0, 1.0, 1.0)


def line(*points: tuple[float, float]) -> Polyline:
    return Polyline(points)


def level(height: float) -> Polyline:
    return line((-1000.0, height), (1000.0, height))


BANK = line((-1000.0, 0.0), (-3.0, 0.0), (-3.0, 2.0), (3.0, 2.0), (3.0, 0.0), (1000.0, 0.0))


def ground(surface: Polyline, water: float) -> CrossSection:
    phreatic_line = level(water)
    above, below = (
        LayerBetween(top, bottom, CLAY, phreatic_line, phreatic_line)
        for top, bottom in ((surface, level(0.0)), (level(0.0), level(-10.0)))
    )
    imaginary = make_imaginary_surface(level(0.0), [above], phreatic_line, SPREADING, 10.0)
    return CrossSection((above, below), phreatic_line, (phreatic_line,), imaginary)


def strip(depth: float) -> float:
    angle = atan(3 / depth)
    return 2 / pi * (angle + sin(angle) * cos(angle))


@pytest.mark.parametrize("depth", [0.5, 2.0, 8.0])
def test_a_bank_spreads_and_the_soil_below_weighs_down(depth: float) -> None:
    column = ground(BANK, -20.0).column(0.0, 0.0)
    stress = soil_stress(column, np.array([1.0, 0.0, -depth]), 10.0)
    assert stress == pytest.approx([15.0, 30.0, 30 * strip(depth) + 15 * depth])


def test_beside_a_bank_there_is_stress_by_it() -> None:
    column = ground(BANK, -20.0).column(5.0, 0.0)
    assert soil_stress(column, np.array([-4.0]), 10.0)[0] > 4 * 15 + 1


@pytest.mark.parametrize("water", [-2.0, 0.5, 4.0])
def test_even_soil_weighs_as_ever(water: float) -> None:
    levels = np.array([1.0, 0.0, -1e-5, -5.0])
    with_it = ground(level(2.0), water)
    without = CrossSection(with_it.layers, with_it.phreatic_line)
    found, expected = (
        soil_stress(one.column(0.0, 0.0), levels, 10.0) for one in (with_it, without)
    )
    assert found == pytest.approx(expected, abs=0.01)


def test_under_water_the_soil_spreads_what_water_does_not_carry() -> None:
    column = ground(BANK, 1.0).column(0.0, 0.0)
    effective = soil_effective_stress(column, np.array([-2.0]), 10.0)
    assert effective == pytest.approx([(15 + 8) * strip(2.0) + 2 * 8])


def test_soil_above_counts_as_an_initial_load() -> None:
    column = ground(BANK, -20.0).column(0.0, 0.0)
    mesh = make_mesh(column)
    load = UniformLoad("Fill", 0, 1.0, 1.0, 0.0)
    assert len(load_steps(column, mesh, np.ones_like(mesh.levels), [load])) == 1


def with_imaginary_surface(layer: int) -> str:
    return two_dimensional().replace(
        "0 : Imaginary surface = FALSE",
        f"1 : Imaginary surface = TRUE\n{layer} = Imaginary surface layer",
    )


def test_from_the_file_to_settlement() -> None:
    texts = (with_imaginary_surface(1), two_dimensional())
    for ours, theirs in zip(*(verticals(calculated(text)) for text in texts), strict=True):
        assert ours["per_load"][-1][-1] == pytest.approx(theirs["per_load"][-1][-1], rel=0.01)


def test_there_is_no_such_layer() -> None:
    assert "there is no layer 2" in refused(with_imaginary_surface(2))
