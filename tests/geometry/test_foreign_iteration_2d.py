"""What is iterated while a model is serialised can be of an application, and change the model."""

import gc
from collections.abc import Callable, Iterator
from typing import Any

import pytest
from sembra.external.dsettlement import Model2D, _Boundary, _Curve, _Layer, _Point

Factory = Callable[..., Any]


def test_points_may_come_while_curves_are_numbered(new_model_2d: Factory) -> None:
    class Growing(Model2D):
        grows = False

        @property
        def _curves(self) -> Any:
            return self.grow() if self.grows else super()._curves

        def grow(self) -> Iterator[Any]:
            yield super()._curves[0]
            for x in range(400):
                ends = [_Point(x, 0), _Point(x, 1)]
                self._points.extend(ends)
                yield _Curve(ends[0], ends[1])

    model = new_model_2d(Growing, boundary_bottom=[(0.0, 9.0), (100.0, 9.0)])
    model.grows = True
    assert model._serialize_curves() == [(2 * i + 1, 2 * i + 2) for i in range(401)]


def test_boundaries_may_go_while_layers_are_numbered(
    new_model_2d: Factory, points_of: Factory
) -> None:
    class Clearing(list[Any]):
        def __iter__(self) -> Iterator[Any]:
            for layer in super().__iter__():
                model._boundaries.clear()
                self.junk = [bytes(40) for _ in range(500)]
                yield layer

    model = new_model_2d()
    boundary = model._create_boundary(points_of(model, (0, 10), (50, 10), (100, 30)))
    equal = _Boundary([_Curve(curve.p1, curve.p2) for curve in boundary.curves])
    del boundary
    model._layers = Clearing([_Layer(equal, equal, "Sand", 0, 0)] * 3)
    with pytest.raises(ValueError, match=r" is not in list$"):
        model._serialize_layers()


def test_boundaries_may_go_when_an_object_is_asked_for_its_class(
    new_model_2d: Factory, points_of: Factory
) -> None:
    class Asked:
        @property  # type: ignore[misc]
        def __class__(self) -> Any:
            model._boundaries.clear()
            return int

    model = new_model_2d()
    boundary = model._create_boundary(points_of(model, (0, 10), (50, 10), (100, 30)))
    asked: Any = Asked()
    model._layers = [_Layer(asked, boundary, "Sand", 0, 0)]
    with pytest.raises(ValueError, match=r" is not in list$"):
        model._serialize_layers()


def test_a_list_of_curves_that_is_another_each_time_is_read_each_time(
    new_model_2d: Factory, points_of: Factory
) -> None:
    class Shifting(Model2D):
        reads = 0

        @property
        def _curves(self) -> Any:
            self.reads += 1
            return [_Curve(_Point(-1, 0), _Point(-2, 0))] * self.reads + super()._curves

    model = new_model_2d(Shifting)
    model._create_boundary(points_of(model, (0, 10), (50, 10), (100, 30)))
    model.reads = 0
    assert model._serialize_boundaries() == [[2], [4, 6]]


@pytest.mark.implementation
def test_numbers_of_another_kind_stay_visible_to_the_garbage_collector(
    new_model_2d: Factory,
) -> None:
    class Numbered(list[Any]):
        def index(self, *_: Any) -> Any:
            class Sum:
                def __add__(self, other: object) -> list[object]:
                    return [self]

            return Sum()

    model = new_model_2d()
    model._points = Numbered(model._points)
    (pair,) = model._serialize_curves()
    assert gc.is_tracked(pair)


def test_curves_that_are_nothing_to_go_through_are_named(new_model_2d: Factory) -> None:
    class Numbered(_Boundary):
        curves: Any = 5

    model = new_model_2d()
    model._boundaries.append(Numbered([]))
    with pytest.raises(TypeError, match=r"^'int' object is not iterable$"):
        _ = model._curves


def test_what_no_number_refers_to_is_not_looked_at(new_model_2d: Factory) -> None:
    model = new_model_2d()
    del model._boundaries
    assert model._serialize_pl_lines() == []
    model = new_model_2d()
    model._boundaries.clear()
    del model._points
    assert model._serialize_curves() == []


def test_a_chain_may_leave_when_it_is_asked_for_its_curves(
    new_model_2d: Factory, level: Factory
) -> None:
    class Leaving(_Boundary):
        asked = 0

        @property
        def curves(self) -> list[_Curve]:
            self.asked += 1
            if self.asked == 1:
                model._boundaries[:] = [known for known in model._boundaries if known is not self]
            return super().curves

    model = new_model_2d()
    leaving = Leaving([_Curve(*level(model, 2.0))])
    for y in (1.0, 2.0, 3.0):
        model._create_boundary(level(model, y))
    model._boundaries.insert(0, leaving)
    assert model._serialize_boundaries() == [[3], [2], [3], [4]]
