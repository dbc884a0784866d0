"""`CalculationModel` and `ConsolidationModel`."""

from enum import Enum

import pytest
from sembra.external.dsettlement import CalculationModel, ConsolidationModel


def test_calculation_models_stand_in_declared_order_with_their_numbers() -> None:
    assert [(member.name, member.value) for member in CalculationModel] == [
        ("NEN_KOPPEJAN", 0),
        ("NEN_BJERRUM", 1),
        ("ISOTACHE", 2),
    ]


def test_consolidation_models_stand_in_declared_order_with_their_numbers() -> None:
    assert [(member.name, member.value) for member in ConsolidationModel] == [
        ("DARCY", 0),
        ("TERZAGHI", 1),
    ]


@pytest.mark.parametrize("enumeration", [CalculationModel, ConsolidationModel])
def test_members_are_no_integers(enumeration: type[Enum]) -> None:
    assert enumeration.__bases__ == (Enum,)
    for member in enumeration:
        assert type(member.value) is int
        number: object = member.value
        assert member != number
        assert not isinstance(member, int)


@pytest.mark.parametrize("enumeration", [CalculationModel, ConsolidationModel])
def test_every_member_counts_as_true(enumeration: type[Enum]) -> None:
    assert all(enumeration)


@pytest.mark.parametrize("enumeration", [CalculationModel, ConsolidationModel])
def test_members_are_found_by_number_and_by_name(enumeration: type[Enum]) -> None:
    for member in enumeration:
        assert enumeration(member.value) is member
        assert enumeration[member.name] is member


def test_an_unknown_number_is_refused_with_the_text_of_every_enumeration() -> None:
    with pytest.raises(ValueError, match=r"^7 is not a valid CalculationModel$"):
        CalculationModel(7)


def test_members_read_well() -> None:
    assert str(CalculationModel.ISOTACHE) == "CalculationModel.ISOTACHE"
    assert repr(ConsolidationModel.DARCY) == "<ConsolidationModel.DARCY: 0>"
