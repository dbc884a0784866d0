"""Boundaries and pl-lines of `Model2D`: how points become chains, and what is folded together."""

import math
from collections.abc import Callable
from decimal import Decimal
from typing import Any

import pytest
from sembra.errors import ModelError
from sembra.external.dsettlement import Model2D, _Boundary, _Curve, _PlLine, _Point

Factory = Callable[..., Any]

OFF_LIMITS = r"^First and last points must be on the left and right boundary limits respectively$"
REPEATED = r"^Curve cannot consist of duplicate points$"
BACKWARDS = {
    "_create_boundary": r"^Points of the boundary must be ascending in X-direction$",
    "create_pl_line": r"^Points of the pl-line must be ascending in X-direction$",
}
MAKERS = ("_create_boundary", "create_pl_line")


def state(model: Any) -> Any:
    return [list(x) for x in (model._points, model._boundaries, model._pl_lines, model._layers)]


@pytest.mark.parametrize("make", MAKERS)
def test_limits_are_met_exactly(new_model_2d: Factory, points_of: Factory, make: str) -> None:
    model = new_model_2d(limits=(10.0, 20.0), boundary_bottom=[(10, 0.0), (20, 0.0)])
    assert getattr(model, make)(points_of(model, (10, 1.0), (20.0, 1.0))).points[0].x == 10
    for x in (20.5, math.nextafter(20.0, 21.0)):
        with pytest.raises(ModelError, match=OFF_LIMITS):
            getattr(model, make)(points_of(model, (10, 1.0), (x, 1.0)))
    with pytest.raises(ModelError, match=OFF_LIMITS):
        getattr(model, make)(points_of(model, (9.0, 1.0), (20.0, 1.0)))


@pytest.mark.parametrize("make", MAKERS)
def test_points_have_to_run_from_left_to_right(
    new_model_2d: Factory, points_of: Factory, make: str
) -> None:
    model = new_model_2d()
    points = points_of(model, (0.0, 1.0), (60.0, 1.0), (40.0, 1.0), (100.0, 1.0))
    before = state(model)
    with pytest.raises(ModelError, match=BACKWARDS[make]) as caught:
        getattr(model, make)(points)
    assert caught.value.__cause__ is None
    assert caught.value.__suppress_context__ is True
    assert isinstance(caught.value.__context__, AssertionError)
    assert state(model) == before


@pytest.mark.parametrize("make", MAKERS)
def test_upright_steps_are_allowed(new_model_2d: Factory, points_of: Factory, make: str) -> None:
    model = new_model_2d()
    chain = getattr(model, make)(points_of(model, (0, 1), (50, 1), (50, 4), (100, 4)))
    assert [p.x for p in chain.points] == [0, 50, 50, 100]


@pytest.mark.parametrize("make", MAKERS)
def test_neighbours_must_differ(new_model_2d: Factory, points_of: Factory, make: str) -> None:
    model = new_model_2d()
    points = points_of(model, (0, 1), (50, 1), (50.0, 1.0), (100, 4))
    before = state(model)
    with pytest.raises(ModelError, match=REPEATED):
        getattr(model, make)(points)
    assert state(model) == before


@pytest.mark.parametrize("make", MAKERS)
@pytest.mark.parametrize(
    ("points", "error"),
    [([], IndexError), ((), IndexError), (5, TypeError), ({}, KeyError), ([1], AttributeError)],
)
def test_what_is_no_list_of_points_fails_as_the_host_does(
    new_model_2d: Factory, make: str, points: Any, error: type[Exception]
) -> None:
    with pytest.raises(error) as caught:
        getattr(new_model_2d(), make)(points)
    assert type(caught.value) is error


@pytest.mark.parametrize("make", MAKERS)
def test_points_may_come_in_a_tuple_or_any_sequence(
    new_model_2d: Factory, level: Factory, make: str
) -> None:
    class Sequence(list[Any]):
        pass

    model = new_model_2d()
    chain = getattr(model, make)(tuple(level(model, 1.0)))
    assert getattr(model, make)(Sequence(level(model, 1.0))) is chain


@pytest.mark.parametrize("make", MAKERS)
def test_a_chain_along_equal_points_is_the_one_that_exists(
    new_model_2d: Factory, points_of: Factory, make: str
) -> None:
    model = new_model_2d()
    chain = getattr(model, make)(points_of(model, (0.0, 1.0), (50, True), (100.0, 1.0)))
    count = len(model._boundaries), len(model._pl_lines)
    again = getattr(model, make)(points_of(model, (-0.0, 1), (50.0, 1.0), (100, 1.0)))
    assert again is chain
    assert (len(model._boundaries), len(model._pl_lines)) == count


def test_chains_share_the_curves_that_they_have_in_common(
    new_model_2d: Factory, points_of: Factory
) -> None:
    model = new_model_2d()
    first = model._create_boundary(points_of(model, (0.0, 5.0), (50.0, 5.0), (100.0, 2.5)))
    second = model._create_boundary(points_of(model, (0.0, 5.0), (50.0, 5.0), (100.0, 7.5)))
    assert second.curves[0] is first.curves[0]
    assert model._curves.count(first.curves[0]) == 2
    pl_line = model.create_pl_line(points_of(model, (0.0, 5.0), (50.0, 5.0), (100.0, 9.0)))
    assert pl_line.curves[0] is first.curves[0]
    assert model._curves == [c for chain in model._boundaries for c in chain.curves] + (
        pl_line.curves
    )
    assert model._curves is not model._curves


