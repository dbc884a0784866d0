"""`_Point`."""

import copy
import math
import pickle
import weakref
from decimal import Decimal
from typing import Any

import pytest
from sembra.external.dsettlement import _Point


class Labelled(_Point):
    """A point with a name, as an application might have it."""

    label = "a"


def test_coordinates_are_kept_as_given() -> None:
    x: Any = object()
    point = _Point(x, 25)
    assert point.x is x
    assert type(point.y) is int
    assert vars(point) == {"_x": x, "_y": 25}


def test_coordinates_are_read_only() -> None:
    point: Any = _Point(1.0, 2.0)
    for name in ("x", "y"):
        with pytest.raises(AttributeError, match=f"property '{name}' of '_Point' object"):
            setattr(point, name, 3.0)
    assert (point.x, point.y) == (1.0, 2.0)


def test_an_integer_equals_the_float_of_its_size_and_so_do_their_hashes() -> None:
    whole, real = _Point(25, 10.0), _Point(25.0, 10.0)
    assert whole == real
    assert hash(whole) == hash(real) == hash((25, 10.0))
    assert str(whole) == "_Point(25, 10.0)"
    assert str(real) == repr(real) == "_Point(25.0, 10.0)"


@pytest.mark.parametrize(("x", "y"), [(1.0, 3.0), (3.0, 2.0), (1.0000000000000002, 2.0)])
def test_points_differ_where_a_coordinate_does(x: float, y: float) -> None:
    assert _Point(1.0, 2.0) != _Point(x, y)
    assert not _Point(1.0, 2.0) == _Point(x, y)  # noqa: SIM201


def test_equality_leaves_other_classes_to_themselves() -> None:
    assert _Point(1.0, 2.0).__eq__((1.0, 2.0)) is NotImplemented
    assert _Point(1.0, 2.0) != (1.0, 2.0)


def test_subclasses_count_as_points() -> None:
    assert Labelled(1, 2) == _Point(1.0, 2.0)
    assert _Point(1.0, 2.0) == Labelled(1, 2)


def test_what_is_not_a_number_equals_nothing_not_even_itself() -> None:
    point = _Point(0.0, math.nan)
    assert not point == point  # noqa: SIM201
    assert [point].index(point) == 0


def test_the_second_coordinates_are_compared_only_if_the_first_are_equal() -> None:
    class Watched(float):
        compared = 0

        def __eq__(self, other: object) -> bool:
            Watched.compared += 1
            return float(self) == other

        __hash__ = float.__hash__

    assert _Point(1.0, Watched(2.0)) != _Point(2.0, Watched(2.0))
    assert Watched.compared == 0
    assert _Point(1.0, Watched(2.0)) == _Point(1.0, Watched(2.0))
    assert Watched.compared > 0


def test_the_result_of_the_last_comparison_is_the_result() -> None:
    class Symbol:
        def __eq__(self, other: object) -> Any:
            return "perhaps"

        __hash__ = None  # type: ignore[assignment]

    symbol: Any = Symbol()
    result: Any = _Point(1.0, symbol).__eq__(_Point(1.0, 2.0))
    assert result == "perhaps"


def test_a_coordinate_that_has_no_hash_gives_none() -> None:
    unhashable: Any = [1.0]
    with pytest.raises(TypeError, match=r"^unhashable type: 'list'$"):
        hash(_Point(1.0, unhashable))


def test_numbers_of_other_types_are_compared_by_their_own_equality() -> None:
    exact: Any = Decimal("0.1")
    assert _Point(exact, 0.0) != _Point(0.1, 0.0)
    half: Any = Decimal("0.5")
    assert _Point(half, 0.0) == _Point(0.5, 0.0)


def test_points_behave_like_objects_of_any_class() -> None:
    point: Any = _Point(1.0, 2)
    point.note = "corner"
    for copied in (copy.copy(point), copy.deepcopy(point), pickle.loads(pickle.dumps(point))):
        assert copied == point
        assert vars(copied) == {"_x": 1.0, "_y": 2, "note": "corner"}
    del point.note
    with pytest.raises(AttributeError):
        del point.note
    assert weakref.ref(point)() is point
