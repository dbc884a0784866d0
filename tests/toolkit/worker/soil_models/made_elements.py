"""Elements of soil made for the tests of the soil models."""

from collections.abc import Mapping, Sequence

import numpy as np
from sembra.local.worker.arrays import Floats
from sembra.local.worker.soil_models.soil_model import Elements

from tests.toolkit.worker.made_material import material


def elements(
    parameters: Mapping[str, float], initial: Sequence[float], preconsolidation: Sequence[float]
) -> Elements:
    """Elements of one material with initial and preconsolidation stresses in kPa."""
    soil = material(parameters=parameters)
    return Elements([soil] * len(initial), np.array(initial), np.array(preconsolidation))


def consolidated(times: Floats, *starts: float, count: int = 1) -> Floats:
    """Degrees of drained load steps: 0 up to the time of the step, 1 after, for all elements."""
    later = [times > start for start in starts]
    return np.repeat(np.array(later, dtype=np.float64)[:, :, None], count, axis=2)


class Values:
    """The values that an input file states for one material, made up."""

    def __init__(self, **values: float) -> None:
        self._values = values

    def number(self, key: str) -> float:
        """Return a value."""
        return self._values[key]

    def positive(self, key: str) -> float:
        """Return a value that should be greater than zero."""
        assert self._values[key] > 0
        return self._values[key]

    def not_negative(self, key: str) -> float:
        """Return a value that should not be below zero."""
        assert self._values[key] >= 0
        return self._values[key]

    def switch(self, key: str) -> bool:
        """Return a switch."""
        return self._values[key] == 1