def test_equal_curves_within_one_chain_stay_apart(
    new_model_2d: Factory, points_of: Factory
) -> None:
    """An upright zigzag draws the same curve twice; a later chain takes the first."""
    model = new_model_2d()
    zigzag = (0, 1), (50, 1), (50, 4), (50, 1), (50, 4), (100, 1)
    chain = model._create_boundary(points_of(model, *zigzag))
    up, down, up_again = chain.curves[1:4]
    assert up == up_again
    assert up is not up_again
    assert up != down
    later = model._create_boundary(points_of(model, *zigzag[:-1], (100, 2)))
    assert later.curves[1] is later.curves[3] is up
    numbers = model._serialize_boundaries()
    assert numbers == [[1], [2, 3, 4, 3, 6], [2, 3, 4, 3, 11]]


def test_a_chain_that_was_refused_or_folded_leaves_no_curve_behind(
    new_model_2d: Factory, points_of: Factory
) -> None:
    model = new_model_2d()
    curves = model._curves
    with pytest.raises(ModelError):
        model._create_boundary(points_of(model, (0, 1), (60, 1), (40, 1), (100, 1)))
    model._create_boundary(points_of(model, (0, 0), (100, 0)))
    assert model._curves == curves


def test_boundaries_are_kept_from_low_to_high_by_area(
    new_model_2d: Factory, level: Factory, points_of: Factory
) -> None:
    model = new_model_2d()
    three, one = (model._create_boundary(level(model, y)) for y in (3.0, 1.0))
    below = model._create_boundary(level(model, -1.0))
    assert model._boundaries[0] is below
    assert model._boundaries[2:] == [one, three]
    slope = model._create_boundary(points_of(model, (0.0, 0.0), (100.0, 2.0)))
    assert model._boundaries[2:] == [one, slope, three]
    other_slope = model._create_boundary(points_of(model, (0.0, 2.0), (100.0, 0.0)))
    assert model._boundaries[2:] == [one, slope, other_slope, three]


def test_an_area_that_is_no_number_is_sorted_as_python_sorts_it(
    new_model_2d: Factory, level: Factory
) -> None:
    levels = [2.0, math.nan, 1.0, math.inf, -math.inf, 0.5]
    model = new_model_2d()
    for y in levels:
        model._create_boundary(level(model, y))
    areas: list[float] = []
    for y in [0.0, *levels]:
        areas.append((100.0 - 0.0) * ((y + y) / 2 - 0.0))
        areas.sort()
    assert repr([b.area_above_horizontal() for b in model._boundaries]) == repr(areas)


def test_an_area_that_cannot_be_computed_leaves_the_boundary_at_the_end(
    new_model_2d: Factory, level: Factory
) -> None:
    model = new_model_2d()
    with pytest.raises(OverflowError):
        model._create_boundary(level(model, 10**400))
    assert len(model._boundaries) == 2
    with pytest.raises(OverflowError):
        model._create_boundary(level(model, 1.0))
    assert len(model._boundaries) == 3


def test_the_first_phreatic_line_stays(new_model_2d: Factory, level: Factory) -> None:
    model = new_model_2d()
    first = model.create_pl_line(level(model, 1.0))
    assert model._phreatic_line == 0
    second = model.create_pl_line(level(model, 2.0), is_phreatic=True)
    assert model._phreatic_line == 2
    with pytest.raises(ModelError, match=r"^Phreatic line is already set: 2$"):
        model.create_pl_line(level(model, 3.0), True)
    assert model._phreatic_line == 2
    assert len(model._pl_lines) == 3
    assert model._pl_lines[:2] == [first, second]
    assert model.create_pl_line(level(model, 3.0), True) is model._pl_lines[2]


def test_asking_for_a_line_that_exists_to_become_phreatic_has_no_effect(
    new_model_2d: Factory, level: Factory
) -> None:
    model = new_model_2d()
    line = model.create_pl_line(level(model, 1.0))
    assert model.create_pl_line(level(model, 1.0), is_phreatic=True) is line
    assert model._phreatic_line == 0


def test_points_of_another_model_are_accepted(new_model_2d: Factory, level: Factory) -> None:
    model, other = new_model_2d(), new_model_2d()
    top = model._create_boundary(level(other, 1.0))
    assert len(model._points) == 2
    assert model._create_boundary(level(model, 1.0)) is top


def test_other_numbers_are_found_by_their_own_equality(
    new_model_2d: Factory, level: Factory
) -> None:
    model = new_model_2d()
    real = model.create_pl_line(level(model, 0.5))
    exact: Any = Decimal("0.5")
    assert model.create_pl_line(level(model, exact)) is real
    third: Any = Decimal("0.1")
    line = model.create_pl_line(level(model, third))
    assert line is not real
    assert model.create_pl_line(level(model, 0.1)) not in (line, real)
    assert model.create_pl_line(level(model, third)) is line


def test_large_integers_are_told_apart_from_the_floats_beside_them(
    new_model_2d: Factory, level: Factory
) -> None:
    model = new_model_2d()
    real = model.create_pl_line(level(model, 2.0**53))
    assert model.create_pl_line(level(model, 2**53)) is real
    assert model.create_pl_line(level(model, 2**53 + 1)) is not real


def test_what_is_not_a_number_is_never_folded(new_model_2d: Factory, level: Factory) -> None:
    model = new_model_2d()
    points = level(model, math.nan)
    assert model.create_pl_line(points) is not model.create_pl_line(points)
    assert len(model._pl_lines) == 2
    assert model._serialize_pl_lines() == [[2], [3]]


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
