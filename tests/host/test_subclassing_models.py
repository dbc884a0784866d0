"""Overrides on a model are honoured wherever an operation is called through object or class."""

from collections.abc import Callable
from typing import Any

import pytest
from sembra.core import Color
from sembra.errors import ModelError
from sembra.external.dsettlement import (
    CalculationModel,
    DrainType,
    Model1D,
    VerticalDrain,
    _Model,
    _UniformLoad,
)

Factory = Callable[..., Any]


def test_default_materials_go_through_an_overridden_create_material(new_model_1d: Factory) -> None:
    class Prefixed(Model1D):
        def create_material(self, name: str, *args: Any, **kwargs: Any) -> None:
            super().create_material(f"NL {name}", *args, cohesion=1.5, **kwargs)

    materials = new_model_1d(Prefixed).materials
    assert list(materials)[:2] == ["NL Dense Sand", "NL Gravel"]
    assert materials["NL Peat"]._kwargs["cohesion"] == 1.5


def test_a_material_that_is_refused_ends_the_construction(new_model_1d: Factory) -> None:
    class Strict(Model1D):
        def create_material(self, name: str, *args: Any, **kwargs: Any) -> None:
            raise ModelError(f"no {name}")

    with pytest.raises(ModelError, match=r"^no Dense Sand$"):
        new_model_1d(Strict)
    assert new_model_1d(Strict, create_default_materials=False).materials == {}


def test_a_table_of_default_materials_of_ones_own_is_used(new_model_1d: Factory) -> None:
    color = Color.from_deltares(255)

    class Local(Model1D):
        _DEFAULT_MATERIALS = {"Klei": (14.0, 15, color)}  # noqa: RUF012

    (material,) = new_model_1d(Local).materials.values()
    assert (material.gam_dry, material.gam_wet, material.color) == (14.0, 15, color)


def test_a_default_drain_of_ones_own_is_used(
    new_model_1d: Factory, new_strip_drain: Factory
) -> None:
    own = new_strip_drain(width_diameter=0.25)

    class Local(Model1D):
        _DEFAULT_VERTICAL_DRAIN = own

    model = new_model_1d(Local)
    assert model._vertical_drain is own
    assert model._has_vertical_drains is False
    assert model._serialize()["vertical_drain"]["width_diameter"] == 0.25
    assert new_model_1d()._vertical_drain is not own


def test_an_overridden_check_runs_when_the_input_is_generated(
    new_model_1d: Factory, post: Any
) -> None:
    class Loaded(Model1D):
        def _validate(self) -> None:
            super()._validate()
            if not vars(self)["_other_loads"]:
                raise ModelError("no load")

    model = new_model_1d(Loaded)
    with pytest.raises(ModelError, match=r"^no load$"):
        model.generate_input_file()
    assert post.calls == []
    model.create_uniform_load("a", 0, 1.0, 1.0, 0.0)
    model.generate_input_file()
    assert len(post.calls) == 1


def test_an_overridden_document_is_the_one_that_is_posted(new_model_1d: Factory, post: Any) -> None:
    class Tagged(Model1D):
        def _serialize(self) -> dict[str, Any]:
            return {**super()._serialize(), "tag": 1}

    new_model_1d(Tagged).generate_input_file()
    assert list(post.document)[18:22] == ["model_type", "geometry", "tag", "date"]


@pytest.mark.parametrize(
    ("operation", "key"),
    [
        ("_serialize_materials", "soils"),
        ("_serialize_verticals", "verticals"),
        ("_serialize_non_uniform_loads", "non_uniform_loads"),
        ("_serialize_other_loads", "other_loads"),
    ],
)
def test_overridden_parts_stand_in_the_document_as_the_very_objects(
    operation: str, key: str, new_model_1d: Factory
) -> None:
    value = object()
    model = new_model_1d(type("Own", (Model1D,), {operation: lambda self: value}))
    assert model._serialize()[key] is value


def test_the_parts_are_asked_for_in_the_order_of_the_document(new_model_1d: Factory) -> None:
    asked: list[str] = []
    parts = ("materials", "verticals", "non_uniform_loads", "other_loads")

    class Drain(VerticalDrain):
        def _serialize(self) -> dict[str, Any]:
            asked.append("drain")
            return {}

    def note(part: str) -> Callable[[Any], None]:
        return lambda self: asked.append(part)

    names = {f"_serialize_{part}": note(part) for part in parts}
    drain = Drain(DrainType.SAND_WALL, 0.0, 1.0, 0.0, 1.0, 1.0, schedule=[])
    model = new_model_1d(type("Own", (Model1D,), names), vertical_drain=drain)
    assert model._serialize()["vertical_drain"] == {}
    assert asked == [*parts, "drain"]


