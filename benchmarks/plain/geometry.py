"""The two-dimensional geometry as plain Python, with a search wherever something is looked up.

It is what one would write first. The tests use it as the oracle of the module (the same state, the
same document, an exception of the same type and text, for every order of calls), and the
benchmarks as the baseline. So it is kept plain: every step stands in the order in which the module
has to appear to take it, and nothing here is tuned. What has nothing to do with the geometry comes
from the module's own frame.
"""

from typing import Any

from sembra.errors import ModelError
from sembra.external.dsettlement import _Load, _Model, _Vertical

from benchmarks.plain.chains import _Boundary, _Curve, _Layer, _PlLine, _Point


class _NonUniformLoad(_Load):
    def __init__(
        self,
        name: str,
        points: list[tuple[float, float]],
        time: int = 0,
        end_time: int = 0,
        gamma_dry: float = 10.0,
        gamma_wet: float = 10.0,
        temporary: bool = False,
    ):
        if time > end_time:
            raise ModelError(f"time ({time}) cannot exceed end_time ({end_time}).")
        for i, (x, _) in enumerate(points[1:]):
            if x < points[i][0]:
                raise ModelError(f"Points not monotonic ascending for x-coordinate: {points}")
        self._name = name
        self._points = points
        self._time = time
        self._end_time = end_time
        self._gamma_dry = gamma_dry
        self._gamma_wet = gamma_wet
        self._temporary = temporary

    @property
    def points(self) -> list[tuple[float, float]]:
        return self._points

    def _serialize(self, name: str) -> dict[str, Any]:
        return {
            "name": self._name,
            "points": self._points,
            "time": self._time,
            "end_time": self._end_time,
            "gamma_dry": self._gamma_dry,
            "gamma_wet": self._gamma_wet,
            "temporary": self._temporary,
        }


