"""The calculation options of an input file."""

from dataclasses import dataclass

from sembra.local.worker.ground.preconsolidation import PreconsolidationOption


@dataclass(frozen=True)
class Superelevation:
    """Soil that is put on a load to maintain its profile, as much as the ground has settled.

    Args:
        time: when it comes, in days.
        unit_weight_dry: unit weight above the phreatic level, in kN/m³.
        unit_weight_wet: unit weight below it, in kN/m³.
        tolerance: the settlements have come to their end when they change by less, in metres.
    """

    time: float
    unit_weight_dry: float
    unit_weight_wet: float
    tolerance: float


@dataclass(frozen=True)
class Options:
    """Calculation options.

    Args:
        natural_strain: whether strain is natural (Hencky), and not linear.
        preconsolidation: how the preconsolidation pressure varies.
        drained_top: whether water leaves through the surface.
        drained_bottom: whether water leaves through the bottom.
        end: end of the calculation, in days.
        reference_time: the unit of time of secular settlement and creep, in days.
        dissipation_x: where the dissipation is wanted, as an x-coordinate in metres, or None.
        water_unit_weight: in kN/m³.
        each_step_alone: whether settlements without the later load steps are wanted, for Darcy.
        submerging: whether loads lose weight as they settle below the phreatic level.
        superelevation: how the profile is maintained, or None.
    """

    natural_strain: bool
    preconsolidation: PreconsolidationOption
    drained_top: bool
    drained_bottom: bool
    end: float
    reference_time: float
    dissipation_x: float | None
    water_unit_weight: float
    each_step_alone: bool = False
    submerging: bool = False
    superelevation: Superelevation | None = None
