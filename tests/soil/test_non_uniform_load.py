"""`_NonUniformLoad` and `Model2D.create_non_uniform_load`."""

from collections import OrderedDict
from collections.abc import Callable
from typing import Any

import pytest
from sembra.errors import ModelError
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    Model1D,
    Model2D,
    _Load,
    _NonUniformLoad,
)

Factory = Callable[..., Any]

FIRST = "First point of non-uniform load {} is not in points or in points of non-uniform load."
LAST = "Last point of non-uniform load {} is not in points or in points of non-uniform load."


@pytest.fixture
def model() -> Any:
    """A model with a boundary through (0, 10), (25, 10), (75, 10) and (100, 10)."""
    made = Model2D(
        CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI, [(0.0, 0.0), (100.0, 0.0)]
    )
    top = [(0.0, 10.0), (25, 10.0), (75, 10.0), (100.0, 10.0)]
    made.create_layer([made.create_point(x, y) for x, y in top], "Sand", 0, 0)
    return made


def test_seven_values_are_kept_in_order() -> None:
    points = [(0.0, 5.0), (0.0, 6.0), (1.0, 6.0)]
    load = _NonUniformLoad("a", points, 1, 2, 11.0, 12.0, True)
    assert vars(load) == {
        "_name": "a",
        "_points": points,
        "_time": 1,
        "_end_time": 2,
        "_gamma_dry": 11.0,
        "_gamma_wet": 12.0,
        "_temporary": True,
    }
    assert list(vars(load)) == [
        "_name",
        "_points",
        "_time",
        "_end_time",
        "_gamma_dry",
        "_gamma_wet",
        "_temporary",
    ]
    assert load.points is points
    assert _NonUniformLoad.__bases__ == (_Load,)


def test_the_defaults_are_a_load_from_the_start() -> None:
    load = _NonUniformLoad("a", [])
    assert list(vars(load).values()) == ["a", [], 0, 0, 10.0, 10.0, False]


def test_the_document_has_the_name_of_the_load_and_no_type() -> None:
    points = [(0.0, 5.0)]
    document = _NonUniformLoad("a", points)._serialize("b")
    assert list(document) == [
        "name",
        "points",
        "time",
        "end_time",
        "gamma_dry",
        "gamma_wet",
        "temporary",
    ]
    assert document["name"] == "a"
    assert document["points"] is points


@pytest.mark.parametrize("temporary", [False, True])
def test_a_load_cannot_go_before_it_comes(temporary: bool) -> None:
    with pytest.raises(ModelError, match=r"^time \(5\) cannot exceed end_time \(0\)\.$"):
        _NonUniformLoad("a", [], 5, temporary=temporary)
    assert vars(_NonUniformLoad("a", [], 5, 5))["_time"] == 5


def test_an_initial_load_needs_no_end() -> None:
    assert vars(_NonUniformLoad("a", [], -1))["_time"] == -1


@pytest.mark.parametrize(
    "points", [[(1.0, 5.0), (0.5, 5.0)], [(0, 0), (2, 0), (1, 0)], [(0, 0), (1, 0), (0, 0)]]
)
def test_points_have_to_run_from_left_to_right(points: Any) -> None:
    with pytest.raises(ModelError) as caught:
        _NonUniformLoad("a", points)
    assert str(caught.value) == f"Points not monotonic ascending for x-coordinate: {points}"


def test_the_times_are_checked_before_the_points() -> None:
    with pytest.raises(ModelError, match=r"^time"):
        _NonUniformLoad("a", [(1.0, 5.0), (0.5, 5.0)], 1)


@pytest.mark.parametrize(
    ("points", "error"),
    [
        ([(0.0, 1.0), (1.0,)], ValueError),
        ([(0.0, 1.0), (1.0, 2.0, 3.0)], ValueError),
        ([(0.0, 1.0), 5], TypeError),
        (5, TypeError),
    ],
)
def test_points_of_another_form_fail_as_the_host_does(points: Any, error: type[Exception]) -> None:
    with pytest.raises(error) as caught:
        _NonUniformLoad("a", points)
    assert type(caught.value) is error


def test_the_first_point_is_not_taken_apart() -> None:
    odd: Any = [(0.0, 1.0, 2.0), (1.0, 1.0)]
    assert _NonUniformLoad("a", odd).points is odd


def test_a_load_rests_on_vertices_of_a_boundary(model: Any) -> None:
    points = [(25, 10.0), (50.0, 12.0), (75, 10.0)]
    load = model.create_non_uniform_load("load1", points)
    assert type(load) is _NonUniformLoad
    assert model._non_uniform_loads == OrderedDict(load1=load)
    assert load.points is points
    assert model._serialize_non_uniform_loads() == [load._serialize("load1")]
    assert model.create_non_uniform_load("load2", [(25.0, 10), (75.0, 10)]) is not load


