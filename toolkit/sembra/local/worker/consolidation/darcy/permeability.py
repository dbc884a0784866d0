"""Permeability of the elements as they are compressed.

A material states its permeability k, which it keeps or which falls with the strain e (Taylor 1948),
or its coefficient of consolidation, which stays the same while m_v falls:

    k = k0     or     k = k0 exp(-e / C_k)     or     k = c_v m_v(e) gamma_w

The coefficient of consolidation is divided by the reference time, which is the tool's unit of time
for it.
"""

from collections.abc import Sequence

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.ground.material import Conductivity, StorageType
from sembra.local.worker.soil_models.soil_model import SoilModel


class Permeability:
    """Vertical permeability of elements.

    Args:
        conductivities: What the material of each element states.
        model: The soil model of the elements, which knows their m_v.
    """

    def __init__(self, conductivities: Sequence[Conductivity], model: SoilModel) -> None:
        self._model = model
        self._unit_weight = model.options.water_unit_weight
        self._by_coefficient = np.array([c.kind is StorageType.COEFFICIENT for c in conductivities])
        self._coefficient = (
            np.array([c.vertical_coefficient for c in conductivities])
            / model.options.reference_time
        )
        self._initial = np.array([c.vertical for c in conductivities])
        self._decay = np.array(
            [
                1 / c.strain_modulus if c.kind is StorageType.PERMEABILITY_BY_STRAIN else 0.0
                for c in conductivities
            ]
        )

    def at(self, strain: Floats) -> Floats:
        """Return k / gamma_w at a linear strain of the elements, in m²/(kPa day)."""
        by_coefficient = self._coefficient * self._model.virgin_compressibility(strain)
        stated = self._initial * np.exp(-strain * self._decay) / self._unit_weight
        permeability: Floats = np.where(self._by_coefficient, by_coefficient, stated)
        return permeability
