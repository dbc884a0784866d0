"""Consolidation by Darcy's law: from each time to the next.

The load of a step comes at its beginning; its permeability and height are those of the strain at
the beginning. Steps aren't divided any further.
"""

from collections.abc import Callable, Sequence
from dataclasses import dataclass

import numpy as np
from numpy.typing import NDArray

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.darcy.convolution import Convolution
from sembra.local.worker.consolidation.darcy.permeability import Permeability
from sembra.local.worker.consolidation.darcy.profile import Profile, Row
from sembra.local.worker.consolidation.darcy.storage_equation import (
    Conditions,
    NotConvergedError,
    StorageEquation,
)
from sembra.local.worker.failures import LackError, WorkerError, listed
from sembra.local.worker.ground.stresses import LEAST_EFFECTIVE_STRESS
from sembra.local.worker.options import Options
from sembra.local.worker.soil_models.soil_model import Elements, SoilModel

type Loading = Callable[[int, Floats], Floats]
"""Tells the increase of the total stress at the nodes of all profiles, one after another, in kPa.

It is asked once for each step, by the position of the time that the step begins at, with the
settlements of the nodes at that time, in metres.
"""


@dataclass(frozen=True)
class Course:
    """What becomes of a profile in the course of time.

    Attributes:
        strain: Linear strain of the elements, shape (times, elements).
        excess: Excess pore pressure at the nodes in kPa, shape (times, nodes).
        mean_excess: Its mean over the height of each element in kPa, shape (times, elements).
        loading: Increase of the total stress at the nodes by what came before each time in kPa,
            shape (times, nodes).
        sources: Amplitude of the convolution at the ends of the elements, of the step that ends at
            the time, in kPa, shape (times, 2, elements).
        diffusivity: K / (S h²) of the elements in the step that begins at the time in 1/day,
            shape (times, elements); 0 in drained elements.
    """

    strain: Floats
    excess: Floats
    mean_excess: Floats
    loading: Floats
    sources: Floats
    diffusivity: Floats


