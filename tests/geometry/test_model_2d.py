"""`Model2D`: its constructor, its points and how it behaves as an object."""

import copy
import gc
import inspect
import pickle
import weakref
from collections.abc import Callable
from typing import Any

import pytest
from sembra.errors import ModelError
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    Model2D,
    _Curve,
    _Model,
    _Point,
)

Factory = Callable[..., Any]
OFF_LIMITS = r"^First and last points must be on the left and right boundary limits respectively$"


def test_a_new_model_has_its_bottom_and_nothing_else(new_model_2d: Factory) -> None:
    model = new_model_2d()
    assert model._points == [_Point(0.0, 0.0), _Point(100.0, 0.0)]
    assert model._pl_lines == model._layers == model._verticals == []
    assert model._phreatic_line == 0
    assert len(model._boundaries) == 1
    assert model._boundaries[0].points[0] is model._points[0]
    assert model._curves == [_Curve(*model._points)]
    assert len(model.materials) == 11


def test_the_fields_of_the_geometry_come_behind_those_of_the_frame(new_model_2d: Factory) -> None:
    names = list(vars(new_model_2d()))
    assert names[-5:] == ["_points", "_pl_lines", "_phreatic_line", "_boundaries", "_layers"]
    assert len(names) == 28


def test_options_are_handed_on_to_the_frame(new_model_2d: Factory) -> None:
    model = new_model_2d(
        create_default_materials=False,
        natural_strain=True,
        limits=[0, 100],
        water_unit_weight=10,
        verticals_discretization=5,
        verticals_z_coordinate=1.0,
        maintain_profile=True,
        profile_time=7,
        profile_unit_weight_above_phreatic_level=11.0,
        profile_unit_weight_below_phreatic_level=12.0,
        end_of_settlement_calculation=9,
        stress_distribution_loads=True,
    )
    assert model.materials == {}
    assert model._natural_strain is True
    assert model._limits == [0, 100]
    assert model._water_unit_weight == 10
    assert model._profile_time == 7
    document = model._serialize()
    assert document["verticals_discretization"] == 5
    assert document["stress_distribution_loads"] is True
    assert model._reliability_analysis is model._fit_for_settlement_plate is False


def test_options_go_by_keyword_only() -> None:
    kinds = {p.name: p.kind for p in inspect.signature(Model2D).parameters.values()}
    assert list(kinds)[:5] == [
        "calculation_model",
        "consolidation_model",
        "boundary_bottom",
        "create_default_materials",
        "natural_strain",
    ]
    by_keyword = [name for name, kind in kinds.items() if kind is inspect.Parameter.KEYWORD_ONLY]
    assert by_keyword == list(kinds)[4:]
    assert len(by_keyword) == 12
    with pytest.raises(TypeError, match=r"unexpected keyword argument 'reliability_analysis'"):
        Model2D(  # type: ignore[call-arg]
            CalculationModel.ISOTACHE, ConsolidationModel.DARCY, [], reliability_analysis=True
        )


def test_the_bottom_has_to_run_from_limit_to_limit(new_model_2d: Factory) -> None:
    with pytest.raises(ModelError, match=OFF_LIMITS):
        new_model_2d(boundary_bottom=[(0.0, 0.0), (99.0, 0.0)])


def test_the_frame_checks_its_options_before_the_bottom_is_looked_at(new_model_2d: Factory) -> None:
    with pytest.raises(ModelError, match=r"^verticals_discretization must be between 5 and 500$"):
        new_model_2d(boundary_bottom=[], verticals_discretization=4)


@pytest.mark.parametrize(
    ("bottom", "error", "text"),
    [
        ([], IndexError, "list index out of range"),
        ([(0.0,), (100.0, 0.0)], ValueError, "not enough values to unpack (expected 2, got 1)"),
        ([(0.0, 1.0, 2.0)], ValueError, "too many values to unpack (expected 2)"),
        ([0.0, 100.0], TypeError, "cannot unpack non-iterable float object"),
        (5, TypeError, "'int' object is not iterable"),
    ],
)
def test_a_bottom_of_another_form_fails_as_the_host_does(
    new_model_2d: Factory, bottom: Any, error: type[Exception], text: str
) -> None:
    with pytest.raises(error) as caught:
        new_model_2d(boundary_bottom=bottom)
    assert type(caught.value) is error
    assert str(caught.value) == text


