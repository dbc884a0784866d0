"""The checks of `VerticalDrain` on its schedule."""

from collections.abc import Callable
from typing import Any
from unittest import mock

import pytest
from sembra.errors import ModelError
from sembra.external.dsettlement import DrainageSimpleMode, DrainType

Factory = Callable[..., Any]

SIMPLE_FIELDS = ["begin_time", "end_time", "underpressure", "dewatering_head_or_pressure"]
LIMITS = [
    (DrainType.STRIP, -100000, 100000, "water head"),
    (DrainType.COLUMN, -100000, 100000, "water head"),
    (DrainType.SAND_WALL, -10000, 10000, "tube pressure"),
]
FIRST = "First entry (time) of all entries in 'schedule' must be between 0 and 100000"
SECOND = "Second entry (underpressure) of all entries in 'schedule' must be between 0 and 100000"
NAN = float("nan")


def simple(**fields: Any) -> DrainageSimpleMode:
    """A simple schedule that passes, but for the given fields."""
    return DrainageSimpleMode(**(dict.fromkeys(SIMPLE_FIELDS, 1.0) | fields))


@pytest.fixture
def new_drain(new_strip_drain: Factory) -> Factory:
    """Make a drain with the given schedule."""

    def make(schedule: Any, drain_type: DrainType = DrainType.STRIP, **parameters: Any) -> Any:
        return new_strip_drain(
            drain_type=drain_type, schedule=schedule, **({"position_drain": 0.0} | parameters)
        )

    return make


@pytest.fixture
def refusal(new_drain: Factory) -> Factory:
    """Get the text with which a drain with the given schedule is refused."""

    def text(*arguments: Any, **parameters: Any) -> str:
        with pytest.raises(ModelError) as refused:
            new_drain(*arguments, **parameters)
        return str(refused.value)

    return text


@pytest.mark.parametrize("field", SIMPLE_FIELDS[:3])
@pytest.mark.parametrize("value", [-1, -0.001, 100000.001, 100001, NAN])
def test_times_and_underpressure_of_a_simple_schedule_have_a_range(
    field: str, value: Any, refusal: Factory
) -> None:
    message = f"'schedule.{field}' must be between 0 and 100000 ({value})"
    assert refusal(simple(**{field: value})) == message


@pytest.mark.parametrize("field", SIMPLE_FIELDS[:3])
@pytest.mark.parametrize("value", [0, 100000])
def test_the_bounds_of_a_simple_schedule_are_included(
    field: str, value: int, new_drain: Factory
) -> None:
    schedule = simple(**{field: value})
    assert new_drain(schedule)._schedule is schedule


@pytest.mark.parametrize(("drain_type", "lower", "upper", "_"), LIMITS)
def test_the_dewatering_value_has_the_range_of_the_type(
    drain_type: DrainType, lower: int, upper: int, _: str, new_drain: Factory, refusal: Factory
) -> None:
    for value in (lower, upper):
        assert new_drain(simple(dewatering_head_or_pressure=value), drain_type)
    for outside in (lower - 1, upper + 0.5, NAN):
        assert refusal(simple(dewatering_head_or_pressure=outside), drain_type) == (
            "'schedule.dewatering_head_or_pressure' must be "
            f"between {lower} and {upper} ({outside})"
        )


def test_the_fields_of_a_simple_schedule_are_tested_in_order(refusal: Factory) -> None:
    schedule = simple(**dict.fromkeys(SIMPLE_FIELDS, -1e6))
    for field in SIMPLE_FIELDS:
        assert refusal(schedule, center_to_center=0.0).startswith(f"'schedule.{field}' must be")
        setattr(schedule, field, 0.0)
    assert refusal(schedule, center_to_center=0.0).startswith("'center_to_center'")


def test_the_start_of_drainage_is_tested_before_a_simple_schedule(refusal: Factory) -> None:
    schedule = simple(begin_time=-1.0)
    assert refusal(schedule, start_of_drainage=-1.0).startswith("'start_of_drainage' must be")


def test_a_simple_schedule_may_end_before_it_begins(new_drain: Factory) -> None:
    assert new_drain(simple(begin_time=10.0, end_time=5.0))


def test_whatever_passes_for_a_simple_schedule_is_tested_as_one(refusal: Factory) -> None:
    class Pumping(DrainageSimpleMode):
        pass

    stand_in = mock.Mock(spec=DrainageSimpleMode, begin_time=-7)
    for schedule in (Pumping(-7, 1.0, 1.0, 1.0), stand_in):
        message = "'schedule.begin_time' must be between 0 and 100000 (-7)"
        assert refusal(schedule) == message


@pytest.mark.parametrize("time", [-1, 100001, -0.5, NAN])
def test_every_time_of_a_detailed_schedule_must_lie_in_range(time: Any, refusal: Factory) -> None:
    assert refusal([(0.0, 0.0, 0.0), (time, 0.0, 0.0)]) == FIRST


