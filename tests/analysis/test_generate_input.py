"""`_generate_input`: the whole document."""

from collections.abc import Callable
from types import SimpleNamespace
from typing import Any

import pytest
from sembra.errors import ModelError
from sembra.external.dsettlement import Metadata, Model1D, _Vertical

Factory = Callable[..., Any]

METADATA_KEYS = [
    *["date", "time", "file_name", "company", "created_by"],
    *["title_1", "title_2", "title_3"],
]


def test_the_keys_stand_in_order(build_story: Factory) -> None:
    model = build_story()
    document = model._generate_input()
    assert type(document) is dict
    assert list(document) == [*model._serialize(), *METADATA_KEYS, "dissipation_calculation"]
    assert len(document) == 18 + 2 + 8 + 1


def test_the_document_holds_what_model_and_metadata_write(build_story: Factory) -> None:
    model, metadata = build_story(), Metadata("column", "company", title_3="third")
    assert model._generate_input(metadata) == {
        **model._serialize(),
        **metadata._serialize(),
        "dissipation_calculation": None,
    }


def test_without_metadata_the_defaults_are_written(new_model_1d: Factory) -> None:
    document = new_model_1d()._generate_input()
    assert {key: document[key] for key in METADATA_KEYS} == Metadata()._serialize()


def test_metadata_that_counts_as_false_is_replaced(new_model_1d: Factory) -> None:
    class Nothing(Metadata):
        def __bool__(self) -> bool:
            return False

    model = new_model_1d()
    assert model._generate_input(Nothing("name"))["file_name"] == "-"
    assert model._generate_input(None)["file_name"] == "-"
    assert model._generate_input(Metadata("name"))["file_name"] == "name"


def test_anything_that_serialises_itself_serves_as_metadata(new_model_1d: Factory) -> None:
    metadata = SimpleNamespace(_serialize=lambda: {"file_name": "duck"})
    document = new_model_1d()._generate_input(metadata)
    assert list(document)[-2:] == ["file_name", "dissipation_calculation"]


def test_both_arguments_may_be_given_by_position_or_by_keyword(new_model_1d: Factory) -> None:
    model, vertical = new_model_1d(), _Vertical(3)
    by_position = model._generate_input(Metadata("a"), vertical)
    by_keyword = model._generate_input(dissipation_calculation=vertical, metadata=Metadata("a"))
    assert by_position == by_keyword
    assert by_position["dissipation_calculation"] == 3


def test_the_dissipation_is_calculated_at_a_position_and_not_at_an_object(
    new_model_1d: Factory,
) -> None:
    document = new_model_1d()._generate_input(None, _Vertical(50.0))
    assert document["dissipation_calculation"] == 50.0
    assert type(document["dissipation_calculation"]) is float


def test_the_position_goes_unconverted_even_at_zero(new_model_1d: Factory) -> None:
    value = new_model_1d()._generate_input(None, _Vertical(0))["dissipation_calculation"]
    assert value == 0
    assert type(value) is int


def test_nobody_looks_whether_the_vertical_belongs_to_the_model(new_model_1d: Factory) -> None:
    model = new_model_1d()
    assert (
        model._generate_input(None, SimpleNamespace(x="here"))["dissipation_calculation"] == "here"
    )
    nothings: list[Any] = [None, 0, "", []]
    for nothing in nothings:
        assert model._generate_input(None, nothing)["dissipation_calculation"] is None
    with pytest.raises(AttributeError, match=r"^'float' object has no attribute 'x'$"):
        model._generate_input(None, 50.0)


def test_checking_comes_first_then_the_model_then_the_metadata(new_model_1d: Factory) -> None:
    steps: list[str] = []

    class Model(Model1D):
        def _validate(self) -> None:
            steps.append("validate")

        def _serialize(self) -> dict[str, Any]:
            steps.append("model")
            return {}

    class Note(Metadata):
        def __bool__(self) -> bool:
            steps.append("truth")
            return True

        def _serialize(self) -> dict[str, str]:
            steps.append("metadata")
            return {}

    assert new_model_1d(Model)._generate_input(Note()) == {"dissipation_calculation": None}
    assert steps == ["validate", "truth", "model", "metadata"]


def test_the_later_source_wins_in_the_place_of_the_earlier(new_model_1d: Factory) -> None:
    class Note(Metadata):
        def _serialize(self) -> dict[str, Any]:
            return {"model_type": 9, "dissipation_calculation": 8, "soils": None}

    model = new_model_1d()
    document = model._generate_input(Note(), _Vertical(1.0))
    assert list(document) == [*model._serialize(), "dissipation_calculation"]
    assert (document["model_type"], document["soils"]) == (9, None)
    assert document["dissipation_calculation"] == 1.0


def test_the_mapping_of_the_model_is_copied_and_its_values_are_not(new_model_1d: Factory) -> None:
    own: dict[str, Any] = {"soils": []}

    class Model(Model1D):
        def _serialize(self) -> dict[str, Any]:
            return own

    document = new_model_1d(Model)._generate_input()
    assert list(own) == ["soils"]
    assert document["soils"] is own["soils"]


def test_the_same_model_gives_the_same_document_again(build_story: Factory) -> None:
    model = build_story()
    before = dict(vars(model))
    assert model._generate_input() == model._generate_input()
    assert vars(model) == before


def test_a_model_that_does_not_pass_its_check_is_not_serialised(new_model_1d: Factory) -> None:
    class Model(Model1D):
        def _validate(self) -> None:
            raise ModelError("not finished")

        def _serialize(self) -> dict[str, Any]:
            raise AssertionError("serialised")

    with pytest.raises(ModelError, match=r"^not finished$"):
        new_model_1d(Model)._generate_input()
