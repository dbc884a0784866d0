"""What a two-dimensional model finds without searching, and when it knows that it may."""

import copy
import gc
import inspect
import pickle
import random
import weakref
from collections.abc import Callable
from functools import partial
from typing import Any
from unittest import mock

import pytest
import sembra.external.dsettlement as module
from sembra.errors import ModelError
from sembra.external.dsettlement import (
    Model2D,
    _Boundary,
    _Curve,
    _CurveList,
    _Layer,
    _PlLine,
    _Point,
    _Vertical,
)

Factory = Callable[..., Any]
CLASSES = (_Point, _Curve, _CurveList, _PlLine, _Boundary, _Layer, _Vertical)


def finds_chains(model: Any) -> bool:
    """Whether the register knows the boundaries of the model."""
    return any(type(known) is _Boundary for known in gc.get_referents(register(model)))


def finds_verticals(model: Any) -> bool:
    return any(type(known) is _Vertical for known in gc.get_referents(register(model)))


def register(model: Any) -> Any:
    return getattr(model, "_dsettlement_registers", None)


def build(model: Any, points_of: Factory) -> Any:
    for y in (5.0, 3.0, 4.0):
        model._create_boundary(points_of(model, (0.0, y), (50.0, 3.0), (100.0, y)))
    for x in (5.0, 3.0, 4.0):
        model.create_vertical(x)
    return model


def test_a_plain_model_is_registered(new_model_2d: Factory, points_of: Factory) -> None:
    model = build(new_model_2d(), points_of)
    assert finds_chains(model)
    assert finds_verticals(model)


def test_classes_that_were_looked_at_are_as_they_were_made(
    new_model_2d: Factory, points_of: Factory
) -> None:
    model = build(new_model_2d(), points_of)
    copies = [copy.copy(model), copy.deepcopy(model), pickle.loads(pickle.dumps(model))]
    for cls in CLASSES:
        assert isinstance(cls.__annotations__, dict)
    for one in (*copies[1:], new_model_2d()):
        build(one, points_of)
        assert finds_chains(one)
        assert finds_verticals(one)


