"""`_Vertical`."""

from typing import Any

import pytest
from sembra.external.dsettlement import _Vertical


def test_a_vertical_serialises_its_position_only() -> None:
    assert _Vertical(45.0)._serialize() == {"x": 45.0}


def test_an_integer_position_stays_an_integer() -> None:
    assert type(_Vertical(45)._serialize()["x"]) is int
    assert type(_Vertical(45).x) is int


def test_the_position_is_stored_as_given_and_unchecked() -> None:
    x: Any = object()
    vertical = _Vertical(x)
    assert vertical.x is x
    assert vars(vertical) == {"_x": x}
    assert vertical._serialize()["x"] is x


def test_the_position_may_be_given_by_keyword() -> None:
    assert _Vertical(x=3.0).x == 3.0


def test_each_call_gives_a_new_mapping() -> None:
    vertical = _Vertical(1.0)
    assert type(vertical._serialize()) is dict
    assert vertical._serialize() is not vertical._serialize()


def test_the_position_is_read_only() -> None:
    vertical: Any = _Vertical(1.0)
    with pytest.raises(AttributeError, match=r"^property 'x' of '_Vertical' object has no setter$"):
        vertical.x = 2.0
    with pytest.raises(
        AttributeError, match=r"^property 'x' of '_Vertical' object has no deleter$"
    ):
        del vertical.x
    assert vertical.x == 1.0


def test_two_verticals_at_the_same_position_are_not_equal() -> None:
    first, second = _Vertical(1.0), _Vertical(1.0)
    assert first != second
    assert first == first
    assert len({first, second, first}) == 2


def test_equality_and_hash_are_those_of_every_object() -> None:
    assert _Vertical.__eq__ is object.__eq__
    assert _Vertical.__hash__ is object.__hash__
