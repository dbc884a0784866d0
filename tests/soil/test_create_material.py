"""`create_material` with all its soil parameters."""

import inspect
from collections.abc import Callable
from typing import Any

import pytest
from sembra.core import Color
from sembra.errors import ModelError
from sembra.external.dsettlement import Model1D, _Material

Factory = Callable[..., Any]

BLACK = Color(0, 0, 0)
TOO_LONG = "Name can be max. 25 characters long"


def typed(values: Any) -> list[tuple[str, type, Any]]:
    """Names, types and values, so that 0, 0.0 and False differ."""
    return [(name, type(value), value) for name, value in values.items()]


def document_keys(soil_parameters: dict[str, Any]) -> list[str]:
    """The keys of the parameters in the document: their names, except for one."""
    return ["pop_" if name == "pop" else name for name in soil_parameters]


def test_the_vocabulary_is_complete(soil_parameters: dict[str, Any]) -> None:
    assert len(soil_parameters) == 106


def test_all_soil_parameters_are_keyword_only_in_order_with_their_defaults(
    soil_parameters: dict[str, Any],
) -> None:
    parameters = inspect.signature(Model1D.create_material).parameters
    keyword_only = {
        name: parameter.default
        for name, parameter in parameters.items()
        if parameter.kind is inspect.Parameter.KEYWORD_ONLY
    }
    assert typed(keyword_only) == typed(soil_parameters)
    assert list(parameters)[:5] == ["self", "name", "gam_dry", "gam_wet", "color"]
    assert len(parameters) == 5 + len(soil_parameters)


def test_the_result_is_none_and_the_material_stands_in_the_table(new_frame: Factory) -> None:
    model = new_frame()
    assert model.create_material("my_mat", 21.0, 19.0, BLACK) is None
    material = model.materials["my_mat"]
    assert type(material) is _Material
    assert (material.gam_dry, material.gam_wet) == (21.0, 19.0)
    assert material.color is BLACK


def test_the_soil_parameters_are_passed_under_their_names_except_pop(
    new_frame: Factory, soil_parameters: dict[str, Any]
) -> None:
    model = new_frame()
    model.create_material("a", 1.0, 2.0)
    keys = document_keys(soil_parameters)
    expected = dict(zip(keys, soil_parameters.values(), strict=True))
    assert typed(model.materials["a"]._kwargs) == typed(expected)


def test_a_parameter_left_out_is_in_the_document_all_the_same(
    new_frame: Factory, soil_parameters: dict[str, Any]
) -> None:
    model = new_frame()
    model.create_material("a", 1.0, 2.0, cohesion=3.0)
    document = model._serialize_materials()[0]
    assert len(document) == 110
    assert list(document)[:4] == ["name", "color", "gam_dry", "gam_wet"]
    assert list(document)[4:] == document_keys(soil_parameters)
    assert document["cohesion"] == 3.0
    assert document["phi"] == 0.0


def test_every_soil_parameter_reaches_its_own_key_unconverted(
    new_frame: Factory, soil_parameters: dict[str, Any]
) -> None:
    given = {name: object() for name in soil_parameters}
    model = new_frame()
    model.create_material("a", 1.0, 2.0, **given)
    document = model._serialize_materials()[0]
    for key, value in zip(document_keys(soil_parameters), given.values(), strict=True):
        assert document[key] is value


def test_the_order_of_the_keywords_in_the_call_does_not_matter(
    new_frame: Factory, soil_parameters: dict[str, Any]
) -> None:
    model = new_frame()
    model.create_material("a", 1.0, 2.0, **dict(reversed(soil_parameters.items())))
    model.create_material("b", 1.0, 2.0)
    assert list(model.materials["a"]._kwargs) == list(model.materials["b"]._kwargs)


def test_pop_reaches_the_document_as_pop_with_an_underscore(new_frame: Factory) -> None:
    model = new_frame()
    model.create_material("a", 1.0, 2.0, pop=5.0, std_pop=0.5, dist_pop=3)
    document = model._serialize_materials()[0]
    assert document["pop_"] == 5.0
    assert "pop" not in document
    assert document["std_pop"] == 0.5
    assert document["dist_pop"] == 3


def test_the_documents_spelling_of_pop_is_no_parameter(new_frame: Factory) -> None:
    with pytest.raises(TypeError, match="got an unexpected keyword argument 'pop_'"):
        new_frame().create_material("a", 1.0, 2.0, pop_=5.0)