class Model2D(_Model):
    _non_uniform_loads: Any

    def __init__(
        self,
        calculation_model: Any,
        consolidation_model: Any,
        boundary_bottom: list[tuple[float, float]],
        create_default_materials: bool = True,
        **options: Any,
    ):
        super().__init__(
            calculation_model, consolidation_model, create_default_materials, **options
        )
        self._points: list[_Point] = []
        self._pl_lines: list[_PlLine] = []
        self._phreatic_line = 0
        self._boundaries: list[_Boundary] = []
        self._layers: list[_Layer] = []
        self._create_boundary([self.create_point(x, y) for x, y in boundary_bottom])

    @property
    def _curves(self) -> list[_Curve]:
        curves = []
        for boundary in self._boundaries:
            curves.extend(boundary.curves)
        for pl_line in self._pl_lines:
            curves.extend(pl_line.curves)
        return curves

    def create_point(self, x: float, y: float) -> _Point:
        point = _Point(x, y)
        self._points.append(point)
        return point

    def create_pl_line(self, points: list[_Point], is_phreatic: bool = False) -> _PlLine:
        curves = self._create_curves(points)
        try:
            pl_line = _PlLine(curves)
        except AssertionError:
            raise ModelError("Points of the pl-line must be ascending in X-direction") from None
        for known in self._pl_lines:
            if known == pl_line:
                return known
        self._pl_lines.append(pl_line)
        if is_phreatic:
            if self._phreatic_line != 0:
                raise ModelError(f"Phreatic line is already set: {self._phreatic_line}")
            self._phreatic_line = len(self._pl_lines)
        return pl_line

    def create_layer(
        self,
        boundary_top: list[_Point],
        material: str,
        pl_line_top: _PlLine | int,
        pl_line_bottom: _PlLine | int,
    ) -> _Layer:
        if material not in self._materials:
            raise ModelError(f"Material with name '{material}' does not exist")
        if isinstance(pl_line_top, int) and pl_line_top not in (0, 99):
            raise ModelError(
                "'pl_line_top' must be 0 or 99 or of type _PlLine created with 'create_pl_line'"
            )
        if isinstance(pl_line_bottom, int) and pl_line_bottom not in (0, 99):
            raise ModelError(
                "'pl_line_bottom' must be 0 or 99 or of type _PlLine created with 'create_pl_line'"
            )
        if not self._layers and pl_line_bottom == 99:
            raise ModelError(
                "Interpolation value for pl-line (99) cannot be assigned to bottom of geometry."
            )
        _boundary_top = self._create_boundary(boundary_top)
        if not self._layers:
            _boundary_bottom = self._boundaries[0]
        else:
            _boundary_bottom = self._layers[-1].boundary_top
        if _boundary_top == _boundary_bottom:
            raise ModelError("Boundary top is similar to boundary bottom.")
        layer = _Layer(_boundary_top, _boundary_bottom, material, pl_line_top, pl_line_bottom)
        self._layers.append(layer)
        return layer

    def create_vertical(self, x: float) -> _Vertical:
        _left, _right = self._limits
        if x < _left:
            raise ModelError(
                f"Vertical with x-coordinate {x} is smaller than left limit of geometry ({_left})."
            )
        if x > _right:
            raise ModelError(
                f"Vertical with x-coordinate {x} is greater than right limit of geometry "
                f"({_right})."
            )
        for known in self._verticals:
            if known.x == x:
                return known
        vertical = _Vertical(x)
        self._verticals.append(vertical)
        self._verticals.sort(key=lambda vertical: vertical.x)
        return vertical

    def create_non_uniform_load(
        self,
        name: str,
        points: list[tuple[float, float]],
        time: int = 0,
        end_time: int = 0,
        gamma_dry: float = 10.0,
        gamma_wet: float = 10.0,
        temporary: bool = False,
    ) -> _NonUniformLoad:
        if len(name) > 25:
            raise ModelError(
                f"Name of non-uniform load can be max 25 characters long (is {len(name)} for "
                f"{name})."
            )
        if name in self._non_uniform_loads:
            raise ModelError(f"Non-uniform load with name '{name}' already exists.")
        first_point = points[0]
        last_point = points[-1]
        non_uniform_load_points = {
            point for load in self._non_uniform_loads.values() for point in load.points
        }
        points_in_boundaries = {
            (point.x, point.y) for boundary in self._boundaries for point in boundary.points
        }
        valid_snapping_points = non_uniform_load_points.union(points_in_boundaries)
        if first_point not in valid_snapping_points:
            raise ModelError(
                f"First point of non-uniform load {first_point} is not in points or in points of "
                f"non-uniform load."
            )
        if last_point not in valid_snapping_points:
            raise ModelError(
                f"Last point of non-uniform load {last_point} is not in points or in points of "
                f"non-uniform load."
            )
        load = _NonUniformLoad(name, points, time, end_time, gamma_dry, gamma_wet, temporary)
        self._non_uniform_loads[name] = load
        return load

    def _create_curves(self, points: list[_Point]) -> list[_Curve]:
        if points[0].x != self._limits[0] or points[-1].x != self._limits[1]:
            raise ModelError(
                "First and last points must be on the left and right boundary limits respectively"
            )
        curves = []
        for i in range(len(points) - 1):
            p1, p2 = points[i], points[i + 1]
            curves.append(self._create_curve(p1, p2))
        return curves

    def _create_curve(self, p1: _Point, p2: _Point) -> _Curve:
        curve = _Curve(p1, p2)
        for known in self._curves:
            if known == curve:
                return known
        return curve

    def _create_boundary(self, points: list[_Point]) -> _Boundary:
        curves = self._create_curves(points)
        try:
            boundary = _Boundary(curves)
        except AssertionError:
            raise ModelError("Points of the boundary must be ascending in X-direction") from None
        for known in self._boundaries:
            if known == boundary:
                return known
        self._boundaries.append(boundary)
        self._boundaries.sort(key=lambda boundary: boundary.area_above_horizontal())
        return boundary

    def _validate(self) -> None:
        super()._validate()
        try:
            top_layer = self._layers[-1]
        except IndexError:
            raise ModelError("Model should have at least 1 layer.") from None
        if top_layer.pl_line_top == 99:
            raise ModelError(
                f"pl_line_top for top layer cannot have interpolation value (99): "
                f"{top_layer.pl_line_top}"
            )
        if self._phreatic_line == 0:
            raise ModelError("No phreatic line is set for the model.")

    def _serialize(self) -> dict[str, Any]:
        document = super()._serialize().copy()
        document["model_type"] = 1
        document["points"] = self._serialize_points()
        document["curves"] = self._serialize_curves()
        document["boundaries"] = self._serialize_boundaries()
        document["pl_lines"] = self._serialize_pl_lines()
        document["layers"] = self._serialize_layers()
        document["phreatic_line"] = self._phreatic_line
        return document

    def _serialize_points(self) -> list[tuple[float, float, float]]:
        return [(point.x, point.y, 0) for point in self._points]

    def _serialize_curves(self) -> list[tuple[int, int]]:
        return [
            (self._points.index(curve.p1) + 1, self._points.index(curve.p2) + 1)
            for curve in self._curves
        ]

    def _serialize_boundaries(self) -> list[list[int]]:
        return [
            [self._curves.index(curve) + 1 for curve in boundary.curves]
            for boundary in self._boundaries
        ]

    def _serialize_pl_lines(self) -> list[list[int]]:
        return [
            [self._curves.index(curve) + 1 for curve in pl_line.curves]
            for pl_line in self._pl_lines
        ]

    def _serialize_layers(self) -> list[dict[str, Any]]:
        return [
            {
                "material": layer.material,
                "boundary_top": self._boundary_number(layer.boundary_top),
                "boundary_bottom": self._boundary_number(layer.boundary_bottom),
                "pl_top": self._pl_line_number(layer.pl_line_top),
                "pl_bottom": self._pl_line_number(layer.pl_line_bottom),
            }
            for layer in self._layers
        ]

    def _boundary_number(self, boundary: _Boundary | int) -> int:
        return boundary if isinstance(boundary, int) else self._boundaries.index(boundary)

    def _pl_line_number(self, pl_line: _PlLine | int) -> int:
        return self._pl_lines.index(pl_line) + 1 if isinstance(pl_line, _PlLine) else pl_line

    @property
    def _min_vertical_drains(self) -> float:
        try:
            bottom_layer = self._layers[0]
        except IndexError:
            raise ModelError("Create at least 1 layer") from None
        return max(point.y for point in bottom_layer.boundary_bottom.points)

    @property
    def _max_vertical_drains(self) -> float:
        try:
            top_layer = self._layers[-1]
        except IndexError:
            raise ModelError("Create at least 1 layer") from None
        return max(point.y for point in top_layer.boundary_top.points)
