"""`Model1D.update_geometry`."""

from collections.abc import Callable
from typing import Any

import pytest
from sembra.errors import ModelError

Factory = Callable[..., Any]


def unknown(material: Any, layer: int) -> str:
    """The text that refuses a layer's material."""
    return f"Material with name '{material}' does not exist (layer {layer})"


@pytest.fixture
def refusal(new_model_1d: Factory) -> Factory:
    """Get the text with which a new geometry is refused; the model keeps the one it has."""

    def text(*arguments: Any) -> str:
        model = new_model_1d()
        geometry = model._geometry
        with pytest.raises(ModelError) as refused:
            model.update_geometry(*arguments)
        assert model._geometry is geometry
        return str(refused.value)

    return text


def test_the_new_geometry_replaces_the_old_one_as_a_whole(new_model_1d: Factory) -> None:
    model = new_model_1d()
    old = model._geometry
    assert model.update_geometry(-1.0, [(1.0, "Loam"), (0.0, "Sand")], 0.5) is None
    assert model._geometry is not old
    assert (model.bottom_level, model.top_level, model.phreatic_level) == (-1.0, 1.0, 0.5)
    assert old.bottom_level == -10.0


def test_the_last_call_counts(new_model_1d: Factory) -> None:
    model = new_model_1d()
    model.update_geometry(-1.0, [(1.0, "Loam")])
    model.update_geometry(-2.0, [(2.0, "Sand")])
    assert (model.bottom_level, model.layers) == (-2.0, [(2.0, "Sand")])


def test_parameters_may_be_given_by_keyword(new_model_1d: Factory) -> None:
    model = new_model_1d()
    model.update_geometry(phreatic_level=1, layers=[(1.0, "Loam")], bottom_level=-2)
    assert (model.bottom_level, model.phreatic_level) == (-2, 1)


def test_one_layer_is_enough(new_model_1d: Factory) -> None:
    model = new_model_1d()
    model.update_geometry(-1.0, [(1.0, "Loam")])
    assert model.layers == [(1.0, "Loam")]


@pytest.mark.parametrize("empty", [[], ()])
def test_an_empty_list_is_refused_for_want_of_a_layer(empty: Any, refusal: Factory) -> None:
    assert refusal(-1.0, empty) == "Provide at least 1 layer"


def test_equal_top_levels_are_refused_with_the_number_of_the_lower_layer(refusal: Factory) -> None:
    assert refusal(-1.0, [(1.0, "Loam"), (1.0, "Sand")]) == (
        "Each layer should have a top level lower than the layer above it (layer 2)"
    )


def test_the_third_layer_above_the_second_is_refused(refusal: Factory) -> None:
    assert refusal(-1.0, [(1.0, "Loam"), (0.0, "Sand"), (0.5, "Peat")]) == (
        "Each layer should have a top level lower than the layer above it (layer 3)"
    )


@pytest.mark.parametrize("layers", [[(-1.0, "Loam")], [(1.0, "Loam"), (-1.0, "Sand")]])
def test_a_last_top_at_the_bottom_level_is_refused(layers: Any, refusal: Factory) -> None:
    assert refusal(-1.0, layers) == "Each layer should have a top level above the bottom level"


@pytest.mark.parametrize("material", ["nothing", "", "sand", 5, None])
def test_an_unknown_material_is_refused_with_the_number_of_its_layer(
    material: Any, refusal: Factory
) -> None:
    assert refusal(-1.0, [(1.0, material)]) == unknown(material, 1)
    assert refusal(-1.0, [(1.0, "Loam"), (0.5, "Sand"), (0.0, material)]) == unknown(material, 3)


def test_the_first_unknown_material_decides(refusal: Factory) -> None:
    assert refusal(-1.0, [(1.0, "Loam"), (0.5, "one"), (0.0, "two")]) == unknown("one", 2)


def test_materials_are_checked_before_the_order_of_the_levels(refusal: Factory) -> None:
    assert refusal(-1.0, [(1.0, "Loam"), (2.0, "nothing")]) == unknown("nothing", 2)
    assert refusal(100.0, [(1.0, "nothing")]) == unknown("nothing", 1)


