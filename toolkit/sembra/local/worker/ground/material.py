"""What a layer consists of."""

from collections.abc import Mapping
from dataclasses import dataclass, field
from enum import IntEnum

from sembra.local.worker.ground.preconsolidation import StatedPreconsolidation

_SECONDS_PER_DAY = 86400.0


class StorageType(IntEnum):
    """How a material states what holds its water back, for consolidation by Darcy."""

    COEFFICIENT = 0
    CONSTANT_PERMEABILITY = 1
    PERMEABILITY_BY_STRAIN = 2


@dataclass(frozen=True)
class Conductivity:
    """How fast water flows through a material.

    `cv` is the coefficient of consolidation in m²/s, as the file has it; `vertical` the
    permeability in m/day; `strain_modulus` the strain at which it has fallen to 1/e of that, for
    the permeability that varies with strain; and `horizontal_factor` the ratio of horizontal to
    vertical permeability.
    """

    cv: float
    horizontal_factor: float = 1.0
    kind: StorageType = StorageType.CONSTANT_PERMEABILITY
    vertical: float = 0.0
    strain_modulus: float = 1e15

    @property
    def vertical_coefficient(self) -> float:
        """Coefficient of consolidation by vertical flow, c_v in m²/day."""
        return self.cv * _SECONDS_PER_DAY


@dataclass(frozen=True)
class Material:
    """A soil.

    A drained material doesn't hold back its water: it consolidates at once. `parameters` are those
    of the soil model of the file, by the names that the model gives them.
    """

    name: str
    unit_weight_dry: float
    unit_weight_wet: float
    drained: bool
    conductivity: Conductivity
    preconsolidation: StatedPreconsolidation
    parameters: Mapping[str, float] = field(hash=False)
