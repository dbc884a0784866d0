"""`Model2D.create_vertical`."""

import math
import random
from collections.abc import Callable
from decimal import Decimal
from typing import Any

import pytest
from sembra.errors import ModelError
from sembra.external.dsettlement import _Vertical

Factory = Callable[..., Any]


def positions(model: Any) -> list[Any]:
    return [vertical.x for vertical in model.verticals]


def test_verticals_are_kept_in_order_and_found_again(new_model_2d: Factory) -> None:
    model = new_model_2d()
    last, first, middle = (model.create_vertical(x) for x in (55.0, 45.0, 50.0))
    assert model._verticals == [first, middle, last]
    assert model.create_vertical(50.0) is middle
    assert model.create_vertical(50) is middle
    assert type(middle) is _Vertical
    assert type(model.create_vertical(7).x) is int


def test_the_limits_are_included(new_model_2d: Factory) -> None:
    model = new_model_2d()
    model.create_vertical(100.0)
    model.create_vertical(0)
    assert positions(model) == [0, 100.0]


@pytest.mark.parametrize(
    ("x", "text"),
    [
        (100.5, "100.5 is greater than right limit of geometry (100.0)"),
        (101, "101 is greater than right limit of geometry (100.0)"),
        (-1, "-1 is smaller than left limit of geometry (0.0)"),
        (-math.inf, "-inf is smaller than left limit of geometry (0.0)"),
    ],
)
def test_what_lies_outside_is_refused(new_model_2d: Factory, x: float, text: str) -> None:
    model = new_model_2d()
    with pytest.raises(ModelError) as caught:
        model.create_vertical(x)
    assert str(caught.value) == f"Vertical with x-coordinate {text}."
    assert model._verticals == []


def test_limits_in_the_wrong_order_leave_no_room(new_model_2d: Factory) -> None:
    model = new_model_2d(limits=(100, 0), boundary_bottom=[(100, 0.0), (0, 0.0)])
    with pytest.raises(
        ModelError,
        match=r"^Vertical with x-coordinate 50 is smaller than left limit of geometry \(100\)\.$",
    ):
        model.create_vertical(50)


@pytest.mark.parametrize(
    ("limits", "error"), [((0.0, 100.0, 1.0), ValueError), ((0.0,), ValueError), (5, TypeError)]
)
def test_limits_of_another_form_fail_as_the_host_does(
    new_model_2d: Factory, limits: Any, error: type[Exception]
) -> None:
    model = new_model_2d()
    model._limits = limits
    with pytest.raises(error):
        model.create_vertical(50.0)


def test_many_verticals_in_any_order(new_model_2d: Factory) -> None:
    model = new_model_2d()
    xs = [i / 8 for i in range(801)]
    shuffled = random.Random(1).sample(xs, len(xs))
    made = {x: model.create_vertical(x) for x in shuffled}
    assert positions(model) == xs
    assert all(model.create_vertical(x) is made[x] for x in shuffled)


def test_what_is_not_a_number_is_neither_refused_nor_found(new_model_2d: Factory) -> None:
    model = new_model_2d()
    model.create_vertical(60.0)
    one, other = model.create_vertical(math.nan), model.create_vertical(math.nan)
    assert one is not other
    model.create_vertical(50.0)
    expected = [60.0]
    for x in (math.nan, math.nan, 50.0):
        expected.append(x)
        expected.sort()
    assert repr(positions(model)) == repr(expected)


def test_other_numbers_are_compared_by_their_own_operations(new_model_2d: Factory) -> None:
    model = new_model_2d()
    half: Any = Decimal("0.5")
    vertical = model.create_vertical(half)
    assert model.create_vertical(0.5) is vertical
    model.create_vertical(0.25)
    assert positions(model) == [0.25, half]


def test_a_value_without_an_order_is_refused_by_the_host(new_model_2d: Factory) -> None:
    model = new_model_2d()
    text: Any = "50"
    with pytest.raises(TypeError, match=r"^'<' not supported between instances of"):
        model.create_vertical(text)
    assert model._verticals == []


CHANGES: dict[str, Callable[[Any], Any]] = {
    "reverse": lambda model: model._verticals.reverse(),
    "append": lambda model: model._verticals.append(_Vertical(5.0)),
    "replace": lambda model: model._verticals.__setitem__(1, _Vertical(5.0)),
    "clear": lambda model: model._verticals.clear(),
    "rebind": lambda model: setattr(model, "_verticals", [_Vertical(5.0), _Vertical(4.0)]),
    "move": lambda model: setattr(model.kept, "_x", 5.0),
    "make anew": lambda model: model.kept.__init__(5.0),
}


@pytest.mark.parametrize("change", CHANGES)
def test_what_is_changed_behind_the_operations_is_seen(new_model_2d: Factory, change: str) -> None:
    model = new_model_2d()
    for x in (10.0, 20.0, 30.0):
        model.create_vertical(x)
    model.kept = model.verticals[2]
    CHANGES[change](model)
    expected = positions(model)
    for x in (5.0, 20.0, 25.0, 30.0):
        if x not in expected:
            expected.append(x)
            expected.sort()
        assert model.create_vertical(x).x == x
        assert positions(model) == expected


def test_an_own_class_of_verticals_is_asked(
    new_model_2d: Factory, monkeypatch: pytest.MonkeyPatch
) -> None:
    class Mirrored(_Vertical):
        @property
        def x(self) -> Any:
            return -super().x

    model = new_model_2d()
    model.create_vertical(10.0)
    monkeypatch.setattr("sembra.external.dsettlement._Vertical", Mirrored)
    model.create_vertical(20.0)
    assert positions(model) == [-20.0, 10.0]
    monkeypatch.undo()
    monkeypatch.setattr(_Vertical, "x", property(lambda self: 1.0))
    assert model.create_vertical(1.0) is model.verticals[1]
