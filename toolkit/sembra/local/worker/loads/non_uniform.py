"""Non-uniform loads: embankments of any shape, cut into upright strips of uniform pressure.

Stress spreads below each vertical as in a half-space with its surface at the ground level there:
just below the ground it is the weight of what stands above it, however the ground slopes.
"""

import math
from collections.abc import Sequence
from dataclasses import dataclass, replace

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.errors import WorkerError
from sembra.local.worker.ground.cross_section import Polyline
from sembra.local.worker.loads.spreading import Distribution, strip_share

_HEIGHT_TOLERANCE = 1e-6
_MOST_STRIPS = 100_000


@dataclass(frozen=True)
class Embankment:
    """A load between a polyline and the ground or loads below it, as read from the input.

    Its unit weights hold above and below the phreatic level. A temporary load has a time of
    removal.
    """

    name: str
    time: float
    removal: float | None
    unit_weight_dry: float
    unit_weight_wet: float
    outline: Polyline

    def lies(self, x: float, time: float) -> bool:
        """Whether the load, once it has come, still lies at x at a time in days."""
        points = self.outline.points
        return points[0][0] <= x <= points[-1][0] and (self.removal is None or self.removal > time)


@dataclass(frozen=True)
class Strips:
    """Uniform strip loads: edges and height in metres, pressures in kPa."""

    left: Floats
    right: Floats
    height: Floats
    pressure: Floats


@dataclass(frozen=True)
class Site:
    """What embankments stand on, and how their stress spreads."""

    surface: Polyline
    phreatic_line: Polyline
    water_unit_weight: float
    strip_width: float
    distribution: Distribution


@dataclass(frozen=True)
class StripLoad:
    """Strips that come, or with negative pressures go, at one time."""

    name: str
    time: float
    strips: Strips
    site: Site

    @property
    def is_initial(self) -> bool:
        """Whether the load belongs to the initial state."""
        return self.time < 0

    @property
    def area(self) -> float:
        """Cross-section of the load, in m²."""
        strips = self.strips
        return float(np.sum((strips.right - strips.left) * strips.height))

    def stress(self, x: float, levels: Floats, /) -> Floats:
        """Vertical stress at x and some levels; there is none at the surface and above."""
        strips = self.strips
        left, right = strips.left - x, strips.right - x
        depths = self.site.surface.level(x) - levels
        shares = (
            strip_share(self.site.distribution, left, right, float(depth)) for depth in depths
        )
        return np.array([float(share @ strips.pressure) for share in shares])


def strip_loads(embankments: Sequence[Embankment], site: Site) -> list[StripLoad]:
    """The loads of embankments, removals included, in the order of the embankments.

    Each rests on the loads that lie there when it comes. Of those that come at one time, the lower
    lies under the higher; where they have the same top, the first lies under the others.

    Raises:
        WorkerError: an embankment lies below the ground or the loads under it, or has too many
            strips.
    """
    loads = []
    for index, embankment in enumerate(embankments):
        strips = _cut(embankments, index, site)
        loads.append(StripLoad(embankment.name, embankment.time, strips, site))
        if embankment.removal is not None:
            taken = replace(strips, pressure=-strips.pressure)
            loads.append(StripLoad(embankment.name, embankment.removal, taken, site))
    return loads


def _cut(embankments: Sequence[Embankment], index: int, site: Site) -> Strips:
    """Strips from the left end on; the height of each is that in its middle."""
    embankment = embankments[index]
    start, end = embankment.outline.points[0][0], embankment.outline.points[-1][0]
    count = math.ceil((end - start) / site.strip_width - 1e-9)
    if count > _MOST_STRIPS:
        raise WorkerError(f'The load "{embankment.name}" has too many columns.')
    edges = np.append(start + site.strip_width * np.arange(count, dtype=np.float64), end)
    middles = [float(middle) for middle in (edges[:-1] + edges[1:]) / 2]
    grounds = [max([site.surface.level(x), *_tops(embankments, index, x)]) for x in middles]
    heights = [
        embankment.outline.level(x) - ground for x, ground in zip(middles, grounds, strict=True)
    ]
    if heights and min(heights) < -_HEIGHT_TOLERANCE:
        raise WorkerError(
            f'The load "{embankment.name}" lies below the ground or a load before it at '
            f"x = {middles[int(np.argmin(heights))]:g} m."
        )
    return Strips(
        left=edges[:-1],
        right=edges[1:],
        height=np.array(heights),
        pressure=np.array(
            [
                _pressure(embankment, ground, height, site.phreatic_line.level(x), site)
                for x, ground, height in zip(middles, grounds, heights, strict=True)
            ]
        ),
    )


def _tops(embankments: Sequence[Embankment], index: int, x: float) -> list[float]:
    """Levels at x of the tops of the loads that an embankment rests on."""
    upper = embankments[index]
    top = upper.outline.level(x)
    tops = []
    for position, lower in enumerate(embankments):
        if position != index and lower.time <= upper.time and lower.lies(x, upper.time):
            level = lower.outline.level(x)
            same = abs(top - level) <= _HEIGHT_TOLERANCE
            if lower.time < upper.time or (position < index if same else level < top):
                tops.append(level)
    return tops


def _pressure(
    embankment: Embankment, ground: float, height: float, phreatic_level: float, site: Site
) -> float:
    """Weight of a column of an embankment; below water it displaces the water that stood there."""
    wet = min(max(phreatic_level - ground, 0.0), height)
    weight_under_water = embankment.unit_weight_wet - site.water_unit_weight
    return (height - wet) * embankment.unit_weight_dry + wet * weight_under_water
