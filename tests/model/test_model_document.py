"""The first part of the document: `_Model._serialize` and its helpers."""

from collections.abc import Callable
from types import SimpleNamespace
from typing import Any

import pytest
from sembra.external.dsettlement import CalculationModel, ConsolidationModel, _Model, _Vertical

Factory = Callable[..., Any]

KEYS = [
    "calculation_model",
    "consolidation_model",
    "strain_type",
    "maintain_profile",
    "profile_time",
    "profile_unit_weight_above_phreatic_level",
    "profile_unit_weight_below_phreatic_level",
    "end_of_settlement_calculation",
    "verticals_discretization",
    "verticals_z_coordinate",
    "stress_distribution_loads",
    "has_vertical_drains",
    "soils",
    "verticals",
    "non_uniform_loads",
    "other_loads",
    "residual_times",
    "vertical_drain",
]


class Serialisable:
    """A thing with a `_serialize` that gives back itself and what it was called with."""

    def _serialize(self, *arguments: Any) -> tuple[Any, ...]:
        return self, *arguments


def test_the_frame_writes_eighteen_keys_in_order(new_frame: Factory) -> None:
    assert list(new_frame()._serialize()) == KEYS


def test_the_defaults_reach_the_document(new_frame: Factory) -> None:
    assert new_frame()._serialize() == {
        "calculation_model": 0,
        "consolidation_model": 1,
        "strain_type": "Linear",
        "maintain_profile": False,
        "profile_time": 0,
        "profile_unit_weight_above_phreatic_level": 10.0,
        "profile_unit_weight_below_phreatic_level": 10.0,
        "end_of_settlement_calculation": 10000,
        "verticals_discretization": 100,
        "verticals_z_coordinate": 0.0,
        "stress_distribution_loads": False,
        "has_vertical_drains": False,
        "soils": [],
        "verticals": [],
        "non_uniform_loads": [],
        "other_loads": [],
        "residual_times": [],
        "vertical_drain": _Model._DEFAULT_VERTICAL_DRAIN._serialize(),
    }


def test_each_call_gives_a_new_mapping_and_leaves_the_model_as_it_was(new_frame: Factory) -> None:
    model = new_frame(create_default_materials=True)
    before = dict(vars(model))
    first, second = model._serialize(), model._serialize()
    assert type(first) is dict
    assert first is not second
    assert first == second
    assert vars(model) == before


@pytest.mark.parametrize("member", CalculationModel)
def test_the_calculation_model_travels_as_a_bare_integer(
    member: CalculationModel, new_frame: Factory
) -> None:
    value = new_frame(calculation_model=member)._serialize()["calculation_model"]
    assert type(value) is int
    assert value == member.value


@pytest.mark.parametrize("member", ConsolidationModel)
def test_the_consolidation_model_travels_as_a_bare_integer(
    member: ConsolidationModel, new_frame: Factory
) -> None:
    value = new_frame(consolidation_model=member)._serialize()["consolidation_model"]
    assert type(value) is int
    assert value == member.value


@pytest.mark.parametrize(
    ("calculation_model", "natural_strain", "strain_type"),
    [
        (CalculationModel.NEN_BJERRUM, True, "Linear"),
        (CalculationModel.NEN_BJERRUM, False, "Linear"),
        (CalculationModel.ISOTACHE, True, "Natural"),
        (CalculationModel.ISOTACHE, False, "Natural"),
        (CalculationModel.NEN_KOPPEJAN, True, "Natural"),
        (CalculationModel.NEN_KOPPEJAN, False, "Linear"),
        (CalculationModel.NEN_KOPPEJAN, "yes", "Natural"),
        (CalculationModel.NEN_KOPPEJAN, [], "Linear"),
    ],
)
def test_the_strain_type_is_always_linear_for_bjerrum_and_always_natural_for_isotache(
    calculation_model: CalculationModel, natural_strain: Any, strain_type: str, new_frame: Factory
) -> None:
    model = new_frame(calculation_model=calculation_model, natural_strain=natural_strain)
    assert model._serialize()["strain_type"] == strain_type