@pytest.mark.parametrize("underpressure", [-1, 100001, -0.5, NAN])
def test_every_underpressure_of_a_detailed_schedule_must_lie_in_range(
    underpressure: Any, refusal: Factory
) -> None:
    assert refusal([(0.0, 0.0, 0.0), (1.0, underpressure, 0.0)]) == SECOND


@pytest.mark.parametrize(("drain_type", "lower", "upper", "name"), LIMITS)
def test_every_third_value_of_a_detailed_schedule_has_the_range_of_the_type(
    drain_type: DrainType, lower: int, upper: int, name: str, new_drain: Factory, refusal: Factory
) -> None:
    assert new_drain([(0, 0, lower), (100000, 100000, upper)], drain_type)
    for value in (lower - 1, upper + 0.5, NAN):
        assert refusal([(0.0, 0.0, 0.0), (1.0, 1.0, value)], drain_type) == (
            f"Third entry ({name}) of all entries in 'schedule' must be between {lower} and {upper}"
        )


def test_a_third_value_of_minus_50000_is_a_water_head_but_no_tube_pressure(
    new_drain: Factory, refusal: Factory
) -> None:
    schedule = [(0.0, 0.0, 0.0), (1.0, 1.0, -50000)]
    assert new_drain(schedule, DrainType.STRIP)
    assert refusal(schedule, DrainType.SAND_WALL) == (
        "Third entry (tube pressure) of all entries in 'schedule' must be between -10000 and 10000"
    )


def test_a_detailed_schedule_is_tested_in_three_passes(refusal: Factory) -> None:
    schedule: list[tuple[float, ...]] = [(0.0, 0.0, 1e9), (0.0, -1.0, 0.0), (-1.0, 0.0, 0.0)]
    assert refusal(schedule) == FIRST
    schedule[2] = (0.0, 0.0, 0.0)
    assert refusal(schedule) == SECOND
    schedule[1] = (0.0, 0.0, 0.0)
    assert refusal(schedule, center_to_center=0.0).startswith("Third entry (water head)")
    schedule[0] = (0.0, 0.0, 0.0)
    assert refusal(schedule, center_to_center=0.0).startswith("'center_to_center' must be")


def test_an_entry_is_read_only_as_far_as_the_passes_come(refusal: Factory) -> None:
    assert refusal([(0.0,), (-1.0,)]) == FIRST
    assert refusal([(-1.0,), ()]) == FIRST
    assert refusal([(0.0, -1.0), (0.0, 0.0)]) == SECOND


@pytest.mark.parametrize("entry", [(), (0.0,), (0.0, 0.0)])
def test_an_entry_that_is_too_short_is_pythons_index_error(entry: Any, new_drain: Factory) -> None:
    with pytest.raises(IndexError, match=r"^tuple index out of range$"):
        new_drain([entry])


def test_an_entry_may_be_longer_and_of_any_kind_that_is_indexed(new_drain: Factory) -> None:
    schedule = [[0.0, 1.0, 2.0, "note"], {0: 1.0, 1: 2.0, 2: 3.0}]
    assert new_drain(schedule)._serialize()["detailed_schedule"] is schedule


def test_an_entry_that_does_not_compare_is_pythons_type_error(new_drain: Factory) -> None:
    with pytest.raises(
        TypeError, match=r"^'<=' not supported between instances of 'int' and 'NoneType'$"
    ):
        new_drain([(None, 0.0, 0.0)])


def test_the_times_of_a_detailed_schedule_need_not_ascend(new_drain: Factory) -> None:
    assert new_drain([(5.0, 0.0, 0.0), (1.0, 0.0, 0.0), (1.0, 0.0, 0.0)])


@pytest.mark.parametrize("schedule", [[], [(0.0, 0.0, 0.0)]])
@pytest.mark.parametrize("start", [None, -1.0, 1e9, "late"])
@pytest.mark.parametrize("level", [None, "low"])
def test_with_a_detailed_schedule_start_and_level_are_not_tested(
    schedule: list[Any], start: Any, level: Any, new_drain: Factory
) -> None:
    drain = new_drain(schedule, start_of_drainage=start, phreatic_level_in_drain=level)
    assert drain._start_of_drainage is start
    assert drain._phreatic_level_in_drain is level


def test_a_list_of_a_class_of_its_own_is_a_detailed_schedule(
    new_drain: Factory, refusal: Factory
) -> None:
    class Steps(list[Any]):
        pass

    assert refusal(Steps([(-1.0, 0.0, 0.0)])) == FIRST
    assert new_drain(Steps(), start_of_drainage=None)


def test_a_tuple_of_triples_is_no_schedule_to_the_tests(new_drain: Factory) -> None:
    assert new_drain(((-1.0, -1.0, 1e9),), DrainType.STRIP)
