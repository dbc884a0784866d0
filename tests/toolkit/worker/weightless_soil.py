"""Projects whose settlements are one formula.

The soil weighs no more than the water in it and stands under an initial load, so that its effective
stress is the same at every depth; it is drained, so that nothing delays its settlement.
"""

from collections.abc import Callable, Sequence
from dataclasses import replace
from math import log, log10

from sembra.local.worker.arrays import Floats
from sembra.local.worker.calculation import calculate
from sembra.local.worker.column_result import ColumnResult, TerzaghiStresses
from sembra.local.worker.consolidation.table import CONSOLIDATIONS
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.mesh import TOP_OFFSET
from sembra.local.worker.ground.polyline import Polyline
from sembra.local.worker.loads.non_uniform import Embankment, Site, strip_loads
from sembra.local.worker.loads.superelevation import MaintainedProfile
from sembra.local.worker.loads.uniform import UniformLoad
from sembra.local.worker.options import Superelevation
from sembra.local.worker.project import Project
from sembra.local.worker.soil_models.koppejan import Koppejan
from sembra.local.worker.spreading.distribution import Distribution, Spreading

from tests.toolkit.worker.made_column import column
from tests.toolkit.worker.made_material import KOPPEJAN, material
from tests.toolkit.worker.made_options import options

WATER, DRY, WET = 10.0, 16.0, 19.0
TERRAIN = 50.0
"""Pressure of the initial load, and so the effective stress of the soil, in kPa."""

THICKNESS, END = 4.0, 9999.0
SOFT = KOPPEJAN | {"cp1": 4.0, "cs1": 40.0}
SOIL = material(dry=WATER, wet=WATER, drained=True, parameters=SOFT)
WIDE = 1e4
"""Half the width of a load whose whole pressure reaches every depth."""


def site(water_level: float = 0.0) -> Site:
    surface, water = (Polyline(((-WIDE, y), (WIDE, y))) for y in (0.0, water_level))
    spreading = Spreading(Distribution.BOUSSINESQ, False, 50.0, 1.0, 1.0)
    return Site(surface, water, WATER, spreading)


def fill(height: float, time: float = 0.0, removal: float | None = None) -> Embankment:
    top = Polyline(((-WIDE, height), (WIDE, height)))
    return Embankment("Fill", time, removal, DRY, WET, top)


def plate(pressure: float, time: float = 0.0) -> UniformLoad:
    return UniformLoad("Plate", time, pressure, 1.0, 0.0)


def project(
    *fills: Embankment,
    pressures: Sequence[UniformLoad] = (),
    water_level: float = 0.0,
    columns: Sequence[Column] | None = None,
    submerging: bool = False,
    superelevation: Superelevation | None = None,
    by_darcy: bool = False,
) -> Project:
    """A project of drained clay by Koppejan under some fills; all water stands at one level."""
    place = site(water_level)
    return Project(
        soil_model=Koppejan,
        consolidation=CONSOLIDATIONS[0 if by_darcy else 1],
        columns=tuple(columns or [column((THICKNESS, SOIL), water=water_level)]),
        loads=(plate(TERRAIN, -1.0), *pressures, *strip_loads(fills, place)),
        options=replace(options(end=END), submerging=submerging, superelevation=superelevation),
        residual_times=(),
        profile=MaintainedProfile(superelevation, fills, place) if superelevation else None,
    )


def calculated(
    project: Project, report: Callable[[float], None] = lambda _: None
) -> list[ColumnResult]:
    return calculate(project, report)


def surface_settlement(result: ColumnResult) -> float:
    return float(result.settlements[-1, 0])


def effective_stress(result: ColumnResult) -> Floats:
    """The effective stress at the nodes in the end."""
    stresses = result.consolidation
    if isinstance(stresses, TerzaghiStresses):
        return stresses.final_total - stresses.final_water
    last: Floats = stresses.effective[-1]
    return last


def virgin(before: float, pressure: float, duration: float, thickness: float = THICKNESS) -> float:
    """Settlement by a pressure that has acted for some days, all of it virgin compression."""
    compliance = 1 / SOFT["cp1"] + log10(1 + duration) / SOFT["cs1"]
    return (thickness - TOP_OFFSET) * compliance * log((before + pressure) / before)


def swelling(before: float, pressure: float, duration: float) -> float:
    """Settlement by the removal of a pressure, negative, some days after it."""
    compliance = 1 / SOFT["ap"] + log10(1 + duration) / SOFT["asec"]
    return (THICKNESS - TOP_OFFSET) * compliance * log((before - pressure) / before)


def fixed_point(function: Callable[[float], float], low: float, high: float) -> float:
    """Return where a function has the value of its argument, by bisection."""
    assert function(low) >= low
    assert function(high) <= high
    for _ in range(100):
        middle = (low + high) / 2
        low, high = (middle, high) if function(middle) > middle else (low, middle)
    return (low + high) / 2
