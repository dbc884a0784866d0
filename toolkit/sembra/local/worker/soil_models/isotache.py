"""The Isotache model: the constants a, b and c as den Haan (1994) has them, of natural strain."""

from sembra.local.worker.soil_models.creep_isotaches import CreepIsotaches
from sembra.local.worker.soil_models.soil_model import ParameterValues


class Isotache(CreepIsotaches):
    """Elements whose a, b and c are stated."""

    @classmethod
    def read(cls, values: ParameterValues) -> dict[str, float]:
        """Return a, b and c of a material."""
        return {
            "a": values.positive("SoilPriCompIndex"),
            "b": values.positive("SoilSecCompIndex"),
            "c": values.not_negative("SoilSecCompRate"),
        }

    @property
    def printed_preconsolidation(self) -> None:
        """None: result files of this model don't have it."""