def test_soil_parameters_are_refused_by_position(new_frame: Factory) -> None:
    with pytest.raises(
        TypeError, match=r"takes from 4 to 5 positional arguments but 6 were given$"
    ):
        new_frame().create_material("a", 1.0, 2.0, BLACK, 0.5)


def test_the_first_four_may_be_given_by_keyword(new_frame: Factory) -> None:
    model = new_frame()
    model.create_material(color=BLACK, gam_wet=2, gam_dry=1, name="a")
    document = model._serialize_materials()[0]
    assert (document["name"], document["gam_dry"], document["gam_wet"]) == ("a", 1, 2)
    assert type(document["gam_dry"]) is int


def test_a_second_material_of_the_same_name_is_refused(new_frame: Factory) -> None:
    model = new_frame()
    model.create_material("Clay 'x'", 1.0, 2.0)
    first = model.materials["Clay 'x'"]
    with pytest.raises(ModelError) as refused:
        model.create_material("Clay 'x'", 3.0, 4.0)
    assert str(refused.value) == "Material with name 'Clay 'x'' already exists"
    assert model.materials == {"Clay 'x'": first}


def test_default_materials_block_their_names(new_model_1d: Factory) -> None:
    with pytest.raises(ModelError, match=r"^Material with name 'Sand' already exists$"):
        new_model_1d().create_material("Sand", 18.0, 20.0)


def test_without_default_materials_their_names_are_free(new_model_1d: Factory) -> None:
    model = new_model_1d(create_default_materials=False)
    model.create_material("Sand", 18.0, 20.0)
    assert list(model.materials) == ["Sand"]


@pytest.mark.parametrize("name", ["", "x" * 25, "é" * 25, "\N{BRICK}" * 25])
def test_a_name_of_up_to_25_characters_is_accepted(name: str, new_frame: Factory) -> None:
    model = new_frame()
    model.create_material(name, 1.0, 2.0)
    assert list(model.materials) == [name]


@pytest.mark.parametrize("name", ["x" * 26, "é" * 26])
def test_a_name_of_26_characters_is_refused(name: str, new_frame: Factory) -> None:
    model = new_frame()
    with pytest.raises(ModelError) as refused:
        model.create_material(name, 1.0, 2.0)
    assert str(refused.value) == TOO_LONG
    assert model.materials == {}


def test_the_duplicate_is_tested_before_the_length(new_frame: Factory) -> None:
    model, name = new_frame(), "x" * 26
    model._materials[name] = _Material(1.0, 2.0)
    with pytest.raises(ModelError, match=rf"^Material with name '{name}' already exists$"):
        model.create_material(name, 1.0, 2.0)


def test_a_name_that_does_not_hash_is_pythons_type_error(new_frame: Factory) -> None:
    with pytest.raises(TypeError, match=r"^unhashable type: 'list'$"):
        new_frame().create_material(["a"], 1.0, 2.0)


def test_a_name_without_a_length_is_pythons_type_error(new_frame: Factory) -> None:
    model = new_frame()
    with pytest.raises(TypeError, match=r"^object of type 'int' has no len\(\)$"):
        model.create_material(5, 1.0, 2.0)
    assert model.materials == {}


def test_weights_are_neither_checked_nor_converted(new_frame: Factory) -> None:
    model = new_frame()
    model.create_material("a", "heavy", None)
    document = model._serialize_materials()[0]
    assert (document["gam_dry"], document["gam_wet"]) == ("heavy", None)


def test_each_material_without_a_color_gets_one_of_its_own(
    new_frame: Factory, monkeypatch: pytest.MonkeyPatch
) -> None:
    colors = iter([Color.from_deltares(1), Color.from_deltares(2)])
    monkeypatch.setattr(Color, "random", classmethod(lambda cls: next(colors)))
    model = new_frame()
    model.create_material("a", 1.0, 2.0)
    model.create_material("b", 1.0, 2.0)
    assert [entry["color"] for entry in model._serialize_materials()] == [1, 2]


def test_a_material_of_the_caller_comes_behind_the_default_materials(
    new_model_1d: Factory,
) -> None:
    model = new_model_1d()
    model.create_material("my_mat", 21.0, 19.0, color=Color(0, 0, 0))
    names = [entry["name"] for entry in model._serialize_materials()]
    assert len(names) == 12
    assert names[-2:] == ["Undetermined", "my_mat"]
