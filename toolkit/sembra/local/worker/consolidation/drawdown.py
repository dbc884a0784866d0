"""Change of the pore pressure in the ground by the water in drains.

In the steady state what flows to the drains comes from above and below:

    c_v d²u / dz² = b (u - w)

with u the mean pore pressure at a depth, w the pressure in the drains and b the leakage to them,
none below their lower end. At drained boundaries and in drained layers the pore pressure stays as
it was. The total stress stays too, so that the effective stress grows by what the pore pressure
falls. This is the mass balance of Barron (1948) and Carrillo (1942) without its term of time; the
steady state is approached with the degree of consolidation of a load.
"""

import itertools
from collections.abc import Sequence
from dataclasses import dataclass

import numpy as np
from numpy.typing import NDArray

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.clusters import Cluster, clusters
from sembra.local.worker.consolidation.degrees import degrees_of_consolidation
from sembra.local.worker.consolidation.drains import Drains
from sembra.local.worker.errors import NotCoveredError
from sembra.local.worker.ground.column import Column, Layer
from sembra.local.worker.ground.stresses import pore_pressure
from sembra.local.worker.options import Options

# Cells are thinnest at the ends of a stretch, where pressures change most.
_CUTS = (1 - np.cos(np.linspace(0.0, np.pi, 51))) / 2
_DIGITS = 6
_NO_CHANGE = 1e-9
_FOLLOWED = 0.9


@dataclass(frozen=True)
class Drawdown:
    """A time in days, and what the mean pore pressure of each layer comes to fall by, in kPa."""

    time: float
    lowering: Floats


def drawdowns(column: Column, drains: Drains, options: Options) -> list[Drawdown]:
    """The changes of pore pressure by drains before the end of the calculation, in order of time.

    Args:
        column: a column among the drains.
        drains: the drains.
        options: unit weight of water, drained boundaries and end of the calculation.

    Raises:
        WorkerError: a layer can't consolidate.
        NotCoveredError: a change is taken back before the ground has followed it.
    """
    lowering = np.zeros((len(drains.water), len(column.layers)))
    for cluster in clusters(column, options.drained_top, options.drained_bottom):
        layers = column.layers[cluster.first : cluster.end]
        if drains.reach(layers[0]) > 0:
            lowering[:, cluster.first : cluster.end] = _steady_state(
                layers, cluster, drains, options.water_unit_weight
            )
    found: list[Drawdown] = []
    before = np.zeros(len(column.layers))
    for water, after in zip(drains.water, lowering, strict=True):
        if water.time < options.end and np.abs(after - before).max() > _NO_CHANGE:
            found.append(Drawdown(water.time, after))
            before = after
    _check_followed(column, drains, options, found)
    return found


def _check_followed(
    column: Column, drains: Drains, options: Options, changes: Sequence[Drawdown]
) -> None:
    """Refuses changes that are taken back too early.

    Settlements by load steps are added up, each with its own degree of consolidation. The soil
    would go on settling by a drawdown that is over, as if it had been there to the end.
    """
    start = Drawdown(drains.start, np.zeros(len(column.layers)))
    steps = itertools.pairwise([start, *changes])
    for (before, change), (_, after) in itertools.pairwise(steps):
        duration = np.array([after.time - change.time])
        sides = (options.drained_top, options.drained_bottom)
        degrees = degrees_of_consolidation(column, duration, *sides, drains, change.time)[:, 0]
        there = change.lowering - before.lowering
        back = after.lowering - change.lowering
        for layer, degree, product in zip(column.layers, degrees, there * back, strict=True):
            if product < 0 and degree < _FOLLOWED:
                raise NotCoveredError.of(
                    "dewatering that ends before the ground has followed it: at "
                    f"x = {column.x:g} m the layer of {layer.material.name} from {layer.top:g} m "
                    f"downwards has come to {100 * degree:.0f} % consolidation at {after.time:g} "
                    f"days, and the worker's equations need {100 * _FOLLOWED:.0f} %"
                )


def _steady_state(
    layers: Sequence[Layer], cluster: Cluster, drains: Drains, water_unit_weight: float
) -> Floats:
    """Mean lowering of the layers of a cluster, shape (times, layers).

    Finite volumes from top to bottom, each `width` thick in h / sqrt(cv).
    """
    owners, middles, heights = _cells(layers, drains)
    materials = [layers[owner].material for owner in owners]
    width = heights / np.sqrt(
        [material.conductivity.vertical_coefficient for material in materials]
    )
    leakage = np.array(
        [drains.flow.leakage(m.conductivity.horizontal_coefficient) for m in materials]
    )
    inflow = np.where(middles > drains.bottom, leakage, 0.0) * width
    initial = np.array(
        [
            pore_pressure(layers[owner], float(level), water_unit_weight)
            for owner, level in zip(owners, middles, strict=True)
        ]
    )
    in_drains = np.array([water.pressure(middles, water_unit_weight) for water in drains.water])
    outer = np.array([cluster.drained_top, cluster.drained_bottom]) * 2 / width[[0, -1]]
    exchange = np.concatenate([outer[:1], 2 / (width[:-1] + width[1:]), outer[1:]])
    cells = _solve_tridiagonal(exchange, inflow, inflow * (initial - in_drains))
    return np.array(
        [
            np.average(cells[:, owners == owner], axis=1, weights=heights[owners == owner])
            for owner in range(len(layers))
        ]
    ).T


def _cells(layers: Sequence[Layer], drains: Drains) -> tuple[NDArray[np.intp], Floats, Floats]:
    """Layer, middle level and height of each cell; pressures in drains are smooth within it."""
    marks = [drains.bottom, *(water.level for water in drains.water)]
    breaks = {round(mark, _DIGITS) for mark in marks}
    least = 10.0**-_DIGITS
    owners: list[int] = []
    borders: list[tuple[float, float]] = []
    for owner, layer in enumerate(layers):
        inside = sorted(
            (b for b in breaks if layer.bottom + least < b < layer.top - least), reverse=True
        )
        for upper, lower in itertools.pairwise([layer.top, *inside, layer.bottom]):
            cuts = upper + (lower - upper) * _CUTS
            borders.extend(itertools.pairwise(cuts.tolist()))
            owners.extend([owner] * (len(_CUTS) - 1))
    upper_ends, lower_ends = np.array(borders).T
    return np.array(owners, dtype=np.intp), (upper_ends + lower_ends) / 2, upper_ends - lower_ends


def _solve_tridiagonal(exchange: Floats, inflow: Floats, source: Floats) -> Floats:
    """The balance of each cell with its neighbours and its drain, by elimination (Thomas).

    Args:
        exchange: conductance between neighbours, with the outer boundaries first and last.
        inflow: conductance to the drain.
        source: the right-hand sides, shape (cases, cells).
    """
    diagonal = exchange[:-1] + exchange[1:] + inflow
    solution = source.T.copy()
    for i in range(1, len(diagonal)):
        factor = exchange[i] / diagonal[i - 1]
        diagonal[i] -= factor * exchange[i]
        solution[i] += factor * solution[i - 1]
    solution[-1] /= diagonal[-1]
    for i in range(len(diagonal) - 2, -1, -1):
        solution[i] = (solution[i] + exchange[i + 1] * solution[i + 1]) / diagonal[i]
    return solution.T
