"""The document of a one-dimensional model."""

from typing import Annotated, NamedTuple

from pydantic import Field

from sembra.local.service.frame import Frame
from sembra.local.service.types import Many, Number, OwnLine, Strict, Whole


class Layer1D(NamedTuple):
    """A layer of the column: its top level [m] and its material."""

    top_level: Number
    material: OwnLine


class Geometry1D(Strict):
    """A column of layers from top to bottom."""

    layers: Annotated[Many[Layer1D], Field(min_length=1)]
    bottom_level: Number
    phreatic_level: Number | None

    @property
    def water_level(self) -> float:
        """The phreatic level [m]. A column without one is dry: the water stands at its bottom."""
        return self.bottom_level if self.phreatic_level is None else self.phreatic_level


class Document1D(Frame):
    """The document of a one-dimensional model."""

    model_type: Whole
    geometry: Geometry1D
