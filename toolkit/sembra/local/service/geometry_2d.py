"""The document of a two-dimensional model."""

from typing import Annotated, NamedTuple

from pydantic import Field

from sembra.local.service.frame import Frame
from sembra.local.service.types import Many, Number, OwnLine, Strict, Whole

NO_PL_LINE = 0
"""Code for a layer's end that has no pl-line: the pore pressure there is zero."""

INTERPOLATE = 99
"""Code for a layer's end whose pore pressure is interpolated from the layers beside it."""


class Point(NamedTuple):
    """A point of the geometry [m]."""

    x: Number
    y: Number
    z: Number


class Curve(NamedTuple):
    """A straight line between two points, by their numbers from 1."""

    begin: Whole
    end: Whole


class Layer2D(Strict):
    """A layer between two boundaries, which count from 0; pl-lines count from 1."""

    material: OwnLine
    boundary_top: Whole
    boundary_bottom: Whole
    pl_top: Whole
    pl_bottom: Whole


class Document2D(Frame):
    """The document of a two-dimensional model."""

    model_type: Whole
    points: Many[Point]
    curves: Many[Curve]
    boundaries: Many[Annotated[Many[Whole], Field(min_length=1)]]
    pl_lines: Many[Annotated[Many[Whole], Field(min_length=1)]]
    layers: Annotated[Many[Layer2D], Field(min_length=1)]
    phreatic_line: Whole
