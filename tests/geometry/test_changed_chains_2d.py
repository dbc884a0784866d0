"""Boundaries and pl-lines where an application has put something of its own in the way."""

from collections.abc import Callable
from typing import Any

import pytest
from sembra.external.dsettlement import Model2D, _Boundary, _Curve, _PlLine, _Point

Factory = Callable[..., Any]


def test_points_with_an_equality_of_their_own_are_asked(
    new_model_2d: Factory, level: Factory
) -> None:
    class Loose(_Point):
        def __eq__(self, other: object) -> bool:
            return isinstance(other, _Point) and self.x == other.x

        __hash__ = None  # type: ignore[assignment]

    model = new_model_2d()
    loose = model.create_pl_line([Loose(0.0, 7.0), Loose(100.0, 7.0)])
    assert loose.curves[0] is model._boundaries[0].curves[0]
    assert model.create_pl_line(level(model, 3.0)) is not loose


def test_overridden_operations_run(new_model_2d: Factory, level: Factory) -> None:
    class Watched(Model2D):
        calls: list[str]

        def _create_curves(self, points: Any) -> Any:
            self.calls.append("curves")
            return super()._create_curves(points)

        def _create_curve(self, p1: Any, p2: Any) -> Any:
            self.calls.append("curve")
            return super()._create_curve(p1, p2)

        def _create_boundary(self, points: Any) -> Any:
            self.calls.append("boundary")
            return super()._create_boundary(points)

    Watched.calls = []
    model = new_model_2d(Watched)
    assert Watched.calls == ["boundary", "curves", "curve"]
    model.create_pl_line(level(model, 1.0))
    model.create_layer(level(model, 1.0), "Sand", 0, 0)
    assert Watched.calls[3:] == ["curves", "curve", "boundary", "curves", "curve"]


def test_the_curves_of_a_model_can_be_overridden(new_model_2d: Factory, level: Factory) -> None:
    class Blind(Model2D):
        @property
        def _curves(self) -> Any:
            return []

    model = new_model_2d(Blind)
    boundary = model._create_boundary(level(model, 1.0))
    line = model.create_pl_line(level(model, 1.0))
    assert line.curves[0] is not boundary.curves[0]
    with pytest.raises(ValueError, match=r" is not in list$"):
        model._serialize_pl_lines()


def test_an_operation_put_into_one_model_runs(new_model_2d: Factory, level: Factory) -> None:
    model = new_model_2d()
    known = _Curve(*level(model, 5.0))
    model._create_curve = lambda p1, p2: known
    assert model.create_pl_line(level(model, 1.0)).curves == [known]
    del model._create_curve
    assert model.create_pl_line(level(model, 1.0)).curves != [known]


@pytest.mark.parametrize(
    ("owner", "name"),
    [(_Point, "__eq__"), (_Curve, "__eq__"), (_Boundary, "__eq__"), (_PlLine, "__eq__")],
)
def test_a_patched_equality_decides(
    new_model_2d: Factory, level: Factory, monkeypatch: pytest.MonkeyPatch, owner: Any, name: str
) -> None:
    model = new_model_2d()
    model.create_pl_line(level(model, 1.0))
    model._create_boundary(level(model, 1.0))
    count = len(model._pl_lines), len(model._boundaries)
    with monkeypatch.context() as patch:
        patch.setattr(owner, name, lambda self, other: self is other, raising=False)
        lines = [model.create_pl_line(level(model, 1.0)) for _ in range(2)]
        boundaries = [model._create_boundary(level(model, 1.0)) for _ in range(2)]
        folds_lines = owner is _Boundary
        folds_boundaries = owner is _PlLine
        assert (lines[0] is lines[1]) is folds_lines
        assert (boundaries[0] is boundaries[1]) is folds_boundaries
    assert model.create_pl_line(level(model, 1.0)) is model._pl_lines[0]
    assert len(model._pl_lines) >= count[0]


