"""Balance of water in the nodes during a time step.

Darcy's law carries water from node to node; the elements store it by their elastic compression and
give it off when they creep or are loaded. For the excess pore pressure u at the end of the step,
with i' the element's other end:

    sum over the elements at a node of K / h (u_i - u_i' - flow_i) = 0

where flow_i is the convolution of all steps up to this one. The source of this step is

    A_i = load_i + q - leak (u_i - d_i),     leak = 4 g l dt

with q the excess that creep would make, d the pressure in the drains against the initial one, and
the mean of u within an element counts load and d at once, creep and u in the leakage from the next
step on. Since q depends on the effective stress, the equations are solved by Newton's method in the
logarithm of that stress, which stays positive.
"""

from collections.abc import Callable
from dataclasses import dataclass

import numpy as np
from numpy.typing import NDArray

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.darcy.convolution import Factors, Remembered
from sembra.local.worker.consolidation.darcy.tridiagonal import solve_tridiagonal
from sembra.local.worker.ground.stresses import LEAST_EFFECTIVE_STRESS

_TOLERANCE = 1e-9
_ITERATIONS = 100
_LARGEST_FALL = 3.0


@dataclass(frozen=True)
class Conditions:
    """What holds during a step, for elements or, with shape (2, elements), for their ends.

    Attributes:
        duration: Length of the step, in days.
        conductance: K / h, in m/(kPa day).
        factors: Of this step's sources and changes of pressure.
        remembered: What the steps before have left.
        before: Excess pore pressure at the beginning, at the ends.
        load: Increase of the total stress at the beginning, at the ends.
        leak: Part of the pressure that leaks to the drains.
        in_drains: Pressure in the drains against the initial pore pressure, at the ends.
        total: Effective stress without excess pore pressure.
        stress: Effective stress at the beginning, to start from.
    """

    duration: float
    conductance: Floats
    factors: Factors
    remembered: Remembered
    before: Floats
    load: Floats
    leak: Floats
    in_drains: Floats
    total: Floats
    stress: Floats


@dataclass(frozen=True)
class Balance:
    """The end of a step: u at the nodes, effective stress of the elements, and A at their ends."""

    pressure: Floats
    stress: Floats
    source: Floats


class NotConvergedError(Exception):
    """A step whose equations have no solution that is found.

    Args:
        elements: Which elements have none.
    """

    def __init__(self, elements: NDArray[np.bool_]) -> None:
        super().__init__()
        self.elements = elements


class StorageEquation:
    """The nodes of columns, joined by elements.

    Args:
        nodes: The upper and the lower node of each element, shape (2, elements); a lower node is
            the one after the upper.
        free: The nodes that can have an excess pore pressure.
        creep_excess: As that of `StrainHistory`, for the elements.
    """

    def __init__(
        self,
        nodes: NDArray[np.intp],
        free: NDArray[np.bool_],
        creep_excess: Callable[[Floats, float], tuple[Floats, Floats]],
    ) -> None:
        self._nodes = nodes
        self._free = free
        self._held = ~free
        self._joined = free[nodes[0]] & free[nodes[1]]
        self._creep_excess = creep_excess

    def solve(self, conditions: Conditions) -> Balance:
        """Find the end of a step.

        Raises:
            NotConvergedError: The iteration doesn't converge.
        """
        now = conditions
        source, change = now.factors.source, now.factors.change
        given = now.load + now.leak * now.in_drains
        known = (
            source.direct * given
            + source.other * given[::-1]
            + change.direct * now.before
            + change.other * now.before[::-1]
            + now.remembered.flow
        )
        kept = (
            source.mean * _middle(given) + change.mean * _middle(now.before) + now.remembered.inside
        )
        total = now.total - kept
        carried = 1 - change.mean
        same = 1 + source.direct * now.leak + change.direct
        cross = -1 + source.other * now.leak + change.other
        by_creep = source.direct + source.other
        creeps = by_creep > 0
        tolerance = _TOLERANCE * (1 + np.abs(now.total))
        stress = now.stress
        excess, slope = self._creep_excess(stress, now.duration)
        for _ in range(_ITERATIONS):
            gradient = slope / stress
            constant = excess + gradient * (total - stress)
            coupling = by_creep * gradient * carried / 2
            pressure = self._solve(
                now.conductance * (same + coupling),
                now.conductance * (cross + coupling),
                now.conductance * (known + by_creep * constant),
            )
            ends = pressure[self._nodes]
            wanted = total - carried * _middle(ends)
            linear = constant - gradient * (total - wanted)
            fall = np.maximum(np.minimum(wanted / stress - 1, 0.0), -_LARGEST_FALL)
            stress = np.maximum(
                np.where(wanted > stress, wanted, stress * np.exp(fall)), LEAST_EFFECTIVE_STRESS
            )
            excess, slope = self._creep_excess(stress, now.duration)
            wanted = np.maximum(wanted, LEAST_EFFECTIVE_STRESS)
            error = np.abs(stress - wanted) + np.abs(excess - linear) * creeps
            settled = error <= tolerance
            if np.all(settled):
                return Balance(pressure, wanted, given + excess - now.leak * ends)
        raise NotConvergedError(~settled)

    def _solve(self, same: Floats, cross: Floats, right: Floats) -> Floats:
        """Return the pressure at the nodes, 0 at those that are held."""
        upper, lower = self._nodes
        diagonal = np.zeros(len(self._free))
        beside = np.zeros(len(self._free) - 1)
        target = np.zeros(len(self._free))
        diagonal[upper] += same
        diagonal[lower] += same
        target[upper] += right[0]
        target[lower] += right[1]
        beside[upper] = cross * self._joined
        diagonal[self._held] = 1.0
        target[self._held] = 0.0
        return solve_tridiagonal(diagonal, beside, target)


def _middle(ends: Floats) -> Floats:
    middle: Floats = (ends[0] + ends[1]) / 2
    return middle
