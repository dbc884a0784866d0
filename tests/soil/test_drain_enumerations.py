"""`DrainType` and `DrainGrid`."""

from enum import Enum

import pytest
from sembra.external.dsettlement import DrainGrid, DrainType


def test_drain_types_stand_in_declared_order_with_their_numbers() -> None:
    assert [(member.name, member.value) for member in DrainType] == [
        ("STRIP", 0),
        ("COLUMN", 1),
        ("SAND_WALL", 2),
    ]


def test_drain_grids_stand_in_declared_order_with_their_numbers() -> None:
    assert [(member.name, member.value) for member in DrainGrid] == [
        ("TRIANGULAR", 0),
        ("RECTANGULAR", 1),
        ("UNDETERMINED", 2),
    ]


@pytest.mark.parametrize("enumeration", [DrainType, DrainGrid])
def test_a_member_compares_equal_only_to_itself(enumeration: type[Enum]) -> None:
    assert enumeration.__bases__ == (Enum,)
    for member in enumeration:
        assert member == member
        assert member != member.value
        assert type(member.value) is int
        assert [other for other in enumeration if other == member] == [member]


@pytest.mark.parametrize("enumeration", [DrainType, DrainGrid])
def test_every_member_counts_as_true_whatever_its_value(enumeration: type[Enum]) -> None:
    assert all(enumeration)


def test_members_of_different_enumerations_differ_though_their_numbers_are_the_same() -> None:
    strip: object = DrainType.STRIP
    assert strip != DrainGrid.TRIANGULAR
    assert str(strip) == "DrainType.STRIP"