def test_the_bottom_may_be_any_iterable_of_pairs(new_model_2d: Factory) -> None:
    model = new_model_2d(boundary_bottom=iter([[0, 1], (100, 2)]))
    assert [(p.x, p.y) for p in model._points] == [(0, 1), (100, 2)]
    assert type(model._points[0].x) is int


def test_each_point_is_new_and_kept_in_order(new_model_2d: Factory) -> None:
    model = new_model_2d()
    first, second = model.create_point(25, 10.0), model.create_point(25.0, 10.0)
    assert first == second
    assert first is not second
    assert model._points[2] is first
    assert model._points[3] is second
    assert type(first.x) is int


def test_models_do_not_share_anything_that_grows(new_model_2d: Factory) -> None:
    one, other = new_model_2d(), new_model_2d()
    one.create_point(1.0, 1.0)
    one.create_vertical(1.0)
    assert len(other._points) == 2
    assert other._verticals == []


def test_a_copied_or_pickled_model_gives_the_same_document_and_grows_on(
    build_story_2d: Factory, points_of: Factory
) -> None:
    model = build_story_2d()
    document = model._generate_input()
    copies = [copy.deepcopy(model)]
    copies += [pickle.loads(pickle.dumps(model, protocol)) for protocol in range(6)]
    for copied in copies:
        assert list(vars(copied)) == list(vars(model))
        assert copied._generate_input() == document
        points = points_of(copied, (0.0, 0.0), (100.0, 0.0))
        assert copied._create_boundary(points) is copied._boundaries[0]
        layer = copied.create_layer(points_of(copied, (0.0, 11.0), (100.0, 11.0)), "Sand", 0, 0)
        assert layer.boundary_top is copied._boundaries[-1]
        assert copied.create_vertical(50) is copied._verticals[1]
    assert model._generate_input() == document


def test_a_copy_that_shares_the_lists_sees_what_the_other_does(
    new_model_2d: Factory, level: Factory
) -> None:
    model = new_model_2d()
    model.create_layer(level(model, 1.0), "Sand", 0, 0)
    copied = copy.copy(model)
    assert copied._boundaries is model._boundaries
    top = model.create_layer(level(model, 3.0), "Sand", 0, 0).boundary_top
    assert copied._create_boundary(level(copied, 3.0)) is top
    between = copied._create_boundary(level(copied, 2.0))
    assert model._create_boundary(level(model, 2.0)) is between
    assert model._boundaries.index(between) == 2


def test_the_state_of_a_model_is_its_attributes(new_model_2d: Factory, level: Factory) -> None:
    class Slotted(Model2D):
        __slots__ = ("remark",)
        remark: str

    model = new_model_2d()
    model.create_layer(level(model, 1.0), "Sand", 0, 0)
    assert model.__getstate__() == vars(model)
    slotted = new_model_2d(Slotted)
    slotted.create_layer(level(slotted, 1.0), "Sand", 0, 0)
    slotted.remark = "kept"
    assert slotted.__getstate__() == (vars(slotted), {"remark": "kept"})
    assert copy.deepcopy(slotted).remark == "kept"


def test_a_model_can_be_referred_to_weakly_and_goes_with_all_it_has(
    build_story_2d: Factory,
) -> None:
    model = build_story_2d()
    point, boundary = model._points[0], model._boundaries[0]
    model._points[0].model = model  # in a circle
    gone = [weakref.ref(thing) for thing in (model, point, boundary, boundary.curves[0])]
    del model, point, boundary
    gc.collect()
    assert [ref() for ref in gone] == [None] * 4


def test_the_base_is_the_frame_and_bases_can_be_derived_from(new_model_2d: Factory) -> None:
    assert Model2D.__bases__ == (_Model,)

    class Numbered(Model2D):
        def create_point(self, x: float, y: float) -> _Point:
            point = super().create_point(x, y)
            self.created = getattr(self, "created", 0) + 1
            return point

    model = new_model_2d(Numbered)
    assert model.created == 2
    model.create_point(1.0, 2.0)
    assert model.created == 3
