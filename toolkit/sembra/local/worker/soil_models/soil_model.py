"""The one interface of all soil models: from effective stress and time to strain.

A soil model is asked in two ways. Consolidation by Terzaghi's theory superposes the drained strains
of the load steps (`SoilModel.strains`); consolidation by Darcy's law goes from one time to the next
with the effective stress of the moment (`SoilModel.begin`).
"""

from abc import ABC, abstractmethod
from collections.abc import Sequence
from dataclasses import dataclass
from typing import ClassVar, Protocol

import numpy as np
from numpy.typing import NDArray

from sembra.local.worker.arrays import Floats
from sembra.local.worker.ground.material import Material
from sembra.local.worker.options import Options
from sembra.local.worker.remark import Remark
from sembra.local.worker.soil_models.layer_settlement import LayerSettlement


class ParameterValues(Protocol):
    """The values that an input file states for one material, by their keys in the file."""

    def number(self, key: str) -> float:
        """Return a value."""

    def positive(self, key: str) -> float:
        """Return a value that should be greater than zero."""

    def not_negative(self, key: str) -> float:
        """Return a value that should not be below zero."""

    def switch(self, key: str) -> bool:
        """Return a switch."""


@dataclass(frozen=True)
class Elements:
    """The elements of a column, from top to bottom.

    Args:
        materials: The material of each.
        initial: Its initial effective stress, in kPa.
        preconsolidation: Its initial preconsolidation pressure, in kPa, at least `initial`.
    """

    materials: Sequence[Material]
    initial: Floats
    preconsolidation: Floats

    def parameter(self, name: str) -> Floats:
        """Return a parameter of the soil model, for each element."""
        return np.array([material.parameters[name] for material in self.materials])

    def names_where(self, marked: NDArray[np.bool_]) -> list[str]:
        """Return the name of each material of marked elements once, from top to bottom."""
        marks = zip(self.materials, marked, strict=True)
        return list(dict.fromkeys(material.name for material, mark in marks if mark))


@dataclass(frozen=True)
class StressStep:
    """A time in days, and the effective stress of the elements after it without excess, in kPa."""

    time: float
    stress: Floats


class StrainHistory(ABC):
    """Strain from one time to the next under a stress that is only known then (Darcy)."""

    @abstractmethod
    def creep_excess(self, stress: Floats, duration: float) -> tuple[Floats, Floats]:
        """Return the excess pore pressure that creep alone would make in the next step, in kPa.

        Args:
            stress: Effective stress of the elements at the end of the step, in kPa.
            duration: Length of the step, in days.

        Returns:
            The pressure, and its derivative by the logarithm of the stress.
        """

    @abstractmethod
    def advance(self, stress: Floats, duration: float) -> Floats:
        """Go to the end of the step and return the linear strain of the elements there."""


class SoilModel(ABC):
    """A soil model, applied to the elements of one column.

    Args:
        elements: The elements.
        options: The calculation options: strain type, reference time and the correction of the
            preconsolidation pressure.
    """

    preconsolidation_key: ClassVar[str]
    """The key under which a material states how its preconsolidation pressure is meant."""

    creeps: ClassVar[bool] = False
    """Whether creep makes excess pore pressure, so that strain depends on all that was before."""

    def __init__(self, elements: Elements, options: Options) -> None:
        self.elements = elements
        self.options = options

    @classmethod
    @abstractmethod
    def read(cls, values: ParameterValues) -> dict[str, float]:
        """Return the parameters of a material, by the names of this model."""

    @property
    def printed_preconsolidation(self) -> Floats | None:
        """The preconsolidation pressure that result files show, or None if they don't, in kPa."""
        return self.elements.preconsolidation

    @property
    @abstractmethod
    def storage(self) -> Floats:
        """Elastic compressibility of each element, that the water is stored by, in 1/kPa."""

    @abstractmethod
    def virgin_compressibility(self, strain: Floats) -> Floats:
        """Return the coefficient of volume compressibility m_v at a strain, in 1/kPa."""

    @abstractmethod
    def strains(self, steps: Sequence[StressStep], times: Floats, degrees: Floats) -> Floats:
        """Return the strain by the first load step, the first two, and so on.

        Args:
            steps: The load steps in the order of time.
            times: Times in days.
            degrees: Degree of consolidation for the load of each step, shape (steps, times,
                elements), 0 up to the time of the step.

        Returns:
            Strain relative to the initial height, shape (steps, times, elements).
        """

    @abstractmethod
    def begin(self) -> StrainHistory:
        """Return the history of the elements at time 0, when they have no strain yet."""

    def remarks(self, _stresses: Sequence[Floats], /) -> list[Remark]:
        """Return what the user should know about the parameters.

        Args:
            stresses: Effective stress of the elements after each load step, in kPa.
        """
        return []

    def layer_settlements(
        self, _stresses: Sequence[Floats], _heights: Floats, _layers: NDArray[np.intp], /
    ) -> tuple[LayerSettlement, ...] | None:
        """Return the settlement of each layer by kind, if the model tells kinds apart.

        Args:
            stresses: Effective stress of the elements after each load step, in kPa.
            heights: Initial height of each element, in metres.
            layers: The layer of each element, from 0 at the top.
        """
        return None

    def relative_to_initial_height(self, strain: Floats) -> Floats:
        """Return linear strain, out of natural (Hencky) strain if that is the strain type."""
        return -np.expm1(-strain) if self.options.natural_strain else strain
