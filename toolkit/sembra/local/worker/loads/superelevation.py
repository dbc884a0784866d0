"""Superelevation: soil that is put on a load to maintain its profile.

At each vertical it is as high as the ground settles in the end, between verticals it runs linearly,
and where there is no load there is none of it.
"""

from collections.abc import Sequence
from dataclasses import dataclass

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.ground.polyline import Polyline
from sembra.local.worker.loads.non_uniform import Embankment, Site, surface_below
from sembra.local.worker.loads.strip_load import Fill, StripLoad
from sembra.local.worker.options import Superelevation
from sembra.local.worker.spreading.columns import cut, quarters, slopes
from sembra.local.worker.spreading.strips import Strips

NAME = "Superelevation"
_LEAST_HEIGHT = 1e-6
_ABOVE_ALL = 1e9


@dataclass(frozen=True)
class MaintainedProfile:
    """What a superelevation is made on.

    Args:
        option: What the input file says of it.
        embankments: The non-uniform loads of the file.
        site: What they stand on.
    """

    option: Superelevation
    embankments: Sequence[Embankment]
    site: Site

    def load(self, places: Floats, heights: Floats) -> StripLoad:
        """Return the load of a superelevation.

        Args:
            places: x of some verticals, in metres.
            heights: How high it is there, in metres.
        """
        order = np.argsort(places, kind="stable")
        places, heights = places[order], heights[order]
        site, ground = self.site, self.site.surface
        lines = [ground, *(embankment.outline for embankment in self.embankments)]
        vertices = np.unique([*(x for line in lines for x, _ in line.points), *places])
        inside = (ground.start <= vertices) & (vertices <= ground.end)
        left, right = cut(vertices[inside], site.spreading.non_uniform_width, "The superelevation")
        places_of_columns = quarters(left, right)
        bases = [self._top(x) for x in places_of_columns]
        middles, base = places_of_columns[1], bases[1]
        loaded = base - ground.levels(middles) > _LEAST_HEIGHT
        lower, height, upper = (
            np.where(loaded, np.interp(x, places, np.maximum(heights, 0.0)), 0.0)
            for x in (left, middles, right)
        )
        slope = slopes(bases, left, right)
        return StripLoad(
            name=NAME,
            time=self.option.time,
            strips=Strips(
                left=left,
                right=right,
                base=base,
                height=height,
                slope=slope,
                distribution=site.spreading.distribution,
                sliced=site.spreading.within_loads,
                top_slope=slope + (upper - lower) / (right - left),
            ),
            fill=Fill(
                self.option.unit_weight_dry, self.option.unit_weight_wet, site.water_unit_weight
            ),
            water_levels=site.phreatic_line.levels(middles),
        )

    def _top(self, x: Floats) -> Floats:
        """Return the levels of the loads that lie there when it comes, else of the ground."""
        ground = self.site.surface
        above_all = Polyline(((ground.start, _ABOVE_ALL), (ground.end, _ABOVE_ALL)))
        crown = Embankment(NAME, self.option.time, None, 0.0, 0.0, above_all)
        return surface_below([*self.embankments, crown], len(self.embankments), ground.levels(x), x)
