"""What a cross-section is made of, as plain Python: points, curves, chains of them, and layers."""

from typing import Any

from sembra.errors import ModelError


class _Point:
    def __init__(self, x: float, y: float):
        self._x = x
        self._y = y

    @property
    def x(self) -> float:
        return self._x

    @property
    def y(self) -> float:
        return self._y

    def __eq__(self, other: Any) -> bool:
        if not isinstance(other, _Point):
            return NotImplemented
        return self._x == other._x and self._y == other._y

    def __hash__(self) -> int:
        return hash((self._x, self._y))

    def __repr__(self) -> str:
        return f"_Point({self._x}, {self._y})"


class _Curve:
    def __init__(self, p1: _Point, p2: _Point):
        if p1 == p2:
            raise ModelError("Curve cannot consist of duplicate points")
        self._p1, self._p2 = sorted([p1, p2], key=lambda point: point.x)

    @property
    def p1(self) -> _Point:
        return self._p1

    @property
    def p2(self) -> _Point:
        return self._p2

    def __eq__(self, other: Any) -> bool:
        if not isinstance(other, _Curve):
            return NotImplemented
        return self._p1 == other._p1 and self._p2 == other._p2

    def __hash__(self) -> int:
        return hash((self._p1, self._p2))

    def __repr__(self) -> str:
        return f"_Curve({self._p1}, {self._p2})"


class _CurveList:
    def __init__(self, curves: list[_Curve]):
        for i in range(len(curves) - 1):
            curve, next_curve = curves[i : i + 2]
            assert curve.p2 == next_curve.p1, "Curves must be connected"
        self._curves = curves

    def __eq__(self, other: Any) -> bool:
        if not isinstance(other, _CurveList):
            return NotImplemented
        return tuple(self._curves) == tuple(other._curves)

    def __hash__(self) -> int:
        return hash(tuple(self._curves))

    @property
    def curves(self) -> list[_Curve]:
        return list(self._curves)

    @property
    def points(self) -> list[_Point]:
        return [curve.p1 for curve in self._curves] + [self._curves[-1].p2]

    def area_above_horizontal(self, y: float = 0.0) -> float:
        area = 0.0
        for curve in self._curves:
            _y = (curve.p1.y + curve.p2.y) / 2 - y
            area += (curve.p2.x - curve.p1.x) * _y
        return area


class _PlLine(_CurveList):
    pass


class _Boundary(_CurveList):
    pass


class _Layer:
    def __init__(
        self,
        boundary_top: _Boundary,
        boundary_bottom: _Boundary,
        material: str,
        pl_line_top: _PlLine | int,
        pl_line_bottom: _PlLine | int,
    ):
        self._boundary_top = boundary_top
        self._boundary_bottom = boundary_bottom
        self._material = material
        self._pl_line_top = pl_line_top
        self._pl_line_bottom = pl_line_bottom

    @property
    def material(self) -> str:
        return self._material

    @property
    def boundary_top(self) -> _Boundary:
        return self._boundary_top

    @property
    def boundary_bottom(self) -> _Boundary:
        return self._boundary_bottom

    @property
    def pl_line_top(self) -> _PlLine | int:
        return self._pl_line_top

    @property
    def pl_line_bottom(self) -> _PlLine | int:
        return self._pl_line_bottom
