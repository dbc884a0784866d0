"""The part of the document that one and two dimensions share."""

from typing import Annotated, Literal

from pydantic import Field

from sembra.local.service.drain import VerticalDrain
from sembra.local.service.soil import Soil
from sembra.local.service.types import Line, Many, Number, OwnLine, Strict, Whole


class Vertical(Strict):
    """A position for which results are reported."""

    x: Number


class NonUniformLoad(Strict):
    """A load under a polyline."""

    name: OwnLine
    points: Many[Annotated[Many[Number], Field(min_length=2, max_length=2)]]
    time: Whole
    end_time: Whole
    gamma_dry: Number
    gamma_wet: Number
    temporary: bool


class UniformLoad(Strict):
    """A load on the whole width of the model."""

    name: OwnLine
    type: Annotated[Whole, Field(ge=3, le=3)]
    time: Whole
    unit_weight: Number
    height: Number
    y_application: Number


class Frame(Strict):
    """The keys of every document; the two kinds of model add their geometry."""

    calculation_model: Annotated[Whole, Field(ge=0, le=2)]
    consolidation_model: Annotated[Whole, Field(ge=0, le=1)]
    strain_type: Literal["Linear", "Natural"]
    maintain_profile: bool
    profile_time: Whole
    profile_unit_weight_above_phreatic_level: Number
    profile_unit_weight_below_phreatic_level: Number
    end_of_settlement_calculation: Whole
    verticals_discretization: Whole
    verticals_z_coordinate: Number
    stress_distribution_loads: bool
    has_vertical_drains: bool
    soils: Many[Soil]
    verticals: Many[Vertical]
    non_uniform_loads: Many[NonUniformLoad]
    other_loads: Many[UniformLoad]
    residual_times: Many[Whole]
    vertical_drain: VerticalDrain

    date: Line
    time: Line
    file_name: Line
    company: Line
    created_by: Line
    title_1: OwnLine
    title_2: OwnLine
    title_3: OwnLine

    dissipation_calculation: Number | None

    @property
    def reference_x(self) -> float:
        """Where the options that name one vertical point to: the first one [m]."""
        return self.verticals[0].x if self.verticals else 0.0

    @property
    def material_names(self) -> set[str]:
        """The names of the soils."""
        return {soil.name for soil in self.soils}
