"""Water loads: other water levels, which change what the ground weighs and what water carries."""

import itertools
from collections.abc import Iterable, Sequence
from dataclasses import dataclass

from sembra.local.worker.arrays import Floats
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.cross_section import CrossSection
from sembra.local.worker.ground.stresses import soil_effective_stress
from sembra.local.worker.loads.load import Load, PressureLoad


@dataclass(frozen=True)
class WaterStage:
    """The ground with the water levels that hold from a time in days on."""

    name: str
    time: float
    ground: CrossSection


@dataclass(frozen=True)
class WaterLoad(PressureLoad):
    """The change from the water levels before to those of this load.

    Effective stress changes by what the total stress of the soil changes, less what the pore
    pressure does, as if the ground followed at once; how fast it does is up to consolidation.
    """

    before: CrossSection
    after: CrossSection
    water_unit_weight: float

    def stress(self, x: float, z: float, levels: Floats, /) -> Floats:
        """Change of the effective stress at some levels below x, z."""
        before, after = (
            soil_effective_stress(ground.column(x, z), levels, self.water_unit_weight)
            for ground in (self.before, self.after)
        )
        return after - before


def water_loads(
    ground: CrossSection, stages: Sequence[WaterStage], water_unit_weight: float
) -> list[WaterLoad]:
    """Return the loads of stages, each of which takes the place of the one before.

    Args:
        ground: The ground with its initial water levels.
        stages: The stages; of those at one time, the last one counts.
        water_unit_weight: Unit weight of water, in kN/m³.
    """
    ordered = sorted(stages, key=lambda stage: stage.time)
    grounds = [ground, *(stage.ground for stage in ordered)]
    return [
        WaterLoad(stage.name, stage.time, before, after, water_unit_weight)
        for stage, (before, after) in zip(ordered, itertools.pairwise(grounds), strict=True)
    ]


def in_the_end(column: Column, loads: Iterable[Load]) -> Column:
    """Return a column with the water levels that hold after all water loads."""
    stages = [load for load in loads if isinstance(load, WaterLoad)]
    return stages[-1].after.column(column.x, column.z) if stages else column
