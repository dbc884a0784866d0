"""The section GEOMETRY DATA: points, curves, boundaries, piezometric level lines and layers."""

from collections.abc import Mapping, Sequence
from dataclasses import dataclass

from sembra.local.input_file.sections import Cursor, Section
from sembra.local.worker.ground.cross_section import Geometry2D, LayerBetween
from sembra.local.worker.ground.material import Material
from sembra.local.worker.ground.polyline import Polyline

Points = dict[int, tuple[float, float]]


@dataclass(frozen=True)
class _Curves:
    """Points of each curve by the curve's number."""

    points: Mapping[int, Sequence[tuple[float, float]]]

    def chain(self, cursor: Cursor, numbers: Sequence[int]) -> Polyline:
        """The polyline along curves, in their order."""
        chained: list[tuple[float, float]] = []
        for number in numbers:
            if number not in self.points:
                raise cursor.error(f"curve {number} does not exist")
            for point in self.points[number]:
                if not chained or chained[-1] != point:
                    chained.append(point)
        try:
            return Polyline(tuple(chained))
        except ValueError as error:
            raise cursor.error(str(error)) from None


def read_geometry(whole: Section, materials: Mapping[str, Material]) -> Geometry2D:
    """The cross-section of a two-dimensional file.

    Raises:
        InputFileError: the section is malformed, or it refers to what doesn't exist.
    """
    section = whole.section("GEOMETRY DATA")
    curves = _read_curves(section, _read_points(section))
    boundaries = _read_chains(section, "BOUNDARIES", curves)
    pl_lines = read_pl_lines(whole)
    phreatic_line = read_pl_line(section.section("PHREATIC LINE").cursor(), pl_lines)
    layers = _read_layers(section, boundaries, pl_lines, materials)
    return Geometry2D(tuple(reversed(layers)), phreatic_line, tuple(pl_lines.values()))


def read_pl_lines(whole: Section) -> dict[int, Polyline]:
    """The piezometric level lines of a two-dimensional file by their numbers.

    Raises:
        InputFileError: the section is malformed, or it refers to what doesn't exist.
    """
    section = whole.section("GEOMETRY DATA")
    return _read_chains(section, "PIEZO LINES", _read_curves(section, _read_points(section)))


def _read_points(section: Section) -> Points:
    cursor = section.section("POINTS").cursor()
    points: Points = {}
    for _ in range(cursor.count("the number of points")):
        number, x, y = cursor.numbers("number, x and y of a point", 3)
        points[int(number)] = (x, y)
    return points


def _read_curves(section: Section, points: Points) -> _Curves:
    cursor = section.section("CURVES").cursor()
    curves: dict[int, list[tuple[float, float]]] = {}
    for _ in range(cursor.count("the number of curves")):
        number = cursor.integer("the number of a curve")
        numbers = cursor.integers("the points of a curve", cursor.count("the number of points"))
        for point in numbers:
            if point not in points:
                raise cursor.error(f"point {point} does not exist")
        curves[number] = [points[point] for point in numbers]
    return _Curves(curves)


def _read_chains(section: Section, name: str, curves: _Curves) -> dict[int, Polyline]:
    cursor = section.section(name).cursor()
    chains: dict[int, Polyline] = {}
    for _ in range(cursor.count("the number of lines")):
        number = cursor.integer("the number of a line")
        numbers = cursor.integers("the curves of a line", cursor.count("the number of curves"))
        chains[number] = curves.chain(cursor, numbers)
    return chains


def _read_layers(
    section: Section,
    boundaries: dict[int, Polyline],
    pl_lines: dict[int, Polyline],
    materials: Mapping[str, Material],
) -> list[LayerBetween]:
    """The layers in the order of the file, the lowest first."""
    cursor = section.section("LAYERS").cursor()
    layers = []
    for _ in range(cursor.count("the number of layers")):
        cursor.integer("the number of a layer")
        name = cursor.name("the material of a layer")
        if name not in materials:
            raise cursor.error(f'the material "{name}" is unknown')
        head_top, head_bottom = (
            read_head(cursor, cursor.integer("the piezometric level line of a layer"), pl_lines)
            for _ in range(2)
        )
        top = _read_boundary(cursor, boundaries)
        bottom = _read_boundary(cursor, boundaries)
        layers.append(LayerBetween(top, bottom, materials[name], head_top, head_bottom))
    if not layers:
        raise cursor.error("there are no layers")
    return layers


def read_pl_line(cursor: Cursor, pl_lines: Mapping[int, Polyline]) -> Polyline:
    """The piezometric level line whose number the next line starts with.

    Raises:
        InputFileError: there is no such line.
    """
    return _pl_line(cursor, cursor.integer("the number of a piezometric level line"), pl_lines)


def read_head(cursor: Cursor, number: int, pl_lines: Mapping[int, Polyline]) -> Polyline | int:
    """The piezometric level line of a number, or the code that it is.

    Raises:
        InputFileError: there is no such line.
    """
    if number in (LayerBetween.NO_PRESSURE, LayerBetween.INTERPOLATED):
        return number
    return _pl_line(cursor, number, pl_lines)


def _pl_line(cursor: Cursor, number: int, pl_lines: Mapping[int, Polyline]) -> Polyline:
    if number not in pl_lines:
        raise cursor.error(f"piezometric level line {number} does not exist")
    return pl_lines[number]


def _read_boundary(cursor: Cursor, boundaries: dict[int, Polyline]) -> Polyline:
    number = cursor.integer("the boundary of a layer")
    if number not in boundaries:
        raise cursor.error(f"boundary {number} does not exist")
    return boundaries[number]
