"""The vertical drain of the document."""

from typing import Annotated

from pydantic import Field

from sembra.local.service.types import Number, Strict, Whole

SAND_WALL = 2
"""Type of drain whose dewatering is given as a tube pressure [kPa], not as a water head [m]."""


class VerticalDrain(Strict):
    """The one set of drains of a model; it is there also if the drains are switched off."""

    type: Annotated[Whole, Field(ge=0, le=2)]
    range_from: Number
    range_to: Number
    bottom_position: Number
    center_to_center: Number
    width_diameter: Number
    thickness: Number
    position_drain: Number
    grid: Annotated[Whole, Field(ge=0, le=2)]
    schedule_type: Annotated[Whole, Field(ge=0, le=2)]
    start_of_drainage: Number
    phreatic_level: Number
    begin_time: Number
    end_time: Number
    underpressure: Number
    dewatering_head_or_pressure: Number
    detailed_schedule: list[Annotated[list[Number], Field(min_length=3, max_length=3)]]

    @property
    def is_sand_wall(self) -> bool:
        """Whether water flows to the drain in a plane, not radially."""
        return self.type == SAND_WALL
