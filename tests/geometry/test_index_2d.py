"""What a two-dimensional model finds without searching, and when it knows that it may."""

import copy
import gc
import pickle
import weakref
from collections.abc import Callable
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

from tests.geometry.index_2d import build, finds_chains, finds_verticals, index_of

Factory = Callable[..., Any]

CLASSES = (_Point, _Curve, _CurveList, _PlLine, _Boundary, _Layer, _Vertical)


@pytest.mark.implementation
def test_a_plain_model_is_indexed(new_model_2d: Factory, points_of: Factory) -> None:
    model = build(new_model_2d(), points_of)
    assert finds_chains(model)
    assert finds_verticals(model)


@pytest.mark.implementation
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


@pytest.mark.implementation
def test_a_class_with_another_operation_is_not(
    new_model_2d: Factory, points_of: Factory, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setattr(_Boundary, "__eq__", _CurveList.__eq__, raising=False)
    assert not finds_chains(build(new_model_2d(), points_of))


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


@pytest.mark.implementation
@pytest.mark.parametrize(("size", "is_plain"), [(1e150, True), (1.1e150, False)])
def test_sizes_that_areas_can_be_calculated_of_are_plain(
    new_model_2d: Factory, level: Factory, size: float, is_plain: bool
) -> None:
    model = new_model_2d()
    boundary = model._create_boundary(level(model, size))
    assert model._create_boundary(level(model, size)) is boundary
    assert finds_chains(model) is is_plain


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


@pytest.mark.implementation
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


@pytest.mark.implementation
def test_other_attributes_change_nothing(new_model_2d: Factory, points_of: Factory) -> None:
    model = build(new_model_2d(), points_of)
    known = gc.get_referents(index_of(model))
    model._points[0].tag = 1
    model._points[2].curve = 1
    del model._points[0].tag
    model.create_vertical(60.0)
    assert set(map(id, known)) <= set(map(id, gc.get_referents(index_of(model))))
    model._points[2].__dict__ = {"_x": 0.0, "_y": 77.0}
    assert model._create_boundary(points_of(model, (0, 5), (50, 3), (100, 5))) not in [
        known for known in known if type(known) is _Boundary
    ]


@pytest.mark.implementation
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


@pytest.mark.implementation
def test_a_class_that_answers_for_missing_attributes_is_indexed(
    new_model_2d: Factory, points_of: Factory
) -> None:
    class Answering(Model2D):
        def __getattr__(self, name: str) -> Any:
            raise AttributeError(name)

    class Asking(Model2D):
        def __getattribute__(self, name: str) -> Any:
            return super().__getattribute__(name)

    assert finds_chains(build(new_model_2d(Answering), points_of))
    assert index_of(build(new_model_2d(Asking), points_of)) is None


def test_what_is_taken_out_is_let_go(new_model_2d: Factory, points_of: Factory) -> None:
    model = build(new_model_2d(), points_of)
    for name in ("_boundaries", "_verticals"):
        gone = weakref.ref(getattr(model, name)[-1])
        getattr(model, name).pop()
        assert gone() is None


@pytest.mark.implementation
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
