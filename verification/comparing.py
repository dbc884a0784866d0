"""How far the worker's results of a case lie from the published ones.

Differences of settlement are per cent of the vertical's published final settlement, or of that of
the vertical that settles most where it settles less than 2 % of that. Differences of stress are per
cent of the vertical's largest published stress of their kind, those of dissipation per cent of full
consolidation.
"""

from collections.abc import Callable, Sequence
from dataclasses import dataclass, field

import numpy as np

from verification.reading import Floats, Vertical

_SMALL_PART = 0.02
_SAME_TIME = 1e-6
_SAME_DEPTH = 1e-6


@dataclass
class Difference:
    """The largest differences of a vertical, or of a case, in per cent; NaN: nothing to compare.

    `same_times` and `same_nodes` tell whether both files have the same ones; where they don't, the
    worker's results are interpolated. `missing` names, in words, what one of both files lacks.
    """

    final: float = float("nan")
    curve: float = float("nan")
    loads: float = float("nan")
    depth: float = float("nan")
    residual: float = float("nan")
    kinds: float = float("nan")
    initial_stress: float = float("nan")
    final_stress: float = float("nan")
    stresses: float = float("nan")
    preconsolidation: float = float("nan")
    dissipation: float = float("nan")
    same_times: bool = True
    same_nodes: bool = True
    missing: list[str] = field(default_factory=list)


MEASURES = (
    "final",
    "curve",
    "loads",
    "depth",
    "residual",
    "kinds",
    "initial_stress",
    "final_stress",
    "stresses",
    "preconsolidation",
    "dissipation",
)


def compare(published: Sequence[Vertical], ours: Sequence[Vertical]) -> list[Difference]:
    """Return the differences of each vertical.

    Raises:
        ValueError: The files haven't the same number of verticals.
    """
    if len(published) != len(ours):
        raise ValueError(f"{len(ours)} verticals instead of {len(published)}")
    largest = max(abs(vertical.final) for vertical in published) or 1.0
    return [_compare(theirs, mine, largest) for theirs, mine in zip(published, ours, strict=True)]


def worst(differences: Sequence[Difference]) -> Difference:
    """Return the largest of each kind."""
    result = Difference(
        same_times=all(difference.same_times for difference in differences),
        same_nodes=all(difference.same_nodes for difference in differences),
        missing=[
            f"vertical {number}: {text}"
            for number, difference in enumerate(differences, 1)
            for text in difference.missing
        ],
    )
    for measure in MEASURES:
        values = np.array([getattr(difference, measure) for difference in differences])
        if not np.all(np.isnan(values)):
            setattr(result, measure, float(np.nanmax(values)))
    return result


def _compare(theirs: Vertical, ours: Vertical, largest: float) -> Difference:
    scale = abs(theirs.final)
    if scale < _SMALL_PART * largest:
        scale = largest
    result = Difference(
        same_times=_same(theirs.times, ours.times, _SAME_TIME),
        same_nodes=_same(theirs.depths, ours.depths, _SAME_DEPTH),
    )
    at_times = _at(theirs.times, ours.times, result.same_times)
    at_depths = _at(-theirs.depths, -ours.depths, result.same_nodes)

    result.final = _largest(theirs.final - ours.final, scale)
    result.curve = _largest(theirs.curve - at_times(ours.curve), scale)
    settlements = at_depths(at_times(ours.settlements).T).T
    result.depth = _largest(theirs.settlements - settlements, scale)

    stresses = at_depths(at_times(ours.stresses).T).T
    result.stresses = _largest(theirs.stresses - stresses, float(theirs.stresses.max()) or 1.0)

    if pair := _pair(theirs.loads, ours.loads, "settlement per load", result):
        loads, our_loads = pair
        if loads.shape[1] == our_loads.shape[1]:
            result.loads = _largest(loads - at_times(our_loads), scale)
        else:
            result.missing.append(f"{our_loads.shape[1]} load steps instead of {loads.shape[1]}")
    if len(theirs.residual) != len(ours.residual):
        result.missing.append(
            f"{len(ours.residual)} residual times instead of {len(theirs.residual)}"
        )
    elif len(theirs.residual):
        result.residual = _largest((theirs.residual - ours.residual)[:, 1:], scale)

    if pair := _pair(theirs.kinds, ours.kinds, "settlement by kind", result):
        if len(pair[0]) == len(pair[1]):
            result.kinds = _largest(pair[0] - pair[1], scale)
        else:
            result.missing.append(f"kinds of {len(pair[1])} layers instead of {len(pair[0])}")
    if pair := _pair(theirs.dissipation, ours.dissipation, "dissipation", result):
        layers, our_layers = (part.shape[1] - 1 for part in pair)
        if layers == our_layers:
            result.dissipation = _dissipation(*pair)
        else:
            result.missing.append(f"dissipation of {our_layers} layers instead of {layers}")

    for name in ("initial_stress", "final_stress", "preconsolidation"):
        if pair := _pair(getattr(theirs, name), getattr(ours, name), _words(name), result):
            stress, our_stress = pair
            difference = stress - at_depths(our_stress)
            setattr(result, name, _largest(difference, float(np.abs(stress).max()) or 1.0))
    return result


def _dissipation(theirs: Floats, ours: Floats) -> float:
    """Return the largest difference of any layer, at the published times."""
    times, our_times = theirs[:, 0], ours[:, 0]
    at_times = _at(times, our_times, _same(times, our_times, _SAME_TIME))
    return _largest(theirs[:, 1:] - at_times(ours[:, 1:]), 1.0)


def _pair(
    theirs: Floats | None, ours: Floats | None, name: str, result: Difference
) -> tuple[Floats, Floats] | None:
    """Return both, if both files have them; if one of them alone has it, that is noted."""
    if theirs is not None and ours is not None:
        return theirs, ours
    if theirs is not ours:
        result.missing.append(f"no {name}" if ours is None else f"{name}, not published")
    return None


def _words(name: str) -> str:
    return name.replace("_", " ")


def _same(theirs: Floats, ours: Floats, tolerance: float) -> bool:
    return len(theirs) == len(ours) and bool(np.all(np.abs(theirs - ours) < tolerance))


def _at(wanted: Floats, given: Floats, same: bool) -> Callable[[Floats], Floats]:
    """Interpolate along the first axis, from given places, in ascending order, to wanted ones."""

    def interpolated(values: Floats) -> Floats:
        if same:
            return values
        columns = values.reshape(len(values), -1).T
        found = np.stack([np.interp(wanted, given, column) for column in columns], axis=-1)
        return found.reshape(len(wanted), *values.shape[1:])

    return interpolated


def _largest(differences: Floats | float, scale: float) -> float:
    return 100 * float(np.abs(differences).max()) / scale
