"""`_Model` as an abstract class: its constants, its operations, and its two containers to read."""

from abc import ABCMeta, abstractmethod
from collections.abc import Callable
from typing import Any

import pytest
from sembra.external.dsettlement import Model1D, VerticalDrain, _Model, _Vertical

Factory = Callable[..., Any]

CONSTANTS = [
    "_SOIL_VERSION",
    "_GEOMETRY_VERSION",
    "_DSETTLEMENT_VERSION",
    "_DEFAULT_MATERIALS",
    "_DEFAULT_VERTICAL_DRAIN",
]
OPERATIONS = [
    "__init__",
    "materials",
    "verticals",
    "create_material",
    "create_uniform_load",
    "set_calculation_times",
    "_generate_input",
    "generate_input_file",
    "_validate",
    "_add_other_load",
    "_serialize",
    "_serialize_materials",
    "_serialize_verticals",
    "_serialize_non_uniform_loads",
    "_serialize_other_loads",
    "_min_vertical_drains",
    "_max_vertical_drains",
]
ABSTRACT = ["__init__", "_serialize", "_min_vertical_drains", "_max_vertical_drains"]


def test_version_constants_are_declared() -> None:
    assert _Model._SOIL_VERSION == 1005
    assert _Model._GEOMETRY_VERSION == 1000
    assert _Model._DSETTLEMENT_VERSION == 1007


def test_version_constants_do_not_reach_the_document(build_story: Factory) -> None:
    assert not {1005, 1000, 1007} & {
        value for value in build_story()._generate_input().values() if type(value) is int
    }


def test_constants_and_operations_stand_in_declared_order() -> None:
    declared = [name for name in vars(_Model) if name in CONSTANTS + OPERATIONS]
    assert declared == CONSTANTS + OPERATIONS


def test_the_frame_is_abstract_in_four_of_its_operations() -> None:
    assert type(_Model) is ABCMeta
    assert _Model.__abstractmethods__ == frozenset(ABSTRACT)
    for name, operation in vars(_Model).items():
        assert getattr(operation, "__isabstractmethod__", False) is (name in ABSTRACT)


def test_the_frame_itself_cannot_be_made_and_says_so_in_pythons_words() -> None:
    namespace = {name: abstractmethod(lambda self: None) for name in ABSTRACT}
    counterpart: Any = ABCMeta("_Model", (), namespace)
    with pytest.raises(TypeError) as expected:
        counterpart()
    with pytest.raises(TypeError) as refused:
        _Model()  # type: ignore[abstract, call-arg]
    assert str(refused.value) == str(expected.value)


@pytest.mark.parametrize("missing", ABSTRACT)
def test_a_model_that_leaves_one_abstract_operation_open_cannot_be_made(missing: str) -> None:
    namespace = {name: lambda self: None for name in ABSTRACT if name != missing}
    partial: Any = ABCMeta("Partial", (_Model,), namespace)
    with pytest.raises(
        TypeError,
        match=r"^Can't instantiate abstract class Partial without an implementation "
        f"for abstract method '{missing}'$",
    ):
        partial()


def test_the_vertical_limits_of_the_frame_are_empty_bodies(new_frame: Factory) -> None:
    frame = new_frame()
    for name in ("_min_vertical_drains", "_max_vertical_drains"):
        limit = vars(_Model)[name]
        assert isinstance(limit, property)
        assert limit.fget is not None
        assert limit.fget(frame) is None


def test_the_base_check_of_a_model_without_drains_does_nothing(new_frame: Factory) -> None:
    assert new_frame(limits=(100.0, 0.0))._validate() is None


@pytest.mark.parametrize("name", ["materials", "verticals"])
def test_containers_are_read_only_properties(name: str, new_frame: Factory) -> None:
    declared = vars(_Model)[name]
    assert isinstance(declared, property)
    assert declared.fset is None
    assert declared.fdel is None
    message = rf"^property '{name}' of 'Frame' object has no setter$"
    with pytest.raises(AttributeError, match=message):
        setattr(new_frame(), name, {})


def test_changing_the_mapping_of_materials_does_not_change_the_model(new_frame: Factory) -> None:
    model = new_frame()
    model.create_material("Peat", 12.0, 12.0)
    materials = model.materials
    materials["Sand"] = materials.pop("Peat")
    assert list(model.materials) == ["Peat"]
    assert type(materials) is dict


def test_the_materials_read_are_the_models_own(new_frame: Factory) -> None:
    model = new_frame()
    model.create_material("Peat", 12.0, 12.0)
    assert model.materials["Peat"] is model._materials["Peat"]
    assert model.materials["Peat"] is model.materials["Peat"]
    assert model.materials is not model.materials


def test_changing_the_list_of_verticals_does_not_change_the_model(new_model_1d: Factory) -> None:
    model = new_model_1d()
    verticals = model.verticals
    vertical = verticals.pop()
    assert model.verticals == [vertical]
    assert model.verticals is not model._verticals
    assert type(verticals) is list


def test_the_verticals_read_are_the_models_own(new_frame: Factory) -> None:
    model = new_frame()
    model._verticals += [_Vertical(2.0), _Vertical(1.0)]
    assert [vertical.x for vertical in model.verticals] == [2.0, 1.0]
    assert all(a is b for a, b in zip(model.verticals, model._verticals, strict=True))


def test_the_default_drain_is_one_record_of_the_class() -> None:
    assert type(_Model._DEFAULT_VERTICAL_DRAIN) is VerticalDrain
    assert Model1D._DEFAULT_VERTICAL_DRAIN is _Model._DEFAULT_VERTICAL_DRAIN
