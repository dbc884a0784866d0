"""Materials made for the tests of the worker."""

from collections.abc import Mapping

from sembra.local.worker.ground.material import Conductivity, Material
from sembra.local.worker.ground.preconsolidation import (
    PreconsolidationType,
    StatedPreconsolidation,
)

SECONDS = 86400.0
KOPPEJAN = {"cp": 50.0, "cp1": 10.0, "cs": 500.0, "cs1": 100.0, "ap": 50.0, "asec": 500.0}


def material(
    name: str = "Clay",
    dry: float = 15.0,
    wet: float = 18.0,
    *,
    cv: float = 0.01,
    drained: bool = False,
    horizontal_factor: float = 1.0,
    parameters: Mapping[str, float] = KOPPEJAN,
) -> Material:
    """A material, of Koppejan's method if not told, with its c_v in m²/day."""
    conductivity = Conductivity(cv / SECONDS, horizontal_factor)
    stated = StatedPreconsolidation(PreconsolidationType.PC, 0.0, 1.0, 0.0)
    return Material(name, dry, wet, drained, conductivity, stated, parameters)
