"""Columns made for the tests of consolidation by Darcy's law."""

from collections.abc import Sequence

import numpy as np
from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.darcy.leakage import leakage
from sembra.local.worker.consolidation.darcy.profile import Profile
from sembra.local.worker.consolidation.darcy.run import Course, DarcyRun
from sembra.local.worker.consolidation.drains.equal_drains import Drains
from sembra.local.worker.ground.material import Conductivity, Material, StorageType
from sembra.local.worker.ground.preconsolidation import (
    PreconsolidationOption,
    PreconsolidationType,
    StatedPreconsolidation,
)
from sembra.local.worker.options import Options
from sembra.local.worker.soil_models.soil_model import SoilModel

UNIT_WEIGHT = 10.0
INITIAL = 100.0
CREEPING = {"a": 0.01, "b": 0.1, "c": 0.005}
# No strain to speak of by time, and much the same stiffness below and above preconsolidation.
STIFF = {"cp": 20.0, "cp1": 20.0, "cs": 1e12, "cs1": 1e12, "ap": 20.0, "asec": 1e12}


def material(
    parameters: dict[str, float],
    permeability: float = 1e-4,
    *,
    drained: bool = False,
    horizontal_factor: float = 1.0,
) -> Material:
    """A material with a constant permeability in m/day."""
    conductivity = Conductivity(
        0.0, horizontal_factor, StorageType.CONSTANT_PERMEABILITY, permeability
    )
    stated = StatedPreconsolidation(PreconsolidationType.OCR, 0.0, 1.0, 0.0)
    return Material("Clay", 15.0, 18.0, drained, conductivity, stated, parameters)


def options(*, drained_bottom: bool = True, natural_strain: bool = False) -> Options:
    """Options with water of 10 kN/m³."""
    return Options(
        natural_strain=natural_strain,
        preconsolidation=PreconsolidationOption.CONSTANT,
        drained_top=True,
        drained_bottom=drained_bottom,
        end=1e4,
        reference_time=1.0,
        dissipation_x=None,
        water_unit_weight=UNIT_WEIGHT,
    )


def profile(
    materials: Sequence[Material],
    levels: Floats,
    *,
    overconsolidation: float = 1.0,
    pore_pressure: float = 0.0,
    drains: Drains | None = None,
) -> Profile:
    """A column with the same effective stress of 100 kPa everywhere."""
    count = len(materials)
    return Profile(
        places=np.full(count, 3.0),
        levels=levels,
        materials=materials,
        effective=np.full(count + 1, INITIAL),
        pore_pressure=np.full(count + 1, pore_pressure),
        preconsolidation=np.full(count, INITIAL * overconsolidation),
        leakage=leakage(drains, 0.0, levels, materials),
    )


def loaded(
    column: Profile, load: float, times: Floats, model: type[SoilModel], given: Options
) -> Course:
    """What a load in kPa at time 0 makes of a column."""
    at_nodes = np.full(len(column.levels), load)
    (course,) = DarcyRun([column], model, given, times).run(lambda _step, _settlements: at_nodes)
    return course
