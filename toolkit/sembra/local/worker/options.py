"""The calculation options of an input file."""

from dataclasses import dataclass

from sembra.local.worker.ground.preconsolidation import PreconsolidationOption


@dataclass(frozen=True)
class Options:
    """Calculation options. `reference_time` is the unit of time of the secular settlement."""

    natural_strain: bool
    preconsolidation: PreconsolidationOption
    drained_top: bool
    drained_bottom: bool
    end: float
    reference_time: float
    dissipation: bool
    water_unit_weight: float
