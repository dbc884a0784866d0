"""Whoever looks at the lists of a two-dimensional model sees them in order."""

import copy
import inspect
import pickle
import random
from collections.abc import Callable
from functools import partial
from typing import Any

import pytest
import sembra.external.dsettlement as module
from sembra.external.dsettlement import Model2D, _Vertical

from tests.geometry.index_2d import build, index_of

Factory = Callable[..., Any]

LOOKS: dict[str, Callable[[Any, str], Any]] = {
    "attribute": getattr,
    "vars": lambda model, name: vars(model)[name],
    "__dict__": lambda model, name: model.__dict__[name],
    "copy": lambda model, name: vars(copy.copy(model))[name],
    "pickle": lambda model, name: vars(pickle.loads(pickle.dumps(model)))[name],
    "__getstate__": lambda model, name: model.__getstate__()[name],
}


@pytest.mark.parametrize("look", LOOKS)
def test_whoever_looks_sees_the_lists_in_order(
    new_model_2d: Factory, points_of: Factory, look: str
) -> None:
    model = build(new_model_2d(), points_of)
    assert [v.x for v in LOOKS[look](model, "_verticals")] == [3.0, 4.0, 5.0]
    model = build(new_model_2d(), points_of)
    areas = [b.area_above_horizontal() for b in LOOKS[look](model, "_boundaries")]
    assert areas == [0.0, 300.0, 350.0, 400.0]


def test_entries_of_the_same_size_keep_the_order_of_creation(
    new_model_2d: Factory, points_of: Factory
) -> None:
    rng = random.Random(1)
    model = new_model_2d()
    made = []
    for _ in range(300):
        y = float(rng.randrange(1, 6))
        height = rng.random()
        # The area depends on y alone.
        shape = [(0.0, y), (25.0, y - height), (50.0, y), (75.0, y + height), (100.0, y)]
        made.append(model._create_boundary(points_of(model, *shape)))
        if rng.random() < 0.05:
            assert len(model._boundaries) == len(made) + 1
    expected = sorted(made, key=lambda boundary: boundary.area_above_horizontal())
    assert all(a is b for a, b in zip(model._boundaries[1:], expected, strict=True))


class Slots(Model2D):
    """A model that says itself what it is made of, past the class before it."""

    def __getstate__(self) -> Any:
        return object.__getstate__(self)


@pytest.mark.implementation
def test_what_a_model_is_made_of_can_be_asked_past_its_class(
    new_model_2d: Factory, points_of: Factory
) -> None:
    model = build(new_model_2d(Slots), points_of)
    for one in (copy.deepcopy(model), pickle.loads(pickle.dumps(model))):
        assert index_of(one) is None
        one.create_vertical(1.0)
        assert [v.x for v in one._verticals] == [1.0, 3.0, 4.0, 5.0]
    shallow = copy.copy(model)
    shallow._verticals = [_Vertical(8.0)]
    assert shallow.create_vertical(5.0) is not model.create_vertical(5.0)
    assert [v.x for v in shallow._verticals] == [5.0, 8.0]
    assert [v.x for v in model._verticals] == [3.0, 4.0, 5.0]


def test_a_list_that_could_not_grow_is_still_put_in_order(
    new_model_2d: Factory, level: Factory
) -> None:
    testcapi: Any = pytest.importorskip("_testcapi")
    failures = 0
    for count in range(3, 12):
        for allocation in range(12):
            model = new_model_2d()
            for i in range(count):
                model._create_boundary(level(model, 50.0 - i))
                model.create_vertical(50.0 - i)
            for act in (
                partial(model._create_boundary, level(model, 3.0)),
                partial(model.create_vertical, 1.0),
            ):
                testcapi.set_nomemory(allocation, allocation + 1)
                try:
                    act()
                except MemoryError:
                    failures += 1
                finally:
                    testcapi.remove_mem_hooks()
            areas = [boundary.area_above_horizontal() for boundary in model._boundaries]
            assert areas == sorted(areas)
            xs = [vertical.x for vertical in model._verticals]
            assert xs == sorted(xs)
    assert failures > 0


