"""The model of NEN-Bjerrum (Bjerrum 1967; NEN 9997-1), with decimal logarithms.

With natural logarithms it is that of the creep isotaches:

    a = RR / ln 10,   b = CR / ln 10,   c = C_alpha / ln 10

where RR = C_r / (1 + e0) and CR = C_c / (1 + e0) if the material states indices instead of ratios.
C_alpha is one of strain in both cases.
"""

import math

from sembra.local.worker.soil_models.creep_isotaches import CreepIsotaches
from sembra.local.worker.soil_models.soil_model import ParameterValues

_LN_10 = math.log(10)


class Bjerrum(CreepIsotaches):
    """Elements with reloading, compression and creep of decimal logarithms."""

    @classmethod
    def read(cls, values: ParameterValues) -> dict[str, float]:
        """Return a, b and c of a material."""
        if values.switch("SoilCompRatio"):
            reloading, compression = values.positive("SoilRRatio"), values.positive("SoilCRatio")
        else:
            volume = 1 + values.not_negative("SoilInitialVoidRatio")
            reloading = values.positive("SoilCrIndex") / volume
            compression = values.positive("SoilCcIndex") / volume
        return {
            "a": reloading / _LN_10,
            "b": compression / _LN_10,
            "c": values.not_negative("SoilCa") / _LN_10,
        }