@pytest.mark.parametrize(
    ("points", "text"),
    [
        ([(30.0, 10.0), (75, 10.0)], FIRST.format("(30.0, 10.0)")),
        ([(25, 10.0), (70, 10.0)], LAST.format("(70, 10.0)")),
        ([(30, 1), (70, 1)], FIRST.format("(30, 1)")),
        ([(25, 10.000001), (75, 10.0)], FIRST.format("(25, 10.000001)")),
        ([(75, 10.0), (30.0, 1)], LAST.format("(30.0, 1)")),
    ],
)
def test_ends_beside_the_vertices_are_refused_before_all_else(
    model: Any, points: Any, text: str
) -> None:
    with pytest.raises(ModelError) as caught:
        model.create_non_uniform_load("a", points, time=5)
    assert str(caught.value) == text
    assert model._non_uniform_loads == {}


def test_one_vertex_is_a_load(model: Any) -> None:
    assert model.create_non_uniform_load("a", [(25, 10.0)]).points == [(25, 10.0)]


def test_loads_rest_on_earlier_loads(model: Any) -> None:
    with pytest.raises(ModelError):
        model.create_non_uniform_load("b", [(50.0, 12.0), (75, 10.0)])
    points = [(25, 10.0), (50.0, 12.0), (75, 10.0)]
    model.create_non_uniform_load("a", points)
    model.create_non_uniform_load("b", [(50.0, 12.0), (75, 10.0)])
    points.append((90.0, 20.0))
    model.create_non_uniform_load("c", [(75, 10.0), (90.0, 20.0)])
    assert [load["name"] for load in model._serialize_non_uniform_loads()] == ["a", "b", "c"]


def test_names_have_25_characters_at_most(model: Any) -> None:
    points = [(25, 10.0)]
    with pytest.raises(ModelError) as caught:
        model.create_non_uniform_load("x" * 26, [])
    assert str(caught.value) == (
        f"Name of non-uniform load can be max 25 characters long (is 26 for {'x' * 26})."
    )
    model.create_non_uniform_load("x" * 25, points)
    assert "x" * 25 in model._non_uniform_loads


def test_names_are_used_once_among_the_non_uniform_loads(model: Any) -> None:
    model.create_uniform_load("a", 0, 1.0, 1.0, 0.0)
    load = model.create_non_uniform_load("a", [(25, 10.0)])
    with pytest.raises(ModelError, match=r"^Non-uniform load with name 'a' already exists\.$"):
        model.create_non_uniform_load("a", [])
    assert model._non_uniform_loads["a"] is load


def test_a_refused_load_is_not_kept(model: Any) -> None:
    with pytest.raises(ModelError, match=r"^time \(5\)"):
        model.create_non_uniform_load("a", [(25, 10.0)], 5)
    with pytest.raises(ModelError, match=r"^Points not monotonic"):
        model.create_non_uniform_load("a", [(75, 10.0), (25, 10.0)])
    assert model._non_uniform_loads == {}


def test_what_the_host_refuses_stays_its_own(model: Any) -> None:
    with pytest.raises(IndexError, match=r"^list index out of range$"):
        model.create_non_uniform_load("a", [])
    with pytest.raises(TypeError, match=r"^unhashable type: 'list'$"):
        model.create_non_uniform_load("a", [[25, 10.0]])
    with pytest.raises(TypeError, match=r"^object of type 'int' has no len\(\)$"):
        model.create_non_uniform_load(5, [(25, 10.0)])
    middle: Any = [(25, 10.0), [50.0, 1.0], (75, 10.0)]
    model.create_non_uniform_load("a", middle)
    with pytest.raises(TypeError, match=r"^unhashable type: 'list'$"):
        model.create_non_uniform_load("b", [(25, 10.0)])


def test_all_parameters_may_be_given_by_name(model: Any) -> None:
    load = model.create_non_uniform_load(
        name="a",
        points=[(25, 10.0)],
        time=1,
        end_time=2,
        gamma_dry=11,
        gamma_wet=12,
        temporary=True,
    )
    assert list(vars(load).values()) == ["a", [(25, 10.0)], 1, 2, 11, 12, True]


def test_one_dimensional_models_have_no_such_loads() -> None:
    assert not hasattr(Model1D, "create_non_uniform_load")
    model = Model1D(CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI)
    assert model._serialize()["non_uniform_loads"] == []
