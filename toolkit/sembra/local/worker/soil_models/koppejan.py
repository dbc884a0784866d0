"""The method of Koppejan (1948), as in NEN 6744 and NEN 9997-1.

    strain = (U / Cp  + log10(1 + t / t0) / Cs ) ln(min(s1, pc) / s0)     below preconsolidation
           + (U / Cp' + log10(1 + t / t0) / Cs') ln(s1 / max(s0, pc))     above preconsolidation
           + (U / Ap  + log10(1 + t / t0) / As ) ln(s1 / s0)              unloading, s1 < s0

with s0 and s1 the effective stress before and after a load step, pc the preconsolidation
pressure, t the time since the step, t0 the reference time and U the degree of consolidation, which
holds back primary strain alone. Contributions of load steps are added.
"""

from collections.abc import Sequence
from dataclasses import dataclass

import numpy as np
from numpy.typing import NDArray

from sembra.local.worker.arrays import Floats
from sembra.local.worker.options import Options
from sembra.local.worker.remark import Remark
from sembra.local.worker.soil_models.layer_settlement import LayerSettlement, SettlementParts
from sembra.local.worker.soil_models.soil_model import (
    Elements,
    ParameterValues,
    SoilModel,
    StrainHistory,
    StressStep,
)
from sembra.local.worker.soil_models.stress_path import StressPath, stress_path
from sembra.local.worker.soil_models.unstated_constants import unstated_constants


@dataclass(frozen=True)
class Compressibility:
    """Primary or secular constants of each element: Ap, Cp and Cp', or As, Cs and Cs'."""

    swelling: Floats
    below: Floats
    above: Floats

    def parts(self, path: StressPath) -> StressPath:
        """Return the strain of each kind."""
        return StressPath(
            path.swelling / self.swelling, path.below / self.below, path.above / self.above
        )

    def strain(self, path: StressPath) -> Floats:
        """Return the strain of all kinds together."""
        parts = self.parts(path)
        return parts.swelling + parts.below + parts.above


def secular_factor(time: Floats, reference_time: float) -> Floats:
    """Return log10(1 + t / t0) for times since the load step, 0 before it."""
    return np.log10(1 + np.maximum(time, 0.0) / reference_time)


class Koppejan(SoilModel):
    """Elements with constants of primary and secular compression and swelling."""

    preconsolidation_key = "SoilPreconKoppejanType"

    def __init__(self, elements: Elements, options: Options) -> None:
        super().__init__(elements, options)
        constant = elements.parameter
        self.primary = Compressibility(constant("ap"), constant("cp"), constant("cp1"))
        self.secular = Compressibility(constant("asec"), constant("cs"), constant("cs1"))

    @classmethod
    def read(cls, values: ParameterValues) -> dict[str, float]:
        """Return Cp, Cp', Cs, Cs', Ap and As of a material."""
        cp, cs = values.positive("SoilCp"), values.positive("SoilCs")
        swells_as_compressed = values.switch("SoilApAsApproximationByCpCs")
        return {
            "cp": cp,
            "cp1": values.positive("SoilCp1"),
            "cs": cs,
            "cs1": values.positive("SoilCs1"),
            "ap": cp if swells_as_compressed else values.positive("SoilAp"),
            "asec": cs if swells_as_compressed else values.positive("SoilAsec"),
        }

    @property
    def storage(self) -> Floats:
        """1 / (Cp' pc): the virgin compressibility, below the preconsolidation pressure too."""
        return 1 / (self.primary.above * self.elements.preconsolidation)

    def virgin_compressibility(self, strain: Floats) -> Floats:
        """Return 1 / (Cp' s) at the stress that gives a strain by virgin primary loading."""
        initial, limit = self.elements.initial, self.elements.preconsolidation
        virgin = limit * (initial / limit) ** (self.primary.above / self.primary.below)
        compressibility: Floats = np.exp(-self.primary.above * strain) / (
            self.primary.above * virgin
        )
        return compressibility

    def strains(self, steps: Sequence[StressStep], times: Floats, degrees: Floats) -> Floats:
        """Add up the strains of the load steps: U holds back primary strain alone."""
        result = np.zeros_like(degrees)
        total = np.zeros(degrees.shape[1:])
        paths = self.paths([step.stress for step in steps])
        for index, (step, path) in enumerate(zip(steps, paths, strict=True)):
            secular = secular_factor(times - step.time, self.options.reference_time)
            total += degrees[index] * self.primary.strain(path)
            total += secular[:, None] * self.secular.strain(path)
            result[index] = self.relative_to_initial_height(total)
        return result

    def paths(self, stresses: Sequence[Floats]) -> list[StressPath]:
        """Return the stress path of each of several load steps after one another."""
        path = _Loading(self)
        return [path.load(stress) for stress in stresses]

    def layer_settlements(
        self, stresses: Sequence[Floats], heights: Floats, layers: NDArray[np.intp]
    ) -> tuple[LayerSettlement, ...]:
        """Return the settlement of each layer by all load steps, when all water is out."""
        paths = self.paths(stresses)

        def parts(constants: Compressibility, layer: int) -> SettlementParts:
            inside = heights * (layers == layer)
            strains = [constants.parts(path) for path in paths]
            return SettlementParts(
                swelling=float(sum(strain.swelling @ inside for strain in strains)),
                below=float(sum(strain.below @ inside for strain in strains)),
                above=float(sum(strain.above @ inside for strain in strains)),
            )

        return tuple(
            LayerSettlement(parts(self.primary, layer), parts(self.secular, layer))
            for layer in range(int(layers[-1]) + 1)
        )

    def remarks(self, stresses: Sequence[Floats]) -> list[Remark]:
        """Tell of loading or unloading of a material whose constants nobody has stated."""
        return unstated_constants(self.elements, self.paths(stresses))

    def begin(self) -> StrainHistory:
        """Return the history of the elements at time 0."""
        return _KoppejanHistory(self)


class _Loading:
    """The effective stress of the elements, and the preconsolidation pressure that it has left."""

    def __init__(self, model: Koppejan) -> None:
        self._corrects = model.options.preconsolidation.corrected_at_every_step
        self._stress = model.elements.initial
        self.preconsolidation = model.elements.preconsolidation

    def load(self, stress: Floats) -> StressPath:
        """Change the effective stress. Return the path to it."""
        if self._corrects:
            self.preconsolidation = np.maximum(self.preconsolidation, self._stress)
        path = stress_path(self._stress, stress, self.preconsolidation)
        self._stress = stress
        return path


class _KoppejanHistory(StrainHistory):
    """Elements for which each time step is a load step of its own."""

    def __init__(self, model: Koppejan) -> None:
        self._model = model
        self._loading = _Loading(model)
        self._time = 0.0
        self._starts: list[float] = []
        self._secular: list[Floats] = []
        self._primary = np.zeros_like(model.elements.initial)

    def creep_excess(self, stress: Floats, _duration: float) -> tuple[Floats, Floats]:
        """Return none: secular strain goes on beside consolidation."""
        none = np.zeros_like(stress)
        return none, none

    def advance(self, stress: Floats, duration: float) -> Floats:
        """Go to the end of the step and return the linear strain of the elements there."""
        path = self._loading.load(stress)
        self._primary = self._primary + self._model.primary.strain(path)
        self._secular.append(self._model.secular.strain(path))
        self._starts.append(self._time)
        self._time += duration
        factors = secular_factor(
            self._time - np.array(self._starts), self._model.options.reference_time
        )
        strain = self._primary + factors @ np.array(self._secular)
        return self._model.relative_to_initial_height(strain)