@pytest.mark.parametrize(
    "option",
    [
        "maintain_profile",
        "profile_unit_weight_above_phreatic_level",
        "profile_unit_weight_below_phreatic_level",
        "verticals_z_coordinate",
        "stress_distribution_loads",
    ],
)
def test_unchecked_options_go_as_stored(option: str, new_frame: Factory) -> None:
    value = object()
    assert new_frame(**{option: value})._serialize()[option] is value


def test_checked_options_go_unconverted(new_frame: Factory) -> None:
    document = new_frame(
        profile_time=0.5, end_of_settlement_calculation=1e3, verticals_discretization=5.5
    )._serialize()
    assert document["profile_time"] == 0.5
    assert type(document["end_of_settlement_calculation"]) is float
    assert document["verticals_discretization"] == 5.5


@pytest.mark.parametrize(
    "option",
    [
        "reliability_analysis",
        "fit_for_settlement_plate",
        "horizontal_displacements",
        "limits",
        "water_unit_weight",
        "natural_strain",
    ],
)
def test_options_that_are_only_stored_do_not_reach_the_document(
    option: str, new_frame: Factory
) -> None:
    value = object()
    document = new_frame(**{option: value})._serialize()
    assert list(document) == KEYS
    assert all(entry is not value for entry in document.values())


@pytest.mark.parametrize(
    ("value", "message"),
    [
        (1, "'int' object has no attribute 'value'"),
        ("TERZAGHI", "'str' object has no attribute 'value'"),
        (None, "'NoneType' object has no attribute 'value'"),
    ],
)
def test_an_unknown_consolidation_model_fails_when_its_number_is_read(
    value: Any, message: str, new_frame: Factory
) -> None:
    model = new_frame(consolidation_model=value)
    with pytest.raises(AttributeError) as refused:
        model._serialize()
    assert str(refused.value) == message


def test_anything_with_a_value_serves_as_consolidation_model(new_frame: Factory) -> None:
    model = new_frame(consolidation_model=SimpleNamespace(value=7))
    assert model._serialize()["consolidation_model"] == 7


def test_a_model_without_verticals_serialises_an_empty_list(new_frame: Factory) -> None:
    assert new_frame()._serialize()["verticals"] == []


def test_verticals_go_in_list_order(new_frame: Factory) -> None:
    model = new_frame()
    model._verticals += [_Vertical(3), _Vertical(1.0), _Vertical(2.0)]
    assert model._serialize_verticals() == [{"x": 3}, {"x": 1.0}, {"x": 2.0}]
    assert model._serialize()["verticals"] == model._serialize_verticals()
    assert model._serialize_verticals() is not model._serialize_verticals()


def test_every_vertical_writes_itself(new_frame: Factory) -> None:
    model, vertical = new_frame(), Serialisable()
    model._verticals.append(vertical)
    assert model._serialize_verticals() == [(vertical,)]


def test_non_uniform_loads_write_themselves_under_their_names_in_order_of_insertion(
    new_frame: Factory,
) -> None:
    model = new_frame()
    loads = {name: Serialisable() for name in ("c", "a", "b")}
    model._non_uniform_loads.update(loads)
    expected = [(load, name) for name, load in loads.items()]
    assert model._serialize_non_uniform_loads() == expected
    assert model._serialize()["non_uniform_loads"] == expected


def test_the_drain_writes_itself(new_frame: Factory) -> None:
    drain = Serialisable()
    assert new_frame(vertical_drain=drain)._serialize()["vertical_drain"] == (drain,)


def test_the_calculation_times_go_as_the_very_list(new_frame: Factory) -> None:
    model = new_frame()
    model.set_calculation_times(3, 1)
    assert model._serialize()["residual_times"] is model._calculation_times
