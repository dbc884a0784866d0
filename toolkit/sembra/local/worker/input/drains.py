"""The section VERTICAL DRAIN: the drains themselves."""

from sembra.local.sli.labelled import Labelled
from sembra.local.sli.sections import Section
from sembra.local.worker.consolidation.drains.drains import Drains
from sembra.local.worker.consolidation.drains.flow import (
    HorizontalFlow,
    PlaneFlow,
    RadialFlow,
    strip_diameter,
)
from sembra.local.worker.input.drain_water import DrainType, WaterReader

_TYPE = "Flow type"
_DISTANCE = "Center to center distance"
_SIZES = (0.001, 1000.0)

# Diameter of the circle with the area that each drain serves, in parts of the distance: for a
# triangular and a rectangular grid (Barron 1948), and the distance itself where no grid is told.
_INFLUENCE = {0: 1.05, 1: 1.13, 2: 1.0}


def read_drains(whole: Section) -> Drains | None:
    """Return the drains of the file, or None if they are switched off.

    Args:
        whole: the whole file.

    Raises:
        InputFileError: the section is malformed, or a value is out of range.
        NotCoveredError: the drains are dewatered in a way that the worker doesn't calculate.
    """
    if not Labelled(whole.section("MODEL")).switch("Vertical drains", absent=False):
        return None
    section = whole.section("VERTICAL DRAIN")
    lines = Labelled(section)
    code = lines.code(_TYPE)
    if code not in list(DrainType):
        raise lines.error(_TYPE, f"the type {code} of drain is unknown")
    kind = DrainType(code)
    left = lines.number("Position of the leftmost drain")
    right = lines.number("Position of the rightmost drain")
    if left > right:
        raise lines.error(
            "Position of the leftmost drain", "the leftmost drain stands right of the rightmost"
        )
    return Drains(
        left=left,
        right=right,
        bottom=lines.number("Bottom position"),
        flow=_read_flow(lines, kind),
        schedule=WaterReader(section, kind).read(),
    )


def _read_flow(lines: Labelled, kind: DrainType) -> HorizontalFlow:
    distance = lines.between(_DISTANCE, *_SIZES)
    try:
        if kind is DrainType.SAND_WALL:
            return PlaneFlow(distance, lines.between("Diameter", *_SIZES))
        diameter = (
            lines.between("Diameter", *_SIZES)
            if kind is DrainType.COLUMN
            else strip_diameter(
                lines.between("Width", *_SIZES), lines.between("Thickness", *_SIZES)
            )
        )
        return RadialFlow(distance, _read_influence(lines), diameter)
    except ValueError as error:
        raise lines.error(_DISTANCE, str(error)) from None


def _read_influence(lines: Labelled) -> float:
    grid = lines.code("Grid")
    if grid not in _INFLUENCE:
        raise lines.error("Grid", f"the grid {grid} is unknown")
    return _INFLUENCE[grid]
