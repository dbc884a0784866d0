"""The section VERTICAL DRAIN: the drains themselves."""

from sembra.local.sli.labelled import Labelled
from sembra.local.sli.sections import Section
from sembra.local.worker.consolidation.drains.equal_drains import Drains
from sembra.local.worker.consolidation.drains.flow import (
    HorizontalFlow,
    PlaneFlow,
    RadialFlow,
    strip_diameter,
)
from sembra.local.worker.failures import Problems, WorkerError
from sembra.local.worker.input.drain_water import DrainType, WaterReader

_TYPE = "Flow type"
_SIZES = (0.001, 1000.0)

# Diameter of the circle with the area that each drain serves, in parts of the distance: for a
# triangular and a rectangular grid (Barron 1948), and the distance itself where no grid is told.
_INFLUENCE = {0: 1.05, 1: 1.13, 2: 1.0}


def make_drains(whole: Section, problems: Problems) -> Drains | None:
    """Return the drains of the file, or None if they are switched off.

    Args:
        whole: The whole file.
        problems: Gathers what can't be calculated with.

    Raises:
        InputFileError: The section is malformed, or holds an unknown code.
        WorkerError: The drains can't be calculated, besides what has been gathered.
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
        problems.add(
            f"The drains begin at x = {left:g} m, right of where they end at x = {right:g} m."
        )
    bottom = lines.number("Bottom position")
    schedule = WaterReader(section, kind, problems).read()
    return Drains(left, right, bottom, _read_flow(lines, kind, problems), schedule)


def _read_flow(lines: Labelled, kind: DrainType, problems: Problems) -> HorizontalFlow:
    """Return the flow to the drains.

    Raises:
        WorkerError: There is no soil between them.
    """

    def size(label: str) -> float:
        value = lines.number(label)
        least, greatest = _SIZES
        if not least <= value <= greatest:
            problems.add(
                f"{label} of the drains is {value:g} m. It should be {least:g} to {greatest:g} m."
            )
        return min(max(value, least), greatest)

    distance = size("Center to center distance")
    if kind is DrainType.STRIP:
        diameter = strip_diameter(size("Width"), size("Thickness"))
    else:
        diameter = size("Diameter")
    try:
        if kind is DrainType.SAND_WALL:
            return PlaneFlow(distance, diameter)
        return RadialFlow(distance, _read_influence(lines), diameter)
    except ValueError:
        raise WorkerError(
            f"Drains that are {diameter:.3g} m wide and stand {distance:g} m apart leave no soil "
            "between them."
        ) from None


def _read_influence(lines: Labelled) -> float:
    grid = lines.code("Grid")
    if grid not in _INFLUENCE:
        raise lines.error("Grid", f"the grid {grid} is unknown")
    return _INFLUENCE[grid]