class DarcyRun:
    """Consolidation of columns together, once.

    Args:
        profiles: The columns.
        soil_model: The soil model of all materials.
        options: The calculation options.
        times: All times, from 0 to the end, in days.

    Raises:
        WorkerError: An element that holds back its water has no permeability.
    """

    def __init__(
        self,
        profiles: Sequence[Profile],
        soil_model: type[SoilModel],
        options: Options,
        times: Floats,
    ) -> None:
        self._count = len(profiles)
        self._options = options
        self._times = times
        self._row = row = Row(profiles, options.drained_bottom)
        self._held = held = ~row.drained
        self._profile = joined = row.profile
        self._initial = row.means(joined.effective)
        self._elements = Elements(joined.materials, self._initial, joined.preconsolidation)
        model = soil_model(self._elements, options)
        self._storage = model.storage
        self._permeability = Permeability(
            [material.conductivity for material in joined.materials], model
        )
        self._check_permeability()
        self._history = model.begin()
        self._nodes = row.nodes[:, held]
        self._equation = StorageEquation(self._nodes, row.free, self._creep_excess)
        self._convolution = Convolution(times, int(held.sum()))
        count, size = len(times), len(row.heights)
        self._stress = self._initial
        self._strain = np.zeros((count, size))
        self._excess = np.zeros((count, len(row.free)))
        self._mean_excess = np.zeros((count, size))
        self._loading = np.zeros((count, len(row.free)))
        self._sources = np.zeros((count, 2, size))
        self._diffusivity = np.zeros((count, size))

    def run(self, loading: Loading) -> list[Course]:
        """Go from the first time to the last, and return the courses of the profiles.

        Raises:
            WorkerError: The equations of a step have no solution that is found.
        """
        self._diffusivity[0] = self._diffusivity_at(self._strain[0])
        for step in range(len(self._times) - 1):
            load = loading(step, self._row.settlements(self._strain[step]))
            try:
                self._go(step, load)
            except NotConvergedError as error:
                raise self._not_converged(step, error.elements) from None
        part = self._row.part
        return [
            Course(
                strain=part(number, self._strain, of_elements=True),
                excess=part(number, self._excess),
                mean_excess=part(number, self._mean_excess, of_elements=True),
                loading=part(number, self._loading),
                sources=part(number, self._sources, of_elements=True),
                diffusivity=part(number, self._diffusivity, of_elements=True),
            )
            for number in range(self._count)
        ]

    def _go(self, step: int, load: Floats) -> None:
        """Go through a step under a load at the nodes."""
        after = step + 1
        duration = self._times[after] - self._times[step]
        self._loading[after] = load
        total = np.maximum(self._initial + self._row.means(load), LEAST_EFFECTIVE_STRESS)
        stress = total.copy()
        if self._held.any():
            stress[self._held] = self._balance(step, total[self._held])
        self._stress = stress
        self._mean_excess[after] = total - stress
        self._strain[after] = self._history.advance(stress, duration)
        self._diffusivity[after] = self._diffusivity_at(self._strain[after])

    def _balance(self, step: int, total: Floats) -> Floats:
        """Return the effective stress of the elements that hold back water, after a step."""
        after, held, nodes = step + 1, self._held, self._nodes
        time, duration = self._times[step], self._times[after] - self._times[step]
        leakages = self._profile.leakage.factors_at(time)[held]
        diffusivity = self._diffusivity[step, held]
        height = self._heights(self._strain[step])[held]
        factors, remembered = self._convolution.begin(diffusivity, leakages)
        balance = self._equation.solve(
            Conditions(
                duration=duration,
                conductance=diffusivity * self._storage[held] * height,
                factors=factors,
                remembered=remembered,
                before=self._excess[step, nodes],
                load=(self._loading[after] - self._loading[step])[nodes],
                leak=4 * diffusivity * leakages * duration,
                in_drains=self._in_drains(time)[nodes],
                total=total,
                stress=self._stress[held],
            )
        )
        self._excess[after] = balance.pressure
        self._convolution.end(balance.source, (balance.pressure - self._excess[step])[nodes])
        self._sources[after][:, held] = balance.source
        return balance.stress

    def _creep_excess(self, stress: Floats, duration: float) -> tuple[Floats, Floats]:
        """Return what creep would make in the elements that hold back water, and its slope."""
        everywhere = self._stress.copy()
        everywhere[self._held] = stress
        excess, slope = self._history.creep_excess(everywhere, duration)
        return excess[self._held], slope[self._held]

    def _heights(self, strain: Floats) -> Floats:
        """Return the heights of the elements, which only natural strain follows."""
        return self._row.heights * (1 - strain * self._options.natural_strain)

    def _diffusivity_at(self, strain: Floats) -> Floats:
        height = self._heights(strain)
        diffusivity = self._permeability.at(strain) / (self._storage * height**2)
        return np.where(self._held, diffusivity, 0.0)

    def _in_drains(self, time: float) -> Floats:
        """Return the pressure in the drains against the initial pore pressure, at the nodes."""
        return self._profile.pressure_in_drains(time, self._options.water_unit_weight)

    def _check_permeability(self) -> None:
        permeability = self._permeability.at(np.zeros_like(self._initial))
        if names := self._elements.names_where(self._held & ~(permeability > 0)):
            raise LackError(
                names, "a permeability or a coefficient of consolidation greater than zero"
            )

    def _not_converged(self, step: int, elements: NDArray[np.bool_]) -> WorkerError:
        """Return the error of a step that is not solved in some of the elements that hold water."""
        where = np.zeros_like(self._held)
        where[self._held] = elements
        places = listed([f"{x:g}" for x in np.unique(self._profile.places[where])])
        return WorkerError(
            f"The consolidation by Darcy's law doesn't converge at x = {places} m in "
            f"{listed(self._elements.names_where(where))}, between {self._times[step]:g} and "
            f"{self._times[step + 1]:g} days. See whether the parameters are as they are meant."
        )
