"""Creep isotaches: the abc model of den Haan (1994), and Bjerrum (1967) in other constants.

    strain = a ln(s / s0) + creep,     d creep / dt = c / tau,     d tau / dt = 1
    tau    = t_ref (sp / s0)^((b - a) / c)                              at the start
    tau   <- tau (s_before / s_after)^((b - a) / c)                     when the stress changes

with s the effective stress, s0 and sp the initial and the preconsolidation stress, t_ref the
reference time, and tau the intrinsic time: the time since a load, seen from where the soil is now.
Over a time dt at constant stress creep grows by c ln((tau + dt) / tau). Without creep (c = 0) its
limit stands in its place: (b - a) ln(s / sp), with s the highest stress so far, where above sp.
"""

from abc import abstractmethod
from collections.abc import Sequence

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.options import Options
from sembra.local.worker.remark import Remark
from sembra.local.worker.soil_models.soil_model import (
    Elements,
    ParameterValues,
    SoilModel,
    StrainHistory,
    StressStep,
)


class CreepIsotaches(SoilModel):
    """Elements with the constants a (reloading), b (virgin loading) and c (creep)."""

    preconsolidation_key = "SoilPreconIsotacheType"
    creeps = True

    def __init__(self, elements: Elements, options: Options) -> None:
        super().__init__(elements, options)
        self.a = elements.parameter("a")
        self.b = elements.parameter("b")
        self.c = elements.parameter("c")

    @classmethod
    @abstractmethod
    def read(cls, values: ParameterValues) -> dict[str, float]:
        """Return a, b and c of a material."""

    @property
    def storage(self) -> Floats:
        """A / sp: the compressibility of reloading at the preconsolidation pressure."""
        return self.a / self.elements.preconsolidation

    def virgin_compressibility(self, strain: Floats) -> Floats:
        """Return b / s at the stress that gives a strain by virgin loading without creep."""
        initial, limit = self.elements.initial, self.elements.preconsolidation
        virgin = limit * (initial / limit) ** (self.a / self.b)
        return self.b / virgin * np.exp(-strain / self.b)

    def strains(self, steps: Sequence[StressStep], times: Floats, degrees: Floats) -> Floats:
        """Superpose drained strains: creep, of own weight too, is held back with the rest."""
        result = np.zeros_like(degrees)
        total = np.zeros(degrees.shape[1:])
        before = np.zeros(degrees.shape[1:])
        state = _Creep(self)
        time = 0.0
        for index, step in enumerate(steps):
            state.rest(step.time - time)
            state.load(step.stress)
            time = step.time
            later = times > time
            drained = before.copy()
            drained[later] = self.relative_to_initial_height(
                self.elastic(step.stress) + state.creep_after(times[later] - time)
            )
            total += degrees[index] * (drained - before)
            result[index] = total
            before = drained
        return result

    def remarks(self, _stresses: Sequence[Floats]) -> list[Remark]:
        """Tell of materials that are softer in reloading than in virgin compression."""
        softer = self.elements.names_where(self.a > self.b)
        what = (
            "softer in reloading than in virgin compression: the constant a (or RR, Cr) should "
            "not be above b (CR, Cc)"
        )
        return [Remark("material", tuple(softer), "are", what)] if softer else []

    def begin(self) -> StrainHistory:
        """Return the history of the elements at time 0."""
        return _IsotacheHistory(self)

    def elastic(self, stress: Floats) -> Floats:
        """Return the strain of reloading or unloading alone, a ln(s / s0)."""
        strain: Floats = self.a * np.log(stress / self.elements.initial)
        return strain


class _IsotacheHistory(StrainHistory):
    """Elements whose stress changes at the beginning of each step, and which then creep."""

    def __init__(self, model: CreepIsotaches) -> None:
        self._model = model
        self._state = _Creep(model)

    def creep_excess(self, stress: Floats, duration: float) -> tuple[Floats, Floats]:
        """Return the growth of creep, kept from happening by the water: divided by the storage."""
        growth, slope = self._state.growth_at(stress, duration)
        storage = self._model.storage
        return growth / storage, slope / storage

    def advance(self, stress: Floats, duration: float) -> Floats:
        """Go to the end of the step and return the linear strain of the elements there."""
        self._state.load(stress)
        self._state.rest(duration)
        return self._model.relative_to_initial_height(
            self._model.elastic(stress) + self._state.creep
        )


class _Creep:
    """The creep of the elements so far, and their intrinsic time, by its logarithm.

    Materials with little creep have intrinsic times beyond all numbers.
    """

    def __init__(self, model: CreepIsotaches) -> None:
        elements = model.elements
        self._creeps = model.c > 0
        self._all_creep = bool(self._creeps.all())
        self._c = np.where(self._creeps, model.c, 1.0)
        self._difference = model.b - model.a
        self._slope = self._difference / self._c
        self._stress = elements.initial
        self._preconsolidation = self._highest = elements.preconsolidation
        self._log_time = np.log(model.options.reference_time) + self._slope * np.log(
            elements.preconsolidation / elements.initial
        )
        self.creep = np.zeros_like(self._c)

    def load(self, stress: Floats) -> None:
        """Change the effective stress at once."""
        self._log_time = self._log_time_at(stress)
        self._stress = stress
        self._highest = np.maximum(self._highest, stress)
        self.creep = np.where(self._creeps, self.creep, self._virgin(self._highest))

    def rest(self, duration: float) -> None:
        """Let time pass at constant stress."""
        growth = self._log_growth(np.array([duration]))[0]
        self.creep = self.creep + np.where(self._creeps, self._c * growth, 0.0)
        self._log_time = self._log_time + growth

    def creep_after(self, durations: Floats) -> Floats:
        """Return the creep after times at constant stress, shape (times, elements)."""
        growth = np.where(self._creeps, self._c * self._log_growth(durations), 0.0)
        return self.creep + growth

    def growth_at(self, stress: Floats, duration: float) -> tuple[Floats, Floats]:
        """Return what a step with a stress adds to the creep, and its derivative by ln(stress)."""
        log_ratio = np.log(duration) - self._log_time_at(stress)
        log_growth = np.logaddexp(0.0, log_ratio)
        creep = self._c * log_growth
        creep_slope = self._difference * np.exp(log_ratio - log_growth)
        if self._all_creep:
            return creep, creep_slope
        virgin = self._virgin(np.maximum(self._highest, stress)) - self._virgin(self._highest)
        virgin_slope = np.where(stress > self._highest, self._difference, 0.0)
        return (
            np.where(self._creeps, creep, virgin),
            np.where(self._creeps, creep_slope, virgin_slope),
        )

    def _log_time_at(self, stress: Floats) -> Floats:
        """Return the logarithm of the intrinsic time once the stress has come to another one."""
        log_time: Floats = self._log_time + self._slope * np.log(self._stress / stress)
        return log_time

    def _log_growth(self, durations: Floats) -> Floats:
        """Return ln((tau + dt) / tau), shape (times, elements)."""
        with np.errstate(divide="ignore"):
            log_durations = np.log(durations)[:, None]
        growth: Floats = np.logaddexp(0.0, log_durations - self._log_time)
        return growth

    def _virgin(self, stress: Floats) -> Floats:
        """Return the limit of creep when a stress is the highest so far."""
        limit: Floats = self._difference * np.log(stress / self._preconsolidation)
        return limit
