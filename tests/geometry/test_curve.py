"""`_Curve`."""

import math
from typing import Any

import pytest
from sembra.errors import ModelError
from sembra.external.dsettlement import _Curve, _Point


def test_end_points_are_ordered_by_x_and_kept_as_the_very_objects() -> None:
    a, b = _Point(0.0, 5.0), _Point(2, 1.0)
    for curve in (_Curve(a, b), _Curve(b, a)):
        assert curve.p1 is a
        assert curve.p2 is b
        assert vars(curve) == {"_p1": a, "_p2": b}
    assert _Curve(a, b) == _Curve(b, a)
    assert hash(_Curve(a, b)) == hash(_Curve(b, a)) == hash((a, b))


def test_vertical_curves_keep_the_order_in_which_they_were_drawn() -> None:
    low, high = _Point(50.0, 0.0), _Point(50, 5.0)
    up, down = _Curve(low, high), _Curve(high, low)
    assert (up.p1, up.p2) == (low, high)
    assert (down.p1, down.p2) == (high, low)
    assert up != down


@pytest.mark.parametrize("same", [_Point(25, 10.0), _Point(25.0, 10.0)])
def test_two_equal_points_are_no_curve(same: _Point) -> None:
    with pytest.raises(ModelError, match=r"^Curve cannot consist of duplicate points$"):
        _Curve(_Point(25, 10), same)


def test_points_that_equal_nothing_are_no_repeat() -> None:
    point = _Point(0.0, math.nan)
    curve = _Curve(point, point)
    assert curve.p1 is curve.p2 is point
    assert not curve == curve  # noqa: SIM201


def test_curves_with_equal_end_points_are_equal() -> None:
    first = _Curve(_Point(0, 1), _Point(2, 3))
    assert first == _Curve(_Point(0.0, 1.0), _Point(2.0, 3.0))
    assert first != _Curve(_Point(0.0, 1.0), _Point(2.0, 4.0))
    assert first != _Curve(_Point(0.0, 2.0), _Point(2.0, 3.0))
    assert first.__eq__("curve") is NotImplemented


def test_the_texts_of_the_points_stand_in_the_text_of_the_curve() -> None:
    curve = _Curve(_Point(25, 10.0), _Point(0.0, 1))
    assert str(curve) == repr(curve) == "_Curve(_Point(0.0, 1), _Point(25, 10.0))"


def test_points_are_compared_and_ordered_through_their_own_operations() -> None:
    class Mirrored(_Point):
        @property
        def x(self) -> Any:
            return -super().x

    left, right = Mirrored(0.0, 0.0), Mirrored(2.0, 0.0)
    assert _Curve(left, right).p1 is right


def test_coordinates_that_have_no_order_fail_as_they_do() -> None:
    text: Any = "a"
    with pytest.raises(
        TypeError, match=r"^'<' not supported between instances of 'float' and 'str'$"
    ):
        _Curve(_Point(text, 0.0), _Point(1.0, 0.0))
