"""`DrainageSimpleMode`."""

from typing import Any

from sembra.external.dsettlement import DrainageSimpleMode

FIELDS = ["begin_time", "end_time", "underpressure", "dewatering_head_or_pressure"]


def test_fields_are_public_and_stored_in_order_as_given() -> None:
    values: list[Any] = [object() for _ in FIELDS]
    mode = DrainageSimpleMode(*values)
    assert list(vars(mode)) == FIELDS
    assert all(getattr(mode, name) is value for name, value in zip(FIELDS, values, strict=True))


def test_fields_may_be_given_by_keyword() -> None:
    mode = DrainageSimpleMode(
        dewatering_head_or_pressure=4.0, underpressure=3.0, end_time=2, begin_time=1.0
    )
    assert list(vars(mode).values()) == [1.0, 2, 3.0, 4.0]
    assert type(mode.end_time) is int


def test_nothing_is_checked() -> None:
    mode = DrainageSimpleMode(5.0, -5.0, -1e9, float("inf"))
    assert (mode.begin_time, mode.end_time) == (5.0, -5.0)


def test_fields_can_be_changed() -> None:
    mode = DrainageSimpleMode(1.0, 2.0, 3.0, 4.0)
    mode.end_time = 7.0
    assert mode.end_time == 7.0


def test_it_is_a_plain_record() -> None:
    assert DrainageSimpleMode.__eq__ is object.__eq__
    assert DrainageSimpleMode.__doc__ is not None
    assert "Simple drainage schema; to be used in VerticalDrain" in DrainageSimpleMode.__doc__
