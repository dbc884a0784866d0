"""`create_uniform_load`, `_add_other_load` and the other loads in the document."""

from collections.abc import Callable
from typing import Any

import pytest
from sembra.errors import ModelError
from sembra.external.dsettlement import _OtherLoad, _UniformLoad

Factory = Callable[..., Any]


class Strip(_OtherLoad):
    """Another kind of load."""

    def _serialize(self, name: str) -> dict[str, Any]:
        return {"strip": name}


def test_a_model_without_loads_serialises_an_empty_list(new_model_1d: Factory) -> None:
    assert new_model_1d()._serialize()["other_loads"] == []


def test_a_load_stands_in_the_table_and_in_the_document(new_model_1d: Factory) -> None:
    model = new_model_1d()
    assert model.create_uniform_load("my_load", 0, 0.001, 0.0, 0.0) is None
    assert type(model._other_loads["my_load"]) is _UniformLoad
    assert model._serialize()["other_loads"] == [
        {
            "name": "my_load",
            "type": 3,
            "time": 0,
            "unit_weight": 0.001,
            "height": 0.0,
            "y_application": 0.0,
        }
    ]


def test_the_name_lives_in_the_table_only(new_model_1d: Factory) -> None:
    model = new_model_1d()
    model.create_uniform_load("a", 0, 1.0, 1.0, 0.0)
    assert "a" not in vars(model._other_loads["a"]).values()


def test_a_second_load_of_the_same_name_is_refused_and_the_first_stays(
    new_model_1d: Factory,
) -> None:
    model = new_model_1d()
    model.create_uniform_load("my_load", 0, 1.0, 1.0, 0.0)
    first = model._other_loads["my_load"]
    with pytest.raises(ModelError) as refused:
        model.create_uniform_load("my_load", 5, 2.0, 2.0, 1.0)
    assert str(refused.value) == "Load with name 'my_load' already exists"
    assert model._other_loads == {"my_load": first}


def test_time_minus_one_marks_an_initial_load(new_model_1d: Factory) -> None:
    model = new_model_1d()
    model.create_uniform_load("initial", -1, 1.0, 1.0, 0.0)
    assert model._serialize()["other_loads"][0]["time"] == -1


def test_values_are_not_checked(new_model_1d: Factory) -> None:
    model = new_model_1d(end_of_settlement_calculation=10)
    model.create_uniform_load("late", 1000, -18.0, -1.0, "top")
    entry = model._serialize()["other_loads"][0]
    assert list(entry.values())[2:] == [1000, -18.0, -1.0, "top"]


@pytest.mark.parametrize("name", ["", "x" * 26, "x" * 30, "x" * 1000])
def test_no_limit_applies_to_the_length_of_a_name(name: str, new_model_1d: Factory) -> None:
    model = new_model_1d()
    model.create_uniform_load(name, 0, 1.0, 1.0, 0.0)
    assert model._serialize()["other_loads"][0]["name"] == name


def test_loads_keep_the_order_of_their_creation(new_model_1d: Factory) -> None:
    model = new_model_1d()
    for name in ("c", "a", "b"):
        model.create_uniform_load(name, 0, 1.0, 1.0, 0.0)
    assert [entry["name"] for entry in model._serialize_other_loads()] == ["c", "a", "b"]
    assert [entry["name"] for entry in model._serialize()["other_loads"]] == ["c", "a", "b"]


def test_a_non_uniform_load_may_have_the_same_name(new_model_1d: Factory) -> None:
    model = new_model_1d()
    model._non_uniform_loads["a"] = Strip()
    model.create_uniform_load("a", 0, 1.0, 1.0, 0.0)
    assert list(model._other_loads) == ["a"]


def test_further_kinds_of_load_go_through_the_same_door(new_model_1d: Factory) -> None:
    model, strip = new_model_1d(), Strip()
    assert model._add_other_load("strip", strip) is None
    assert model._other_loads["strip"] is strip
    assert model._serialize_other_loads() == [{"strip": "strip"}]
    with pytest.raises(ModelError, match=r"^Load with name 'strip' already exists$"):
        model._add_other_load(name="strip", load=strip)


def test_a_name_that_does_not_hash_is_pythons_type_error(new_model_1d: Factory) -> None:
    with pytest.raises(TypeError, match=r"^unhashable type: 'list'$"):
        new_model_1d().create_uniform_load([], 0, 1.0, 1.0, 0.0)


def test_loads_take_no_part_in_the_check_of_the_model(new_model_1d: Factory) -> None:
    model = new_model_1d()
    model.create_uniform_load("a", -100, "x", None, 1e9)
    assert model._validate() is None
