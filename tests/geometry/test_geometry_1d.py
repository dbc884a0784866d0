"""`_Geometry1D`."""

from typing import Any

import pytest
from sembra.errors import ModelError
from sembra.external.dsettlement import _Geometry1D

NO_LAYER = "Provide at least 1 layer"
ABOVE_BOTTOM = "Each layer should have a top level above the bottom level"
NAN = float("nan")

make: Any = _Geometry1D


def order(layer: int) -> str:
    """The text that refuses the given layer, counted from 1 at the top."""
    return f"Each layer should have a top level lower than the layer above it (layer {layer})"


def refusal(*arguments: Any) -> str:
    """The text with which a column is refused."""
    with pytest.raises(ModelError) as refused:
        make(*arguments)
    assert type(refused.value) is ModelError
    return str(refused.value)


def test_fields_are_stored_in_order_and_as_given() -> None:
    layers = [(1, "Loam"), (0.0, "Sand")]
    geometry = make(-1, layers, -3)
    assert list(vars(geometry).items()) == [
        ("_bottom_level", -1),
        ("_layers", layers),
        ("phreatic_level", -3),
    ]
    assert geometry._layers is layers
    assert type(geometry.bottom_level) is int
    assert type(geometry.top_level) is int


def test_the_phreatic_level_is_none_if_left_out() -> None:
    assert make(-1.0, [(1.0, "Loam")]).phreatic_level is None


def test_parameters_may_be_given_by_keyword() -> None:
    geometry = make(phreatic_level=0.5, layers=[(1.0, "Loam")], bottom_level=-1.0)
    assert (geometry.bottom_level, geometry.top_level, geometry.phreatic_level) == (-1.0, 1.0, 0.5)


def test_the_top_level_is_that_of_the_first_layer() -> None:
    assert make(-9.0, [(3.0, "a"), (2.0, "b"), (1.0, "c")]).top_level == 3.0


def test_the_list_of_layers_is_a_shallow_copy() -> None:
    pair = (1.0, "Loam")
    layers = [pair]
    geometry = make(-1.0, layers)
    copy = geometry.layers
    copy.clear()
    assert geometry.layers == [pair]
    assert geometry.layers[0] is pair
    assert geometry.layers is not layers
    assert type(geometry.layers) is list


@pytest.mark.parametrize("name", ["bottom_level", "top_level", "layers"])
def test_levels_and_layers_are_read_only(name: str) -> None:
    geometry = make(-1.0, [(1.0, "Loam")])
    message = rf"^property '{name}' of '_Geometry1D' object has no setter$"
    with pytest.raises(AttributeError, match=message):
        setattr(geometry, name, 1.0)


def test_the_phreatic_level_is_a_public_attribute() -> None:
    geometry = make(-1.0, [(1.0, "Loam")])
    geometry.phreatic_level = 0.25
    assert geometry._serialize()["phreatic_level"] == 0.25


@pytest.mark.parametrize("empty", [[], (), None])
def test_at_least_one_layer_is_demanded(empty: Any) -> None:
    assert refusal(-1.0, empty) == NO_LAYER


def test_one_layer_above_the_bottom_is_enough() -> None:
    assert make(-1.0, [(1.0, "Loam")]).layers == [(1.0, "Loam")]


@pytest.mark.parametrize(
    ("tops", "layer"),
    [
        ([1.0, 1.0], 2),
        ([1, 1.0], 2),
        ([0.0, 1.0], 2),
        ([1.0, 0.0, 0.5], 3),
        ([1.0, 0.0, 0.0], 3),
        ([3.0, 4.0, 5.0], 2),
        ([5.0, 4.0, 3.0, 2.0, 2.5, 9.0], 5),
    ],
)
def test_the_first_layer_that_does_not_lie_below_the_one_above_is_refused(
    tops: list[float], layer: int
) -> None:
    assert refusal(-1.0, [(top, "Loam") for top in tops]) == order(layer)


@pytest.mark.parametrize("bottom", [1.0, 1, 1.5, 100])
@pytest.mark.parametrize("above", [[], [(2000.0, "Sand")]])
def test_the_last_top_must_lie_above_the_bottom(bottom: float, above: list[Any]) -> None:
    assert refusal(bottom, [*above, (1.0, "Loam")]) == ABOVE_BOTTOM


def test_the_order_of_the_layers_is_tested_before_the_bottom() -> None:
    assert refusal(100.0, [(1.0, "a"), (2.0, "b")]) == order(2)


def test_a_refused_column_has_stored_nothing() -> None:
    unmade = _Geometry1D.__new__(_Geometry1D)
    with pytest.raises(ModelError):
        unmade.__init__(1.0, [(1.0, "Loam")])  # type: ignore[misc]
    assert vars(unmade) == {}


@pytest.mark.parametrize("phreatic_level", [-1e9, 1e9, "deep", NAN])
def test_the_phreatic_level_is_compared_with_nothing(phreatic_level: Any) -> None:
    assert make(-1.0, [(1.0, "Loam")], phreatic_level).phreatic_level is phreatic_level


def test_materials_mean_nothing_to_the_column() -> None:
    layers = [(1.0, None), (0.5,), (0.0, "a", "b")]
    assert make(-1.0, layers)._serialize()["layers"] is layers


def test_levels_that_are_no_numbers_in_order_are_not_refused() -> None:
    assert make(NAN, [(NAN, "a"), (NAN, "b")])._layers[0][0] is NAN


@pytest.mark.parametrize(
    ("arguments", "message"),
    [
        (("-1", [(1.0, "a")]), "'<=' not supported between instances of 'float' and 'str'"),
        ((-1, [("1", "a")]), "'<=' not supported between instances of 'str' and 'int'"),
        (
            (-1, [(1.0, "a"), ("0", "b")]),
            "'>=' not supported between instances of 'str' and 'float'",
        ),
    ],
)
def test_levels_that_do_not_compare_are_pythons_type_error(arguments: Any, message: str) -> None:
    with pytest.raises(TypeError) as refused:
        make(*arguments)
    assert str(refused.value) == message


def test_a_layer_without_a_level_is_pythons_index_error() -> None:
    with pytest.raises(IndexError, match=r"^tuple index out of range$"):
        make(-1.0, [()])


def test_a_column_writes_three_keys_in_order() -> None:
    layers = [(1.0, "Loam"), (0.0, "Sand")]
    document = make(-1, layers, -3)._serialize()
    assert type(document) is dict
    assert list(document.items()) == [
        ("layers", layers),
        ("bottom_level", -1),
        ("phreatic_level", -3),
    ]
    assert document["layers"] is layers
    assert type(document["bottom_level"]) is type(document["phreatic_level"]) is int


def test_a_phreatic_level_that_is_not_set_is_written_as_none() -> None:
    assert make(-1.0, [(1.0, "Loam")])._serialize()["phreatic_level"] is None


def test_each_call_gives_a_new_mapping() -> None:
    geometry = make(-1.0, [(1.0, "Loam")])
    assert geometry._serialize() == geometry._serialize()
    assert geometry._serialize() is not geometry._serialize()


def test_phreatic_level_has_its_type() -> None:
    assert _Geometry1D.__annotations__ == {"phreatic_level": "float | None"}
