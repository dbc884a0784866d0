"""The input of a calculation, as read from the input file.

Levels and lengths are in metres, times in days, unit weights in kN/m³, stresses in kPa.
Compression is positive.
"""

from __future__ import annotations

from dataclasses import dataclass
from enum import IntEnum
from typing import Protocol

import numpy as np
from numpy.typing import NDArray

Floats = NDArray[np.float64]

_LEVEL_TOLERANCE = 1e-9
_SECONDS_PER_DAY = 86400.0


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


class Distribution(IntEnum):
    """How the stress below a load of limited width spreads with depth."""

    BUISMAN = 0
    BOUSSINESQ = 1


@dataclass(frozen=True)
class Material:
    """A soil with its Koppejan parameters.

    `cv` is the coefficient of consolidation in m²/s, as the file has it, and `horizontal_factor`
    the ratio of horizontal to vertical permeability. A drained material doesn't hold back its
    water: it consolidates at once.
    """

    name: str
    unit_weight_dry: float
    unit_weight_wet: float
    drained: bool
    cv: float
    preconsolidation_type: PreconsolidationType
    pc: float
    ocr: float
    pop: float
    cp: float
    cp1: float
    cs: float
    cs1: float
    ap: float
    asec: float
    horizontal_factor: float = 1.0

    @property
    def vertical_coefficient(self) -> float:
        """Coefficient of consolidation by vertical flow, c_v in m²/day."""
        return self.cv * _SECONDS_PER_DAY

    @property
    def horizontal_coefficient(self) -> float:
        """Coefficient of consolidation by horizontal flow, c_h in m²/day."""
        return self.vertical_coefficient * self.horizontal_factor


@dataclass(frozen=True)
class Layer:
    """A layer of one column, with the piezometric levels that hold at its top and bottom."""

    top: float
    bottom: float
    material: Material
    head_top: float
    head_bottom: float

    @property
    def thickness(self) -> float:
        """Distance from top to bottom."""
        return self.top - self.bottom


@dataclass(frozen=True)
class Column:
    """The ground below one vertical: layers from top to bottom without gaps."""

    x: float
    z: float
    layers: tuple[Layer, ...]
    phreatic_level: float

    @property
    def surface(self) -> float:
        """Level of the ground surface."""
        return self.layers[0].top


@dataclass(frozen=True)
class UniformLoad:
    """A load of the same weight everywhere, from `level` downwards.

    A load at time -1 is an initial load: it is part of the initial stress and causes no settlement.
    """

    name: str
    time: float
    unit_weight: float
    height: float
    level: float

    @property
    def pressure(self) -> float:
        """Vertical stress below the load."""
        return self.unit_weight * self.height

    @property
    def is_initial(self) -> bool:
        """Whether the load belongs to the initial state."""
        return self.time < 0

    def stress(self, _x: float, levels: Floats, /) -> Floats:
        """Vertical stress at some levels, the same for every x: all of it at and below its own."""
        return np.where(levels <= self.level + _LEVEL_TOLERANCE, self.pressure, 0.0)


class Load(Protocol):
    """Something that changes the vertical stress in the ground at one time, in days."""

    @property
    def name(self) -> str:
        """Name of the load in the input."""

    @property
    def time(self) -> float:
        """When the stress changes; -1 for a load of the initial state."""

    @property
    def is_initial(self) -> bool:
        """Whether the load belongs to the initial state."""

    def stress(self, x: float, levels: Floats, /) -> Floats:
        """Change of the vertical stress at x and each of the levels, in kPa."""


@dataclass(frozen=True)
class Options:
    """Calculation options. `reference_time` is the unit of time of the secular settlement."""

    natural_strain: bool
    preconsolidation: PreconsolidationOption
    drained_top: bool
    drained_bottom: bool
    end: float
    reference_time: float
    dissipation: bool
    water_unit_weight: float
