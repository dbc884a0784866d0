"""Memory of the elements: what the water of all earlier steps does in the present one.

Within a step an element has the source A_i at its end i, while the pressure u_i of that end changes
by du_i. What flows out at an end later on, and what pressure stays inside, are the convolution of
these with the kernels. As the diffusivity g changes from step to step, that of step j holds from
its beginning on, up to which a later one has taken over:

    x_j = g_j (t_k - t_(j-1)),     dF_j = (F(x_j) - F(x_(j+1))) / (x_j - x_(j+1)),     x_(k+1) = 0
    flow_i = sum over j of dD(l) A_i + dO(l) A_i' - exp(-4 l x_j) (dD(0) du_i + dO(0) du_i')
    inside = sum over j of dP(l) mean(A) - exp(-4 l x_j) dP(0) mean(du)

with i' the other end. Arrays with one value for each end have the shape (2, elements).
"""

from dataclasses import dataclass

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.darcy.kernels import FORGOTTEN, Kernels, Response

_CLOSE = 1e-7
_APART = 1e-5


@dataclass(frozen=True)
class Factors:
    """Factors of the present step, one of each for an element: for sources and for changes."""

    source: Kernels
    change: Kernels


@dataclass(frozen=True)
class Remembered:
    """What the earlier steps let flow at each end, and keep inside, as pressures in kPa."""

    flow: Floats
    inside: Floats


class Convolution:
    """The memory of elements.

    Args:
        times: The times at which steps begin and end, in days.
        count: The number of elements.
    """

    def __init__(self, times: Floats, count: int) -> None:
        steps = len(times) - 1
        self._times = times
        self._step = 0
        self._diffusivities = np.zeros((steps, count))
        self._sources = np.zeros((steps, 2, count))
        self._changes = np.zeros((steps, 2, count))
        self._still = Response(np.zeros(count))
        self._leakages = np.zeros(count)
        self._leaking = self._still

    def begin(self, diffusivity: Floats, leakages: Floats) -> tuple[Factors, Remembered]:
        """Begin the next step.

        Args:
            diffusivity: G of the elements in this step, in 1/day.
            leakages: L of the elements.
        """
        self._diffusivities[self._step] = diffusivity
        count = self._step + 1
        since = self._times[count] - self._times[:count]
        ages = self._diffusivities[:count] * since[:, None]
        young = np.flatnonzero(ages.min(axis=1) < FORGOTTEN)
        first = max(int(young[0]) - 1, 0) if len(young) else count - 1
        ages = ages[first:]
        for_source = for_change = _means_over_steps(self._still, ages)
        if leakages.any():
            for_source = _means_over_steps(self._response(leakages), ages)
            for_change = for_change * np.exp(-4 * leakages * ages)
        past = slice(first, self._step)
        flow, inside = _left(Kernels(for_source[:, :-1]), self._sources[past])
        held_back, missing = _left(Kernels(for_change[:, :-1]), self._changes[past])
        return (
            Factors(Kernels(for_source[:, -1]), Kernels(for_change[:, -1])),
            Remembered(flow - held_back, inside - missing),
        )

    def _response(self, leakages: Floats) -> Response:
        """Return the response with leakages, which seldom change."""
        if not np.array_equal(leakages, self._leakages):
            self._leakages, self._leaking = leakages, Response(leakages)
        return self._leaking

    def end(self, sources: Floats, changes: Floats) -> None:
        """End the step with its sources and changes of pressure, shape (2, elements), in kPa."""
        self._sources[self._step] = sources
        self._changes[self._step] = changes
        self._step += 1


def _means_over_steps(response: Response, ages: Floats) -> Floats:
    """Return dD, dO and dP of all steps, shape (3, steps, elements)."""
    values = response.at(ages).values
    later = np.zeros_like(values)
    later[:, :-1] = values[:, 1:]
    spans = ages.copy()
    spans[:-1] -= ages[1:]
    close = np.abs(spans) < _CLOSE * ages
    if close.any():
        later[:, close] = response.at(ages * (1 - _APART)).values[:, close]
        spans[close] = _APART * ages[close]
    values -= later
    values /= spans
    return values


def _left(kernels: Kernels, ends: Floats) -> tuple[Floats, Floats]:
    """Return what flows at the ends and what pressure is inside, by sources or changes at them."""
    flow: Floats = np.einsum("je,jie->ie", kernels.direct, ends)
    flow += np.einsum("je,jie->ie", kernels.other, ends[:, ::-1])
    inside: Floats = np.einsum("je,jie->e", kernels.mean, ends) / 2
    return flow, inside
