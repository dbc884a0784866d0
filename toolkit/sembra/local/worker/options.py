"""The calculation options of an input file."""

from dataclasses import dataclass

from sembra.local.worker.ground.preconsolidation import PreconsolidationOption


@dataclass(frozen=True)
class Superelevation:
    """Soil that is put on a load to maintain its profile, as much as the ground has settled.

    Args:
        time: When it comes, in days.
        unit_weight_dry: Unit weight above the phreatic level, in kN/m³.
        unit_weight_wet: Unit weight below it, in kN/m³.
        tolerance: The settlements have come to their end when they change by less, in metres.
    """

    time: float
    unit_weight_dry: float
    unit_weight_wet: float
    tolerance: float


@dataclass(frozen=True)
class Options:
    """Calculation options.

    Args:
        natural_strain: Whether strain is natural (Hencky), and not linear.
        preconsolidation: How the preconsolidation pressure varies.
        drained_top: Whether water leaves through the surface.
        drained_bottom: Whether water leaves through the bottom.
        end: End of the calculation, in days.
        reference_time: The unit of time of secular settlement and creep, in days.
        dissipation_x: Where the dissipation is wanted, as an x-coordinate in metres, or None.
        water_unit_weight: In kN/m³.
        each_step_alone: Whether settlements without the later load steps are wanted, for Darcy.
        submerging: Whether loads lose weight as they settle below the phreatic level.
        superelevation: How the profile is maintained, or None.
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
