"""An application's tests put stand-ins in the place of operations and classes."""

from collections.abc import Callable
from io import BytesIO
from typing import Any
from unittest import mock

import pytest
import sembra.external.dsettlement as dsettlement
from sembra.core import Color
from sembra.errors import ModelError
from sembra.external.dsettlement import (
    DSettlementAnalysis,
    Metadata,
    Model1D,
    VerticalDrain,
    _Model,
    _UniformLoad,
    _Vertical,
)

Factory = Callable[..., Any]

MODULE = "sembra.external.dsettlement"


@pytest.mark.parametrize("owner", [_Model, Model1D])
def test_an_operation_is_replaced_and_restored_on_its_class_or_below(
    owner: Any, new_model_1d: Factory
) -> None:
    before = dict(vars(owner))
    model = new_model_1d()
    with mock.patch.object(owner, "create_uniform_load") as stand_in:
        model.create_uniform_load("a", 0, 1.0, 1.0, 0.0)
    stand_in.assert_called_once_with("a", 0, 1.0, 1.0, 0.0)
    assert dict(vars(owner)) == before
    assert model._other_loads == {}
    model.create_uniform_load("a", 0, 1.0, 1.0, 0.0)
    assert list(model._other_loads) == ["a"]


def test_a_stand_in_for_a_whole_class_knows_its_operations() -> None:
    stand_in: Any = mock.create_autospec(Model1D)
    model = stand_in("calculation", "consolidation", end_of_settlement_calculation=5)
    model.create_material("a", 1.0, 2.0, cohesion=3.0)
    model.create_material.assert_called_once_with("a", 1.0, 2.0, cohesion=3.0)
    with pytest.raises(TypeError, match=r"missing a required argument: 'consolidation_model'"):
        stand_in("calculation")
    with pytest.raises(AttributeError):
        model.create_vertical(1.0)


def test_an_operation_is_replaced_on_one_object(new_model_1d: Factory, post: Any) -> None:
    model = new_model_1d()
    with mock.patch.object(model, "_validate", side_effect=ModelError("patched")) as check:
        with pytest.raises(ModelError, match=r"^patched$"):
            model.generate_input_file()
        new_model_1d().generate_input_file()
    check.assert_called_once_with()
    model.generate_input_file()
    assert len(post.calls) == 2


@pytest.mark.parametrize(
    ("operation", "result"),
    [
        ("_serialize_materials", "soils"),
        ("_serialize_verticals", "verticals"),
        ("_serialize_other_loads", "other_loads"),
        ("_serialize_non_uniform_loads", "non_uniform_loads"),
    ],
)
def test_inner_operations_are_replaced_for_all_models(
    operation: str, result: str, new_model_1d: Factory
) -> None:
    model = new_model_1d()
    with mock.patch.object(_Model, operation, return_value="patched"):
        assert model._serialize()[result] == "patched"
    assert isinstance(model._serialize()[result], list)


def test_a_property_is_replaced_and_restored(
    new_model_1d: Factory, new_strip_drain: Factory
) -> None:
    model = new_model_1d(vertical_drain=new_strip_drain(bottom_position=-4.0))
    with (
        mock.patch.object(
            Model1D, "_min_vertical_drains", new_callable=mock.PropertyMock, return_value=-1.0
        ),
        pytest.raises(ModelError, match=r"limits \(-1.0 - 0.0\)$"),
    ):
        model._validate()
    assert model._validate() is None


def test_class_constants_are_replaced_and_restored(new_model_1d: Factory) -> None:
    row = (1.0, 2.0, Color.from_deltares(1))
    with mock.patch.object(_Model, "_DEFAULT_MATERIALS", {"Only": row}):
        assert list(new_model_1d().materials) == ["Only"]
    assert len(new_model_1d().materials) == 11


def test_serialising_is_replaced_on_the_classes_of_the_entries(
    build_story: Factory,
) -> None:
    model = build_story()
    with (
        mock.patch.object(_Vertical, "_serialize", return_value="vertical"),
        mock.patch.object(_UniformLoad, "_serialize", return_value="load"),
        mock.patch.object(dsettlement._Material, "_serialize", return_value="soil"),
        mock.patch.object(dsettlement._Geometry1D, "_serialize", return_value="column"),
        mock.patch.object(VerticalDrain, "_serialize", return_value="drain"),
        mock.patch.object(Metadata, "_serialize", return_value={"metadata": 1}),
    ):
        document = model._generate_input()
    assert document["verticals"] == ["vertical"]
    assert document["other_loads"] == ["load"]
    assert document["soils"] == ["soil"] * 12
    assert document["geometry"] == "column"
    assert document["vertical_drain"] == "drain"
    assert document["metadata"] == 1


def test_the_output_of_an_analysis_is_replaced() -> None:
    with mock.patch.object(
        DSettlementAnalysis, "get_output_file", return_value=BytesIO(b"patched")
    ):
        sld_file: Any = DSettlementAnalysis(BytesIO()).get_sld_file()
    assert sld_file.getvalue() == "patched"


@pytest.mark.parametrize(
    ("name", "use", "arguments"),
    [
        (
            "_Material",
            lambda model: model.create_material("a", 1.0, 2.0, "black"),
            mock.call(1.0, 2.0, color="black", **{}),
        ),
        (
            "_UniformLoad",
            lambda model: model.create_uniform_load("a", 1, 2.0, 3.0, 4.0),
            mock.call(1, 2.0, 3.0, 4.0),
        ),
        (
            "_Geometry1D",
            lambda model: model.update_geometry(-1.0, [(1.0, "Loam")], 0.5),
            mock.call(-1.0, [(1.0, "Loam")], 0.5),
        ),
        ("Metadata", lambda model: model._generate_input(), mock.call()),
    ],
)
def test_a_class_is_replaced_in_the_module(
    name: str,
    use: Callable[[Any], Any],
    arguments: Any,
    new_model_1d: Factory,
    soil_parameters: dict[str, Any],
) -> None:
    model = new_model_1d()
    with mock.patch(f"{MODULE}.{name}") as stand_in:
        stand_in.return_value._serialize.return_value = {}
        use(model)
    (call,) = stand_in.call_args_list
    assert call.args == arguments.args
    if name == "_Material":
        assert call.kwargs["color"] == "black"
        assert len(call.kwargs) == 1 + len(soil_parameters)
    else:
        assert call.kwargs == arguments.kwargs


def test_the_one_vertical_is_made_of_the_class_that_stands_in_the_module(
    new_model_1d: Factory,
) -> None:
    with mock.patch(f"{MODULE}._Vertical") as stand_in:
        assert new_model_1d().verticals == [stand_in.return_value]
    stand_in.assert_called_once_with(0.0)


def test_the_whole_road_runs_on_stand_ins(build_story: Factory) -> None:
    with mock.patch(f"{MODULE}._post_on_addon_endpoint") as endpoint:
        endpoint.return_value = {"input_file": "text"}
        assert build_story().generate_input_file().getvalue() == b"text"
    endpoint.assert_called_once_with("filldsettlementtemplate/v1/jobs/", mock.ANY, timeout=60)