def test_a_material_must_be_created_beforehand(new_model_1d: Factory) -> None:
    model = new_model_1d(create_default_materials=False)
    with pytest.raises(ModelError) as refused:
        model.update_geometry(-1.0, [(1.0, "Sand")])
    assert str(refused.value) == unknown("Sand", 1)
    model.create_material("Sand", 18.0, 20.0)
    model.update_geometry(-1.0, [(1.0, "Sand")])
    assert model.layers == [(1.0, "Sand")]


@pytest.mark.parametrize("phreatic_level", [-3.0, 3.0, -1e9])
def test_the_phreatic_level_may_lie_anywhere(phreatic_level: float, new_model_1d: Factory) -> None:
    model = new_model_1d()
    model.update_geometry(-1.0, [(1.0, "Loam")], phreatic_level)
    assert model.phreatic_level == phreatic_level


def test_leaving_out_the_phreatic_level_sets_it_to_none(new_model_1d: Factory) -> None:
    model = new_model_1d()
    model.update_geometry(-1.0, [(1.0, "Loam")], phreatic_level=0.5)
    model.update_geometry(-1.0, [(1.0, "Loam")])
    assert model.phreatic_level is None


def test_integer_levels_stay_integers_in_the_document(new_model_1d: Factory) -> None:
    model = new_model_1d()
    model.update_geometry(-1, [(1.0, "Loam"), (0.0, "Sand")], phreatic_level=-3)
    geometry = model._serialize()["geometry"]
    assert type(model.bottom_level) is int
    assert list(geometry) == ["layers", "bottom_level", "phreatic_level"]
    assert (geometry["bottom_level"], geometry["phreatic_level"]) == (-1, -3)
    assert type(geometry["bottom_level"]) is type(geometry["phreatic_level"]) is int


def test_the_list_is_kept_by_reference_and_not_checked_again(new_model_1d: Factory) -> None:
    model, layers = new_model_1d(), [(1.0, "Loam")]
    model.update_geometry(-1.0, layers)
    layers.append((5.0, "nothing"))
    assert model.layers == [(1.0, "Loam"), (5.0, "nothing")]
    assert model._serialize()["geometry"]["layers"] is layers


def test_materials_loads_times_and_vertical_do_not_depend_on_the_geometry(
    build_story: Factory,
) -> None:
    model = build_story()
    before = {name: value for name, value in vars(model).items() if name != "_geometry"}
    model.update_geometry(-5.0, [(0.0, "Peat")])
    assert {name: value for name, value in vars(model).items() if name != "_geometry"} == before


@pytest.mark.parametrize(
    ("layer", "failure", "message"),
    [
        ((1.0,), IndexError, "tuple index out of range"),
        ([1.0], IndexError, "list index out of range"),
        ("1", IndexError, "string index out of range"),
        (1.0, TypeError, "'float' object is not subscriptable"),
        ((1.0, []), TypeError, "unhashable type: 'list'"),
    ],
)
def test_a_layer_that_is_no_pair_is_pythons_own_error(
    layer: Any, failure: type[Exception], message: str, new_model_1d: Factory
) -> None:
    model = new_model_1d()
    geometry = model._geometry
    with pytest.raises(failure) as refused:
        model.update_geometry(-1.0, [(2.0, "Loam"), layer])
    assert str(refused.value) == message
    assert model._geometry is geometry


def test_layers_that_cannot_be_gone_through_are_pythons_type_error(new_model_1d: Factory) -> None:
    with pytest.raises(TypeError, match=r"^'NoneType' object is not iterable$"):
        new_model_1d().update_geometry(-1.0, None)


def test_a_layer_may_be_any_kind_of_pair(new_model_1d: Factory) -> None:
    model, layers = new_model_1d(), [[1.0, "Loam"], (0.0, "Sand", "a note")]
    model.update_geometry(-1.0, layers)
    assert model.layers == layers
    assert model.layers[0] is layers[0]
