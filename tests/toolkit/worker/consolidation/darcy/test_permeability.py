"""Permeability of the elements as they are compressed, worked out by hand."""

from math import exp

import numpy as np
import pytest
from sembra.local.worker.consolidation.darcy.permeability import Permeability
from sembra.local.worker.ground.material import Conductivity, StorageType
from sembra.local.worker.soil_models.isotache import Isotache
from sembra.local.worker.soil_models.koppejan import Koppejan
from sembra.local.worker.soil_models.soil_model import Elements, SoilModel

from tests.toolkit.worker.consolidation.darcy.layers import (
    CREEPING,
    STIFF,
    UNIT_WEIGHT,
    material,
    options,
)

STRAIN = 0.05


def permeability(
    conductivity: Conductivity, model: type[SoilModel], parameters: dict[str, float]
) -> float:
    elements = Elements([material(parameters)], np.array([100.0]), np.array([150.0]))
    soil = model(elements, options())
    return float(Permeability([conductivity], soil).at(np.array([STRAIN]))[0])


def test_constant() -> None:
    stated = Conductivity(1e-7, 1.0, StorageType.CONSTANT_PERMEABILITY, 0.002, 0.1)
    assert permeability(stated, Koppejan, STIFF) == pytest.approx(0.002 / UNIT_WEIGHT)


def test_falling_with_strain() -> None:
    stated = Conductivity(1e-7, 1.0, StorageType.PERMEABILITY_BY_STRAIN, 0.002, 0.1)
    assert permeability(stated, Koppejan, STIFF) == pytest.approx(0.002 * exp(-0.5) / UNIT_WEIGHT)


def test_by_coefficient_of_koppejan() -> None:
    stated = Conductivity(1e-7, 1.0, StorageType.COEFFICIENT)
    parameters = STIFF | {"cp": 40.0, "cp1": 10.0}
    # Virgin loading leads to 100 kPa at strain 0 from 150 (100 / 150)^(10 / 40) kPa.
    stress = 150 * (100 / 150) ** 0.25 * exp(10 * STRAIN)
    expected = 1e-7 * 86400 / (10 * stress)
    assert permeability(stated, Koppejan, parameters) == pytest.approx(expected)


def test_by_coefficient_of_isotaches() -> None:
    stated = Conductivity(1e-7, 1.0, StorageType.COEFFICIENT)
    stress = 150 * (100 / 150) ** 0.1 * exp(STRAIN / 0.1)
    expected = 1e-7 * 86400 * 0.1 / stress
    assert permeability(stated, Isotache, CREEPING) == pytest.approx(expected)
