"""What random two-dimensional models are made of: classes in two editions, and odd numbers.

An edition is a module with the classes of the geometry: the extension module, or its plain-Python
equivalent.
"""

import math
from decimal import Decimal
from fractions import Fraction
from types import SimpleNamespace
from typing import Any

import sembra.external.dsettlement as native

from benchmarks.plain import geometry as plain

NAN = math.nan


class Unhashable(float):
    """A number that no dictionary takes."""

    def __hash__(self) -> int:
        raise TypeError("unhashable type: 'Unhashable'")


class Loose(float):
    """A number that is equal to all numbers of the same size, whatever their sign."""

    def __eq__(self, other: object) -> bool:
        return isinstance(other, float | int) and abs(self) == abs(other)

    def __hash__(self) -> int:
        return 0


def edition(module: Any, name: str) -> SimpleNamespace:
    """The classes of one edition, with subclasses as an application might write them."""

    class NamedPoint(module._Point):  # type: ignore[misc]
        label = "named"

    class LoosePoint(module._Point):  # type: ignore[misc]
        def __eq__(self, other: object) -> bool:
            return isinstance(other, module._Point) and self.x == other.x

        def __hash__(self) -> int:
            return hash(self.x)

    class LooseCurve(module._Curve):  # type: ignore[misc]
        def __eq__(self, other: object) -> bool:
            return isinstance(other, module._Curve) and self.p1 == other.p1

    class MirroredBoundary(module._Boundary):  # type: ignore[misc]
        def area_above_horizontal(self, y: float = 0.0) -> Any:
            return -super().area_above_horizontal(y)

    class NegativeVertical(native._Vertical):
        @property
        def x(self) -> Any:
            return -super().x

    classes = SimpleNamespace(_Vertical=native._Vertical)
    for cls in (NamedPoint, LoosePoint, LooseCurve, MirroredBoundary, NegativeVertical):
        cls.__qualname__ = f"{name}.{cls.__name__}"  # where pickle finds it
        setattr(classes, cls.__name__, cls)
    for of_module in ("Model2D", "_Point", "_Curve", "_PlLine", "_Boundary"):
        setattr(classes, of_module, getattr(module, of_module))
    return classes


NATIVE = edition(native, "NATIVE")
PLAIN = edition(plain, "PLAIN")
EDITIONS = (NATIVE, PLAIN)

PLAIN_X: list[Any] = [0.0, 25.0, 50.0, 75.0, 100.0]
PLAIN_Y: list[Any] = [0.0, 1.0, 2.5, 5.0]
MIXED_X: list[Any] = [0, 25, 50.0, 75, 100, True, False, -0.0, 100.0, 0.0]
MIXED_Y: list[Any] = [0, 1, True, False, -0.0, 0.0, 1.0, 5, -5, 2**53, 2.0**53]
ODD_X: list[Any] = [Decimal(50), Fraction(50), Unhashable(50), Loose(50), NAN, 50, 2**53 + 1, None]
ODD_Y: list[Any] = [
    Decimal("1"),
    Decimal("0.1"),
    0.1,
    Fraction(1, 10),
    Unhashable(1),
    Loose(-1),
    NAN,
    float("nan"),
    math.inf,
    -math.inf,
    2**53 + 1,
    2.0**53,
    10**400,
    "1",
    None,
    [1.0],
]
PL_LINE_CODES: list[Any] = [0, 99, 99, 0, 1, True, False, 99.0, 0.0, None, "99", -1]