def test_a_name_that_no_text_can_hold_changes_nothing(
    new_model_2d: Factory, level: Factory, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setattr(_Point, "\ud800", 1, raising=False)
    model = new_model_2d()
    known = model.create_pl_line(level(model, 1.0))
    assert model.create_pl_line(level(model, 1.0)) is known


def test_a_patched_area_decides_the_order(
    new_model_2d: Factory, level: Factory, monkeypatch: pytest.MonkeyPatch
) -> None:
    model = new_model_2d()
    model._create_boundary(level(model, 1.0))
    monkeypatch.setattr(_Boundary, "area_above_horizontal", lambda self: -self.points[0].y)
    model._create_boundary(level(model, 2.0))
    assert [b.points[0].y for b in model._boundaries] == [2.0, 1.0, 0.0]
    monkeypatch.undo()
    model._create_boundary(level(model, 3.0))
    assert [b.points[0].y for b in model._boundaries] == [0.0, 1.0, 2.0, 3.0]


def test_an_area_put_into_one_boundary_decides_its_place(
    new_model_2d: Factory, level: Factory
) -> None:
    model = new_model_2d()
    boundary: Any = model._create_boundary(level(model, 1.0))
    boundary.area_above_horizontal = lambda: -1.0
    model._create_boundary(level(model, 2.0))
    assert model._boundaries[0] is boundary


def test_classes_put_into_the_module_make_the_objects(
    new_model_2d: Factory, level: Factory, monkeypatch: pytest.MonkeyPatch
) -> None:
    module = "sembra.external.dsettlement"

    class Curve(_Curve):
        pass

    class Boundary(_Boundary):
        pass

    class Line(_PlLine):
        pass

    class Point(_Point):
        pass

    model = new_model_2d()
    for cls in (Curve, Boundary, Line, Point):
        monkeypatch.setattr(f"{module}._{'PlLine' if cls is Line else cls.__name__}", cls)
    boundary = model._create_boundary(level(model, 1.0))
    assert type(boundary) is Boundary
    assert type(boundary.curves[0]) is Curve
    assert type(boundary.points[0]) is Point
    assert type(model.create_pl_line(level(model, 2.0))) is Line


CHANGES: dict[str, Callable[[Any], Any]] = {
    "append": lambda model: model._boundaries.append(
        _Boundary([_Curve(_Point(0, 7), _Point(100, 7))])
    ),
    "replace": lambda model: model._boundaries.__setitem__(
        1, _Boundary([_Curve(_Point(0.0, 7.0), _Point(100.0, 7.0))])
    ),
    "reverse": lambda model: model._boundaries.reverse(),
    "pop": lambda model: model._boundaries.pop(1),
    "rebind": lambda model: setattr(model, "_boundaries", model._boundaries[:1]),
    "move a point": lambda model: setattr(model._points[2], "_y", 7.0),
    "turn a curve": lambda model: setattr(model.kept.curves[0], "_p1", _Point(0.0, 7.0)),
    "empty a chain": lambda model: model.kept._curves.clear(),
    "give a chain other curves": lambda model: setattr(
        model.kept, "_curves", [_Curve(_Point(0.0, 7.0), _Point(100.0, 7.0))]
    ),
    "make a point anew": lambda model: model._points[2].__init__(0.0, 7.0),
}


@pytest.mark.parametrize("change", CHANGES)
def test_what_is_changed_behind_the_operations_is_seen(
    new_model_2d: Factory, level: Factory, change: str
) -> None:
    """A model that has been built on is in no way different from one that is searched."""

    class Searched(Model2D):
        @property
        def _curves(self) -> Any:
            return super()._curves

    states = []
    for cls in (Model2D, Searched):
        model = new_model_2d(cls)
        model.kept = model._create_boundary(level(model, 1.0))
        model._create_boundary(level(model, 2.0))
        CHANGES[change](model)
        for y in (7.0, 1.0, 0.0, 2.0, 1.5):
            model._create_boundary(level(model, y))
        states.append([repr(chain.curves) for chain in model._boundaries])
    assert states[0] == states[1]


def test_a_list_that_somebody_holds_on_to_may_change_at_any_time(
    new_model_2d: Factory, level: Factory
) -> None:
    model = new_model_2d()
    boundaries = model._boundaries
    one = model._create_boundary(level(model, 1.0))
    two = model._create_boundary(level(model, 2.0))
    boundaries[1] = _Boundary(one.curves)
    assert model._create_boundary(level(model, 1.0)) is boundaries[1]
    attributes: Any = vars(model)
    attributes["_boundaries"] = [two]
    assert model._create_boundary(level(model, 1.0)) is not one