def test_a_class_with_another_operation_is_not(
    new_model_2d: Factory, points_of: Factory, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setattr(_Boundary, "__eq__", _CurveList.__eq__, raising=False)
    assert not finds_chains(build(new_model_2d(), points_of))


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


def test_a_class_in_the_place_of_another_is_the_one_that_is_asked_for(
    new_model_2d: Factory, level: Factory, monkeypatch: pytest.MonkeyPatch
) -> None:
    class Point(_Point):
        """In its place other points count for none."""

    class PlLine(_CurveList):
        pass

    model = new_model_2d()
    monkeypatch.setattr(module, "_Point", Point)
    monkeypatch.setattr(module, "_PlLine", PlLine)
    assert _Point(1, 2) != _Point(1, 2)
    assert Point(1, 2) == Point(1, 2)
    pl_line = model.create_pl_line(level(model, 1.0))
    assert type(pl_line) is PlLine
    model.create_layer(level(model, 5.0), "Sand", pl_line, pl_line)
    assert model._serialize_layers()[0]["pl_top"] == 1
    monkeypatch.setattr(module, "_PlLine", _PlLine)
    assert model._serialize_layers()[0]["pl_top"] is pl_line


class Slots(Model2D):
    """A model that says itself what it is made of, past the class before it."""

    def __getstate__(self) -> Any:
        return object.__getstate__(self)


def test_what_a_model_is_made_of_can_be_asked_past_its_class(
    new_model_2d: Factory, points_of: Factory
) -> None:
    model = build(new_model_2d(Slots), points_of)
    for one in (copy.deepcopy(model), pickle.loads(pickle.dumps(model))):
        assert register(one) is None
        one.create_vertical(1.0)
        assert [v.x for v in one._verticals] == [1.0, 3.0, 4.0, 5.0]
    shallow = copy.copy(model)
    shallow._verticals = [_Vertical(8.0)]
    assert shallow.create_vertical(5.0) is not model.create_vertical(5.0)
    assert [v.x for v in shallow._verticals] == [5.0, 8.0]
    assert [v.x for v in model._verticals] == [3.0, 4.0, 5.0]


def test_what_is_written_while_a_class_is_patched_is_not_missed(
    new_model_2d: Factory, level: Factory
) -> None:
    model = new_model_2d()
    points, others = level(model, 3.0), level(model, 5.0)
    boundary = model._create_boundary(points)
    vertical = model.create_vertical(3.0)
    with (
        mock.patch.object(_Point, "__setattr__", object.__setattr__),
        mock.patch.object(_Vertical, "__setattr__", object.__setattr__),
    ):
        points[0]._y = points[1]._y = 5.0
        vertical._x = 5.0
    assert model._create_boundary(others) is boundary
    assert model.create_vertical(5.0) is vertical


def test_what_is_changed_while_the_class_of_the_model_is_patched_is_not_missed(
    new_model_2d: Factory, level: Factory
) -> None:
    model = new_model_2d()
    vertical, boundary = model.create_vertical(5.0), model._create_boundary(level(model, 5.0))
    with (
        mock.patch.object(Model2D, "_verticals", None),
        mock.patch.object(Model2D, "_boundaries", None),
    ):
        model._verticals[-1] = _Vertical(9.0)
        model._boundaries[-1] = _Boundary([_Curve(*level(model, 9.0))])
    assert model.create_vertical(5.0) is not vertical
    assert model._create_boundary(level(model, 5.0)) is not boundary


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


@pytest.mark.parametrize(("size", "is_plain"), [(1e150, True), (1.1e150, False)])
def test_sizes_that_areas_can_be_calculated_of_are_plain(
    new_model_2d: Factory, level: Factory, size: float, is_plain: bool
) -> None:
    model = new_model_2d()
    boundary = model._create_boundary(level(model, size))
    assert model._create_boundary(level(model, size)) is boundary
    assert finds_chains(model) is is_plain


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
    __slots__ = ("_dsettlement_registers",)


@pytest.mark.parametrize(
    "cls",
    [
        type("Mixed", (Mixin, Model2D), {}),
        type("Snapshot", (Snapshots, Model2D), {}),
        Shadowing,
        type("Named", (Model2D,), {"_dsettlement_registers": None}),
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


def test_what_is_found_is_looked_at_before_it_is_used(
    new_model_2d: Factory, points_of: Factory
) -> None:
    model = new_model_2d()
    vertical = model.create_vertical(5.0)
    points = points_of(model, (0.0, 1.0), (50.0, 2.0), (100.0, 3.0))
    boundary = model._create_boundary(points)
    vertical.__dict__["_x"] = 60.0
    points[1].__dict__["_x"] = 60.0
    assert model.create_vertical(5.0) is not vertical
    same = points_of(model, (0.0, 1.0), (50.0, 2.0), (100.0, 3.0))
    assert model._create_boundary(same) is not boundary


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


def test_bad_points_are_refused_before_a_missing_class_is(
    new_model_2d: Factory, points_of: Factory, monkeypatch: pytest.MonkeyPatch
) -> None:
    model = new_model_2d()
    monkeypatch.delattr(module, "_Boundary")
    with pytest.raises(ModelError, match=r"^First and last points must be"):
        model._create_boundary(points_of(model, (0, 1), (99, 1)))
    with pytest.raises(NameError, match="_Boundary"):
        model._create_boundary(points_of(model, (0, 1), (100, 1)))


class ArrayFloat(float):
    """A float of another class, as an application may write it: its equality is its own."""

    def __eq__(self, other: object) -> bool:
        return False

    __hash__ = float.__hash__


def test_elements_of_arrays_are_plain_numbers(new_model_2d: Factory, points_of: Factory) -> None:
    numpy = pytest.importorskip("numpy")
    model = new_model_2d()
    xs = numpy.linspace(0.0, 100.0, 5)
    boundary = model._create_boundary(points_of(model, *((x, numpy.float64(3.0)) for x in xs)))
    assert model._create_boundary(points_of(model, *((x, 3) for x in (0, 25, 50, 75, 100)))) is (
        boundary
    )
    vertical = model.create_vertical(xs[1])
    assert model.create_vertical(25) is vertical
    assert finds_chains(model)
    assert finds_verticals(model)
    ys = numpy.arange(3, 5)
    boundary = model._create_boundary(points_of(model, (ys[0] * 0, ys[0]), (100, ys[1])))
    assert model._create_boundary(points_of(model, (0, 3.0), (100.0, 4))) is boundary
    assert model.create_vertical(ys[0]) is model.create_vertical(3.0)
    assert finds_chains(model)
    assert finds_verticals(model)
    model._create_boundary(points_of(model, (0, numpy.float64(1e200)), (100, 5)))
    model._create_boundary(points_of(model, (0, 4), (100, 5)))
    assert not finds_chains(model)


def test_floats_of_other_classes_are_not(new_model_2d: Factory) -> None:
    ArrayFloat.__name__ = ArrayFloat.__qualname__ = "float64"
    ArrayFloat.__module__ = "numpy"
    model = new_model_2d()
    assert model.create_vertical(ArrayFloat(5.0)) is not model.create_vertical(ArrayFloat(5.0))


def test_other_attributes_change_nothing(new_model_2d: Factory, points_of: Factory) -> None:
    model = build(new_model_2d(), points_of)
    known = gc.get_referents(register(model))
    model._points[0].tag = 1
    model._points[2].curve = 1
    del model._points[0].tag
    model.create_vertical(60.0)
    assert set(map(id, known)) <= set(map(id, gc.get_referents(register(model))))
    model._points[2].__dict__ = {"_x": 0.0, "_y": 77.0}
    assert model._create_boundary(points_of(model, (0, 5), (50, 3), (100, 5))) not in [
        known for known in known if type(known) is _Boundary
    ]


def test_a_refused_model_is_read_again_when_it_may_hold(
    new_model_2d: Factory, points_of: Factory
) -> None:
    model = new_model_2d()
    model.create_pl_line(points_of(model, (0, float("nan")), (100, 1)))
    build(model, points_of)
    assert not finds_chains(model)
    model._pl_lines.pop()
    for y in (7, 8, 9):
        model._create_boundary(points_of(model, (0, y), (100, y)))
    assert finds_chains(model)


def test_a_class_that_answers_for_missing_attributes_is_registered(
    new_model_2d: Factory, points_of: Factory
) -> None:
    class Answering(Model2D):
        def __getattr__(self, name: str) -> Any:
            raise AttributeError(name)

    class Asking(Model2D):
        def __getattribute__(self, name: str) -> Any:
            return super().__getattribute__(name)

    assert finds_chains(build(new_model_2d(Answering), points_of))
    assert register(build(new_model_2d(Asking), points_of)) is None


def test_what_is_taken_out_is_let_go(new_model_2d: Factory, points_of: Factory) -> None:
    model = build(new_model_2d(), points_of)
    for name in ("_boundaries", "_verticals"):
        gone = weakref.ref(getattr(model, name)[-1])
        getattr(model, name).pop()
        assert gone() is None


def test_lists_may_be_replaced_while_others_are_let_go(
    new_model_2d: Factory, level: Factory
) -> None:
    model = new_model_2d()
    held = []

    def replace(_: Any) -> None:
        held.append(model._boundaries)
        model._boundaries = list(model._boundaries)

    for y in (1.0, 2.0):
        model._create_boundary(level(model, y))
    # Past the class of the model, so that it is not noticed.
    boundaries = next(one for one in gc.get_referents(model) if type(one) is dict)["_boundaries"]
    gone = weakref.ref(boundaries[-1], replace)
    boundaries.pop()
    del boundaries
    boundary = model._create_boundary(level(model, 3.0))
    assert gone() is None
    assert len(held) == 1
    assert model._boundaries[-1] is boundary
    assert [known.points[0].y for known in model._boundaries] == [0.0, 1.0, 3.0]
