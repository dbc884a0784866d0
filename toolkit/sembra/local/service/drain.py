"""The vertical drain of the document."""

from typing import Annotated

from pydantic import Field

from sembra.local.service.types import Many, Number, Strict, Whole

STRIP = 0
"""Type of drain that has a width."""

COLUMN = 1
"""Type of drain that has a diameter."""

SAND_WALL = 2
"""Type of drain whose dewatering is given as a tube pressure [kPa], not as a water head [m]."""

UNUSED_SIZE = 0.1
"""What D-Settlement itself writes for the width or diameter that the type of drain doesn't have."""

UNUSED_TUBE_PRESSURE = 10.0
"""What D-Settlement itself writes for the tube pressure [kPa] of strips and columns."""

LABELS = ("Radial", "Plane", "")
"""What stands behind the type. D-Settlement calls a strip radial and a column plane, although the
water flows radially to both, and has no word for a sand wall; it reads the number alone."""


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
    detailed_schedule: Many[Annotated[Many[Number], Field(min_length=3, max_length=3)]]

    @property
    def is_sand_wall(self) -> bool:
        """Whether water flows to the drain in a plane, not radially."""
        return self.type == SAND_WALL

    @property
    def label(self) -> str:
        """What stands behind the type."""
        return LABELS[self.type]

    @property
    def diameter(self) -> float:
        """Diameter of a column, or the width of a sand wall, which D-Settlement takes from here."""
        return UNUSED_SIZE if self.type == STRIP else self.width_diameter

    @property
    def width(self) -> float:
        """Width of a strip or a sand wall."""
        return UNUSED_SIZE if self.type == COLUMN else self.width_diameter

    @property
    def tube_pressure(self) -> float:
        """Pressure in the drain pipe of a sand wall during dewatering by a simple schedule."""
        return self.dewatering_head_or_pressure if self.is_sand_wall else UNUSED_TUBE_PRESSURE
