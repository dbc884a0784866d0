"""Non-uniform loads: embankments, soil improvements and excavations of any shape.

A load lies between its outline and the surface that it meets: the outline of the last load before
it, else the ground. Where the outline lies below that surface the load fills the space between
all the same; nothing else goes away by it, so that an excavation has negative unit weights.
"""

from collections.abc import Sequence
from dataclasses import dataclass

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.failures import WorkerError
from sembra.local.worker.ground.polyline import Polyline
from sembra.local.worker.loads.strip_load import Fill, StripLoad
from sembra.local.worker.spreading.columns import cut, quarters, slopes
from sembra.local.worker.spreading.distribution import Spreading
from sembra.local.worker.spreading.strips import Strips
from sembra.local.worker.tolerances import LENGTH

_LEVEL_TOLERANCE = 1e-6


@dataclass(frozen=True)
class Embankment:
    """A load between a polyline and the ground or loads that it meets, as read from the input.

    Its unit weights in kN/m³ hold above and below the phreatic level. A temporary load has a time
    of removal.
    """

    name: str
    time: float
    removal: float | None
    unit_weight_dry: float
    unit_weight_wet: float
    outline: Polyline

    def lies(self, time: float) -> bool:
        """Return whether the load, once it has come, still lies there at a time in days."""
        return self.removal is None or self.removal > time


@dataclass(frozen=True)
class Site:
    """What embankments stand on, and how their stress spreads."""

    surface: Polyline
    phreatic_line: Polyline
    water_unit_weight: float
    spreading: Spreading


def strip_loads(embankments: Sequence[Embankment], site: Site) -> list[StripLoad]:
    """Return the loads of embankments, removals included, in the order of the embankments.

    Raises:
        WorkerError: Embankments reach beyond the ground, or have too many columns; the message
            names all of them.
    """
    loads = []
    problems = []
    for index, embankment in enumerate(embankments):
        try:
            load = _strip_load(embankments, index, site)
        except WorkerError as error:
            problems.append(str(error))
            continue
        loads.append(load)
        if embankment.removal is not None:
            loads.append(load.removed(embankment.removal))
    if problems:
        raise WorkerError(" ".join(problems))
    return loads


def _strip_load(embankments: Sequence[Embankment], index: int, site: Site) -> StripLoad:
    embankment = embankments[index]
    left, right = _edges(embankments, index, site)
    # The tool takes the ground at both ends of a column, where it is vertical the lower end of it:
    # beside a step a column stands on a slope down to the step's foot.
    grounds = quarters(site.surface.lowest(left), site.surface.lowest(right))
    places = quarters(left, right)
    outlines = [embankment.outline.levels(x) for x in places]
    surfaces = [
        surface_below(embankments, index, ground, x)
        for ground, x in zip(grounds, places, strict=True)
    ]
    bases = [*map(np.minimum, outlines, surfaces)]
    tops = [*map(np.maximum, outlines, surfaces)]
    return StripLoad(
        name=embankment.name,
        time=embankment.time,
        strips=Strips(
            left=left,
            right=right,
            base=bases[1],
            height=tops[1] - bases[1],
            slope=slopes(bases, left, right),
            distribution=site.spreading.distribution,
            sliced=site.spreading.within_loads,
            top_slope=slopes(tops, left, right),
        ),
        fill=Fill(embankment.unit_weight_dry, embankment.unit_weight_wet, site.water_unit_weight),
        water_levels=site.phreatic_line.levels(places[1]),
    )


def _edges(embankments: Sequence[Embankment], index: int, site: Site) -> tuple[Floats, Floats]:
    """Return the left and right edges of the columns, which restart at every vertex.

    Vertices are those of the outline, of the ground, and of all the loads below.
    """
    name, outline, ground = embankments[index].name, embankments[index].outline, site.surface
    if outline.start < ground.start - LENGTH or (outline.end > ground.end + LENGTH):
        raise WorkerError(f'The load "{name}" reaches beyond the limits of the ground.')
    lines = [ground, outline, *(embankments[i].outline for i in _below(embankments, index))]
    places = [x for line in lines for x, _ in line.points if outline.start <= x <= outline.end]
    return cut(np.unique(places), site.spreading.non_uniform_width, f'The load "{name}"')


def _below(embankments: Sequence[Embankment], index: int) -> list[int]:
    """Return which loads lie there when a load comes, in the order of time and of the file."""
    time = embankments[index].time
    there = [
        i for i, one in enumerate(embankments) if i != index and one.time <= time and one.lies(time)
    ]
    return sorted(there, key=lambda i: embankments[i].time)


def surface_below(
    embankments: Sequence[Embankment], index: int, ground: Floats, x: Floats
) -> Floats:
    """Return the levels of the surface that a load meets at some places, above ground or on it.

    That is the last load before it. Of loads that come at one time, the lower comes before the
    higher; where they have the same level, the first of the file comes before the others.
    """
    own = embankments[index].outline.levels(x)
    surface = ground
    last = np.full_like(x, -np.inf)
    for i in _below(embankments, index):
        one = embankments[i]
        level = one.outline.levels(x)
        before = (one.outline.start <= x) & (x <= one.outline.end)
        if one.time == embankments[index].time:
            same = np.abs(level - own) <= _LEVEL_TOLERANCE
            before &= np.where(same, i < index, level < own)
        before &= (one.time > last) | (level >= surface)
        surface = np.where(before, level, surface)
        last = np.where(before, one.time, last)
    return surface