def test_uniform_loads_go_through_an_overridden_add_other_load(new_model_1d: Factory) -> None:
    calls: list[Any] = []

    class Counting(Model1D):
        def _add_other_load(self, *args: Any, **kwargs: Any) -> None:
            calls.append((args, kwargs))
            super()._add_other_load(*args, **kwargs)

    model = new_model_1d(Counting)
    assert model.create_uniform_load("a", 0, 1.0, 2.0, 3.0) is None
    (((name, load), options),) = calls
    assert (name, options) == ("a", {})
    assert type(load) is _UniformLoad
    assert model._other_loads == {"a": load}


def test_overridden_vertical_limits_are_those_of_the_check(
    new_model_1d: Factory, new_strip_drain: Factory
) -> None:
    class Deep(Model1D):
        @property
        def _min_vertical_drains(self) -> float:
            return super()._min_vertical_drains - 90

        @property
        def _max_vertical_drains(self) -> float:
            return 5

    drain = new_strip_drain(bottom_position=-100.0, position_drain=5)
    model = new_model_1d(Deep, vertical_drain=drain)
    assert model._validate() is None
    drain.bottom_position = -101
    message = r"\(-101\) must be between top and bottom limits \(-100.0 - 5\)$"
    with pytest.raises(ModelError, match=message):
        model._validate()


def test_vertical_limits_follow_overridden_levels(
    new_model_1d: Factory, new_strip_drain: Factory
) -> None:
    class Raised(Model1D):
        @property
        def bottom_level(self) -> float:
            return super().bottom_level + 8

        @property
        def top_level(self) -> float:
            return super().top_level + 8

    model = new_model_1d(Raised, vertical_drain=new_strip_drain(bottom_position=-4.0))
    assert (model._min_vertical_drains, model._max_vertical_drains) == (-2.0, 8.0)
    with pytest.raises(ModelError, match=r"limits \(-2.0 - 8.0\)$"):
        model._validate()


def test_a_limit_that_fails_reaches_the_caller_out_of_the_check(
    new_model_1d: Factory, new_strip_drain: Factory
) -> None:
    class Empty(Model1D):
        @property
        def _min_vertical_drains(self) -> float:
            raise ModelError("no layers")

    with pytest.raises(ModelError, match=r"^no layers$"):
        new_model_1d(Empty, vertical_drain=new_strip_drain())._validate()
    assert new_model_1d(Empty)._validate() is None


def test_a_concrete_model_can_stand_on_the_frame_itself(new_frame: Factory) -> None:
    assert new_frame(limits=(0.0, 50.0))._generate_input()["calculation_model"] == 0


def test_a_constructor_that_leaves_out_the_base_leaves_a_model_without_attributes() -> None:
    class Unfinished(Model1D):
        def __init__(self) -> None:
            pass

    model = Unfinished()
    assert vars(model) == {}
    for use in (
        lambda: model.materials,
        lambda: model.bottom_level,
        lambda: model._serialize(),
        lambda: model._validate(),
        lambda: model.create_uniform_load("a", 1, 2.0, 3.0, 4.0),
        lambda: model.update_geometry(-1.0, [(1.0, "Loam")]),
    ):
        with pytest.raises(AttributeError, match=r"^'Unfinished' object has no attribute '_"):
            use()


def test_an_override_may_live_on_the_object_alone(new_model_1d: Factory, post: Any) -> None:
    model = new_model_1d()
    model._validate = lambda: None
    model._serialize = lambda: {"own": 1}
    model.generate_input_file()
    assert next(iter(post.document)) == "own"


def test_attributes_can_be_computed_by_a_subclass(new_model_1d: Factory) -> None:
    class Lively(Model1D):
        def __getattribute__(self, name: str) -> Any:
            value = super().__getattribute__(name)
            return value * 2 if name == "_verticals_z_coordinate" else value

    model = new_model_1d(Lively, verticals_z_coordinate=2.0)
    assert model._serialize()["verticals_z_coordinate"] == 4.0


def test_operations_take_any_object_that_has_what_they_read() -> None:
    class Duck:
        _materials = {"Sand": None}  # noqa: RUF012

    duck: Any = Duck()
    Model1D.update_geometry(duck, -1.0, [(1.0, "Sand")])
    assert duck._geometry.bottom_level == -1.0
    duck._calculation_model = CalculationModel.ISOTACHE
    with pytest.raises(AttributeError, match=r"^'Duck' object has no attribute '_"):
        _Model._serialize(duck)