def test_the_attributes_of_a_model_are_those_of_any_object(new_model_2d: Factory) -> None:
    model = new_model_2d()
    assert vars(model) is model.__dict__
    assert inspect.getattr_static(model, "_points") is model._points
    model.__dict__ = {"_verticals": [_Vertical(1.0)], "_limits": (0.0, 9.0)}
    assert model.create_vertical(1) is vars(model)["_verticals"][0]
    with pytest.raises(TypeError, match=r"^__dict__ must be set to a dictionary, not a 'int'$"):
        model.__dict__ = 5
    del model.__dict__
    assert vars(model) == {}
    assert not hasattr(Model2D, "_boundaries")
    with pytest.raises(
        AttributeError, match=r"^type object 'Model2D' has no attribute '_verticals'"
    ):
        _ = Model2D._verticals


class Mixin:
    """A class whose objects have a dictionary, which it lays its own way to."""


class Snapshots:
    def __getstate__(self) -> dict[str, Any]:
        return self.__dict__.copy()


class Shadowing(Model2D):
    __slots__ = ("_dsettlement_index",)


@pytest.mark.parametrize(
    "cls",
    [
        type("Mixed", (Mixin, Model2D), {}),
        type("Snapshot", (Snapshots, Model2D), {}),
        Shadowing,
        type("Named", (Model2D,), {"_dsettlement_index": None}),
    ],
)
def test_a_class_that_may_be_looked_at_unnoticed_is_searched(
    new_model_2d: Factory, points_of: Factory, cls: type
) -> None:
    model = build(new_model_2d(cls), points_of)
    assert [v.x for v in vars(model)["_verticals"]] == [3.0, 4.0, 5.0]
    areas = [b.area_above_horizontal() for b in vars(model)["_boundaries"]]
    assert areas == [0.0, 300.0, 350.0, 400.0]
    for one in (copy.copy(model), copy.deepcopy(model)):
        one.create_vertical(1.0)
        assert [v.x for v in vars(one)["_verticals"]] == [1.0, 3.0, 4.0, 5.0]
    points = points_of(model, (0.0, 5.0), (50.0, 3.0), (100.0, 5.0))
    highest = vars(model)["_boundaries"].pop()
    assert model._create_boundary(points) is not highest


def test_looking_runs_nothing_of_a_derived_class(new_model_2d: Factory) -> None:
    run: list[Any] = []
    cls = type("Telling", (Model2D,), {"_dsettlement_index": property(run.append)})
    model = new_model_2d(cls)
    model.create_vertical(3.0)
    assert [v.x for v in vars(model)["_verticals"]] == [3.0]
    assert run == []


def test_attributes_put_in_their_place_are_seen(new_model_2d: Factory) -> None:
    model = new_model_2d()
    for x in (5.0, 6.0):
        model.create_vertical(x)
    vars(model)["_verticals"][0] = _Vertical(7.0)
    model.create_vertical(5.0)
    assert [v.x for v in model._verticals] == [5.0, 6.0, 7.0]
    model.__dict__["_verticals"] = [_Vertical(7.0), _Vertical(8.0)]
    model.create_vertical(5.0)
    assert [v.x for v in model._verticals] == [5.0, 7.0, 8.0]


def test_a_subclass_of_the_same_name_has_its_own_private_attributes(new_model_2d: Factory) -> None:
    class Model2D(module.Model2D):
        def __init__(self, *args: Any, **options: Any) -> None:
            self.__register = "mine"
            super().__init__(*args, **options)

        def own(self) -> str:
            return self.__register

    model = new_model_2d(Model2D)
    model.create_vertical(1.0)
    assert model.own() == copy.copy(model).own() == "mine"
