"""The section GEOMETRY DATA: points, curves, boundaries, piezometric level lines and layers."""

from collections.abc import Collection, Mapping, Sequence
from dataclasses import dataclass

from sembra.local.sli.sections import Cursor, Section

NO_PL_LINE = 0
"""Stands in the place of a pl-line where there is no pore pressure."""

INTERPOLATED = 99
"""Stands in the place of a pl-line where the pore pressure is interpolated."""

Point = tuple[float, float]
"""x and level in metres."""


@dataclass(frozen=True)
class Chain:
    """A boundary or a pl-line.

    Args:
        line: Line of the file where its curves end.
        curves: The numbers of its curves.
        points: The points along them, none twice in a row.
    """

    line: int
    curves: tuple[int, ...]
    points: tuple[Point, ...]


@dataclass(frozen=True)
class LayerBetween:
    """A layer between two boundaries.

    Args:
        line: Line of the file where its material stands.
        material: Name of the material.
        pl_top: Number of the pl-line at the top, or `NO_PL_LINE` or `INTERPOLATED`.
        pl_bottom: The same at the bottom.
        top: Number of the boundary at the top.
        bottom: Number of the boundary at the bottom.
    """

    line: int
    material: str
    pl_top: int
    pl_bottom: int
    top: int
    bottom: int


@dataclass(frozen=True)
class Geometry2D:
    """A cross-section.

    Args:
        points: The points by number.
        curves: The numbers of the points of each curve, by its number.
        boundaries: The boundaries by number, the lowest first.
        pl_lines: The piezometric level lines by number.
        phreatic_line: The number of the pl-line that is the phreatic line.
        layers: The layers, the lowest first.
    """

    points: Mapping[int, Point]
    curves: Mapping[int, Sequence[int]]
    boundaries: Mapping[int, Chain]
    pl_lines: Mapping[int, Chain]
    phreatic_line: int
    layers: tuple[LayerBetween, ...]


def read_geometry_2d(whole: Section) -> Geometry2D:
    """Return the cross-section of a two-dimensional file.

    Raises:
        InputFileError: The section is malformed, or it refers to what doesn't exist.
    """
    section = whole.section("GEOMETRY DATA")
    points = _read_points(section)
    curves = _read_curves(section, points)
    boundaries = _read_chains(section, "BOUNDARIES", points, curves)
    pl_lines = _read_chains(section, "PIEZO LINES", points, curves)
    return Geometry2D(
        points,
        curves,
        boundaries,
        pl_lines,
        read_pl_line(section.section("PHREATIC LINE").cursor(), pl_lines),
        tuple(_read_layers(section, boundaries, pl_lines)),
    )


def read_pl_line(cursor: Cursor, pl_lines: Collection[int]) -> int:
    """Return the number of a pl-line that the next line starts with.

    Raises:
        InputFileError: There is no such line.
    """
    number = cursor.integer("the number of a piezometric level line")
    check_pl_line(cursor, number, pl_lines)
    return number


def check_pl_line(cursor: Cursor, number: int, pl_lines: Collection[int]) -> None:
    """Refuse the number of a pl-line that doesn't exist.

    Raises:
        InputFileError: It doesn't.
    """
    if number not in pl_lines:
        raise cursor.error(f"piezometric level line {number} does not exist")


def _read_points(section: Section) -> dict[int, Point]:
    cursor = section.section("POINTS").cursor()
    points: dict[int, Point] = {}
    for _ in range(cursor.count("the number of points")):
        number, x, y = cursor.numbers("number, x and y of a point", 3)
        points[int(number)] = (x, y)
    return points


def _read_curves(section: Section, points: Collection[int]) -> dict[int, list[int]]:
    cursor = section.section("CURVES").cursor()
    curves: dict[int, list[int]] = {}
    for _ in range(cursor.count("the number of curves")):
        number = cursor.integer("the number of a curve")
        numbers = cursor.integers("the points of a curve", cursor.count("the number of points"))
        for point in numbers:
            if point not in points:
                raise cursor.error(f"point {point} does not exist")
        curves[number] = numbers
    return curves


def _read_chains(
    section: Section, name: str, points: Mapping[int, Point], curves: Mapping[int, Sequence[int]]
) -> dict[int, Chain]:
    cursor = section.section(name).cursor()
    chains: dict[int, Chain] = {}
    for _ in range(cursor.count("the number of lines")):
        number = cursor.integer("the number of a line")
        numbers = cursor.integers("the curves of a line", cursor.count("the number of curves"))
        chained: list[Point] = []
        for curve in numbers:
            if curve not in curves:
                raise cursor.error(f"curve {curve} does not exist")
            for point in (points[point] for point in curves[curve]):
                if not chained or chained[-1] != point:
                    chained.append(point)
        chains[number] = Chain(cursor.line_number, tuple(numbers), tuple(chained))
    return chains


def _read_layers(
    section: Section, boundaries: Collection[int], pl_lines: Collection[int]
) -> list[LayerBetween]:
    cursor = section.section("LAYERS").cursor()
    known = {*pl_lines, NO_PL_LINE, INTERPOLATED}
    layers = []
    for _ in range(cursor.count("the number of layers")):
        cursor.integer("the number of a layer")
        name = cursor.name("the material of a layer")
        line = cursor.line_number
        pl_top, pl_bottom = (_read_side(cursor, known) for _ in range(2))
        top, bottom = (_read_boundary(cursor, boundaries) for _ in range(2))
        layers.append(LayerBetween(line, name, pl_top, pl_bottom, top, bottom))
    if not layers:
        raise cursor.error("there are no layers")
    return layers


def _read_side(cursor: Cursor, known: Collection[int]) -> int:
    number = cursor.integer("the piezometric level line of a layer")
    check_pl_line(cursor, number, known)
    return number


def _read_boundary(cursor: Cursor, boundaries: Collection[int]) -> int:
    number = cursor.integer("the boundary of a layer")
    if number not in boundaries:
        raise cursor.error(f"boundary {number} does not exist")
    return number
