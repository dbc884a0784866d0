"""Boundaries and pl-lines of `Model2D`: how points become chains, and what is folded together."""

import math
from collections.abc import Callable
from decimal import Decimal
from typing import Any

import pytest
from sembra.errors import ModelError

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
