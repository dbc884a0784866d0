"""Tools that ask for a function written in Python get along with a native operation."""

import inspect
import types
import typing
from typing import Any
from unittest import mock

import pytest
from sembra.core import Color
from sembra.external.dsettlement import Metadata, Model1D, _Model, _Vertical


def test_a_stand_in_with_autospec_gets_its_object(new_model_1d: Any) -> None:
    with mock.patch.object(Model1D, "create_uniform_load", autospec=True) as stand_in:
        model = new_model_1d()
        model.create_uniform_load("a", 0, 1.0, 2.0, 3.0)
    stand_in.assert_called_once_with(model, "a", 0, 1.0, 2.0, 3.0)


def test_a_stand_in_with_autospec_refuses_what_the_operation_refuses(new_model_1d: Any) -> None:
    with (
        mock.patch.object(Model1D, "create_uniform_load", autospec=True),
        pytest.raises(TypeError, match=r"^missing a required argument: 'time'$"),
    ):
        new_model_1d().create_uniform_load("a")
    stand_in: Any = mock.create_autospec(Model1D)
    with pytest.raises(TypeError, match=r"^missing a required argument: 'bottom_level'$"):
        stand_in("calculation", "consolidation").update_geometry()


def test_it_is_found_where_functions_are_looked_for() -> None:
    names = {name for name, _ in inspect.getmembers(Model1D, inspect.isfunction)}
    assert {"__init__", "update_geometry", "create_material", "_serialize"} <= names
    assert not inspect.iscoroutinefunction(Model1D.update_geometry)


def test_its_code_tells_the_parameters(soil_parameters: dict[str, Any]) -> None:
    operation: Any = Metadata.__init__
    assert isinstance(operation.__code__, types.CodeType)
    assert operation.__code__.co_varnames[:3] == ("self", "file_name", "company")
    assert operation.__defaults__ == ("-",) * 6 + (False, False)
    assert operation.__kwdefaults__ is None
    create: Any = Model1D.create_material
    assert create.__kwdefaults__["permeability_strain_modulus"] == 1e15
    assert create.__kwdefaults__ == soil_parameters


def test_its_declared_types_can_be_looked_up() -> None:
    hints = typing.get_type_hints(_Model.create_material)
    assert hints["name"] is str
    assert hints["color"] is Color
    assert typing.get_type_hints(_Vertical._serialize)["return"] == dict[str, Any]


def test_it_takes_attributes_and_another_documentation(new_model_1d: Any) -> None:
    operation: Any = Model1D.update_geometry
    documentation = operation.__doc__
    try:
        operation.mark = 1
        operation.__doc__ = "Other."
        assert operation.mark == 1
        assert operation.__dict__ == {"mark": 1}
        assert new_model_1d().update_geometry.__doc__ == "Other."
    finally:
        del operation.mark
        operation.__doc__ = documentation
    assert not hasattr(operation, "mark")
