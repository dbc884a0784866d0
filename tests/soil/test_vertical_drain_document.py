"""What `VerticalDrain` writes."""

from collections.abc import Callable
from typing import Any

import pytest
from sembra.external.dsettlement import (
    DrainageSimpleMode,
    DrainGrid,
    DrainType,
    VerticalDrain,
    _Model,
)

Factory = Callable[..., Any]

PLACEHOLDER = [(0.0, 40.0, 0.0)]


def test_the_default_drain_writes_seventeen_keys_in_order() -> None:
    document = _Model._DEFAULT_VERTICAL_DRAIN._serialize()
    assert type(document) is dict
    assert list(document.items()) == [
        ("type", 0),
        ("range_from", 0.0),
        ("range_to", 100.0),
        ("bottom_position", 0.0),
        ("center_to_center", 1.0),
        ("width_diameter", 0.1),
        ("thickness", 0.003),
        ("position_drain", 0.0),
        ("grid", 0),
        ("schedule_type", 0),
        ("start_of_drainage", 0.0),
        ("phreatic_level", 0.0),
        ("begin_time", 0.0),
        ("end_time", 0.0),
        ("underpressure", 0.0),
        ("dewatering_head_or_pressure", 0.0),
        ("detailed_schedule", PLACEHOLDER),
    ]
    assert type(document["detailed_schedule"]) is list
    assert type(document["detailed_schedule"][0]) is tuple


def test_a_sand_wall_with_nothing_more_than_it_needs_writes_the_fallback_values() -> None:
    document = VerticalDrain(
        *(DrainType.SAND_WALL, 5.0, 90.0, 0.0, 2.0, 4.0),
        start_of_drainage=2.0,
        phreatic_level_in_drain=4.0,
    )._serialize()
    assert document == {
        "type": 2,
        "range_from": 5.0,
        "range_to": 90.0,
        "bottom_position": 0.0,
        "center_to_center": 2.0,
        "width_diameter": 4.0,
        "thickness": 0.001,
        "position_drain": 0.0,
        "grid": 0,
        "schedule_type": 0,
        "start_of_drainage": 2.0,
        "phreatic_level": 4.0,
        "begin_time": 0.0,
        "end_time": 0.0,
        "underpressure": 0.0,
        "dewatering_head_or_pressure": 0.0,
        "detailed_schedule": PLACEHOLDER,
    }
    assert type(document["grid"]) is int
    assert type(document["position_drain"]) is float


def test_a_simple_schedule_writes_its_four_values_unconverted(new_strip_drain: Factory) -> None:
    schedule = DrainageSimpleMode(1, 2.5, 3, -4)
    document = new_strip_drain(schedule=schedule)._serialize()
    assert document["schedule_type"] == 1
    assert list(document.items())[12:] == [
        ("begin_time", 1),
        ("end_time", 2.5),
        ("underpressure", 3),
        ("dewatering_head_or_pressure", -4),
        ("detailed_schedule", PLACEHOLDER),
    ]
    assert type(document["begin_time"]) is int


def test_a_simple_schedule_is_read_when_the_drain_is_written(new_strip_drain: Factory) -> None:
    schedule = DrainageSimpleMode(1.0, 2.0, 3.0, 4.0)
    drain = new_strip_drain(schedule=schedule)
    schedule.end_time = 9.0
    assert drain._serialize()["end_time"] == 9.0


def test_a_detailed_schedule_goes_as_the_very_list(new_strip_drain: Factory) -> None:
    schedule = [(0, 35.0, 1), (10.0, 0, -2.0)]
    document = new_strip_drain(schedule=schedule)._serialize()
    assert document["schedule_type"] == 2
    assert document["detailed_schedule"] is schedule
    assert [document[key] for key in ("begin_time", "end_time", "underpressure")] == [0.0] * 3
    assert document["dewatering_head_or_pressure"] == 0.0


def test_an_empty_list_stays_an_empty_list(new_strip_drain: Factory) -> None:
    document = new_strip_drain(
        schedule=[], start_of_drainage=None, phreatic_level_in_drain=None
    )._serialize()
    assert document["schedule_type"] == 2
    assert document["detailed_schedule"] == []
    assert document["start_of_drainage"] == 0.0
    assert document["phreatic_level"] == 0.0


@pytest.mark.parametrize("schedule", [((0.0, 1.0, 2.0),), (), "schedule", 0])
def test_a_schedule_of_another_kind_is_type_2_with_the_placeholder(
    schedule: Any, new_strip_drain: Factory
) -> None:
    document = new_strip_drain(schedule=schedule)._serialize()
    assert document["schedule_type"] == 2
    assert document["detailed_schedule"] == PLACEHOLDER


def test_a_value_that_is_set_is_never_replaced_even_if_it_is_out_of_range(
    new_strip_drain: Factory,
) -> None:
    document = new_strip_drain(
        schedule=[], start_of_drainage=-5.0, phreatic_level_in_drain=0
    )._serialize()
    assert document["start_of_drainage"] == -5.0
    assert type(document["phreatic_level"]) is int


def test_fallback_values_stand_for_none_only_and_not_for_zero(new_strip_drain: Factory) -> None:
    document = new_strip_drain(
        drain_type=DrainType.COLUMN,
        thickness=0,
        position_drain=0,
        start_of_drainage=0,
        phreatic_level_in_drain=0,
    )._serialize()
    for key in ("thickness", "position_drain", "start_of_drainage", "phreatic_level"):
        assert document[key] == 0
        assert type(document[key]) is int


@pytest.mark.parametrize("drain_type", DrainType)
@pytest.mark.parametrize("grid", DrainGrid)
def test_type_and_grid_travel_as_bare_integers(
    drain_type: DrainType, grid: DrainGrid, new_strip_drain: Factory
) -> None:
    document = new_strip_drain(drain_type=drain_type, grid=grid)._serialize()
    assert (document["type"], document["grid"]) == (drain_type.value, grid.value)
    assert type(document["type"]) is type(document["grid"]) is int


def test_values_go_unconverted(new_strip_drain: Factory) -> None:
    given = {"range_from": 5, "range_to": None, "bottom_position": "deep", "center_to_center": 2}
    document = new_strip_drain(**given)._serialize()
    assert {key: document[key] for key in given} == given
    assert type(document["center_to_center"]) is int


def test_each_call_gives_a_new_mapping_with_a_placeholder_of_its_own(
    new_strip_drain: Factory,
) -> None:
    drain = new_strip_drain()
    first = drain._serialize()
    first["detailed_schedule"].append((1.0, 1.0, 1.0))
    first["type"] = 2
    assert drain._serialize()["detailed_schedule"] == PLACEHOLDER
    assert drain._serialize()["type"] == 0


def test_a_grid_without_a_value_fails_when_the_drain_is_written(new_strip_drain: Factory) -> None:
    with pytest.raises(AttributeError, match=r"^'str' object has no attribute 'value'$"):
        new_strip_drain(grid="triangular")._serialize()
