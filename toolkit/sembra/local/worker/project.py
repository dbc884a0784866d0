"""All that is read from an input file."""

from dataclasses import dataclass

from sembra.local.worker.consolidation.drains.equal_drains import Drains
from sembra.local.worker.consolidation.interface import Consolidation
from sembra.local.worker.ground.column import Column
from sembra.local.worker.loads.load import Load
from sembra.local.worker.loads.superelevation import MaintainedProfile
from sembra.local.worker.options import Options
from sembra.local.worker.remark import Remark
from sembra.local.worker.soil_models.soil_model import SoilModel


@dataclass(frozen=True)
class Project:
    """All that a calculation needs, one column for each vertical.

    `load_areas` holds the cross-sections in m² of the loads that have one, `profile` what a
    superelevation is made on if the profile is maintained, and `remarks` what the user should know
    about the input, as whole sentences.
    """

    soil_model: type[SoilModel]
    consolidation: Consolidation
    columns: tuple[Column, ...]
    loads: tuple[Load, ...]
    options: Options
    residual_times: tuple[float, ...]
    load_areas: tuple[float, ...] = ()
    drains: Drains | None = None
    profile: MaintainedProfile | None = None
    remarks: tuple[Remark | str, ...] = ()

    @property
    def sinks_by_steps(self) -> bool:
        """Whether loads and soil come under water from one time to the next."""
        return (
            self.options.submerging and self.consolidation.goes_by_steps and self.soil_model.creeps
        )

    @property
    def dissipation_column(self) -> Column | None:
        """The column that the dissipation is wanted for: the nearest to where it is."""
        wanted = self.options.dissipation_x
        if wanted is None:
            return None
        return min(self.columns, key=lambda column: abs(column.x - wanted))
