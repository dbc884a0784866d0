"""Preconsolidation pressure of the elements of a column, in kPa."""

from collections.abc import Sequence
from dataclasses import dataclass
from enum import IntEnum

import numpy as np

from sembra.local.worker.arrays import Floats


class PreconsolidationType(IntEnum):
    """How a material states its preconsolidation pressure."""

    OCR = 0
    PC = 1
    POP = 2


class PreconsolidationOption(IntEnum):
    """How the preconsolidation pressure varies within a layer and with time."""

    CONSTANT = 0
    CONSTANT_CORRECTED_AT_START = 1
    CONSTANT_CORRECTED_AT_EVERY_STEP = 2
    VARIABLE = 3
    VARIABLE_CORRECTED_AT_START = 4
    VARIABLE_CORRECTED_AT_EVERY_STEP = 5

    @property
    def varies_within_layer(self) -> bool:
        """Whether it runs parallel to the initial effective stress within a layer."""
        return self >= PreconsolidationOption.VARIABLE

    @property
    def corrected_at_every_step(self) -> bool:
        """Whether each load step raises it to the highest stress before that step."""
        return self % 3 == 2


@dataclass(frozen=True)
class StatedPreconsolidation:
    """The preconsolidation of a material: the pressure or margin in kPa, or the ratio."""

    kind: PreconsolidationType
    pc: float
    ocr: float
    pop: float

    def pressure(self, stress: Floats, above_middle: Floats) -> Floats:
        """Return the preconsolidation pressure in kPa.

        Args:
            stress: Initial effective stress, in kPa.
            above_middle: By how much a stated pressure is higher here than in the middle of the
                layer, in kPa.
        """
        match self.kind:
            case PreconsolidationType.OCR:
                return self.ocr * stress
            case PreconsolidationType.POP:
                return self.pop + stress
            case PreconsolidationType.PC:
                return self.pc + above_middle


def preconsolidation_pressure(
    stated: Sequence[StatedPreconsolidation],
    effective: Floats,
    at_middle: Floats,
    option: PreconsolidationOption,
) -> Floats:
    """Return the initial preconsolidation pressure of each element, in kPa.

    A ratio (OCR) or a margin (POP) applies to the initial effective stress of the element. A
    pressure (Pc) holds for the whole layer, or at the middle of the layer with the pressure
    running parallel to the effective stress. The soil can't be in a state beyond its
    preconsolidation, so the initial effective stress is the least value.

    Args:
        stated: What the material of each element states.
        effective: Initial effective stress of each element, in kPa.
        at_middle: That in the middle of the layer that each element belongs to.
        option: Whether Pc varies within a layer.
    """
    above_middle = (effective - at_middle) * option.varies_within_layer
    pressure = [
        one.pressure(stress, above)
        for one, stress, above in zip(stated, effective, above_middle, strict=True)
    ]
    corrected: Floats = np.maximum(pressure, effective)
    return corrected
