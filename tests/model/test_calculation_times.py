"""`set_calculation_times`."""

from collections.abc import Callable
from typing import Any

import pytest
from sembra.errors import ModelError

Factory = Callable[..., Any]

UNIQUE = "All times must be unique"
RANGE = "All times must be >= 0 and <= end of settlement calculation ({})"


def test_a_model_without_times_sends_an_empty_list(new_model_1d: Factory, post: Any) -> None:
    new_model_1d().generate_input_file()
    assert post.document["residual_times"] == []


def test_the_order_is_the_callers(new_model_1d: Factory, post: Any) -> None:
    model = new_model_1d()
    assert model.set_calculation_times(1, 4, 2, 5) is None
    model.generate_input_file()
    assert post.document["residual_times"] == [1, 4, 2, 5]


def test_a_call_without_times_empties_the_list(new_model_1d: Factory) -> None:
    model = new_model_1d()
    model.set_calculation_times(1, 2)
    model.set_calculation_times()
    assert model._calculation_times == []


def test_a_second_call_replaces_the_first(new_model_1d: Factory) -> None:
    model = new_model_1d()
    model.set_calculation_times(1, 2)
    first = model._calculation_times
    model.set_calculation_times(7, 8, 9)
    assert model._calculation_times == [7, 8, 9]
    assert first == [1, 2]
    assert type(model._calculation_times) is list


def test_both_bounds_are_included(new_model_1d: Factory) -> None:
    model = new_model_1d(end_of_settlement_calculation=50)
    model.set_calculation_times(0, 50)
    assert model._calculation_times == [0, 50]


@pytest.mark.parametrize("time", [-1, 10001, -0.001, 10000.5, float("nan")])
def test_a_time_before_the_start_or_behind_the_end_is_refused(
    time: Any, new_model_1d: Factory
) -> None:
    model = new_model_1d()
    with pytest.raises(ModelError) as refused:
        model.set_calculation_times(1, time)
    assert str(refused.value) == RANGE.format("10000")


@pytest.mark.parametrize(("end", "text"), [(50, "50"), (50.0, "50.0"), (1e16, "1e+16")])
def test_the_message_names_the_end_in_its_plain_text_form(
    end: Any, text: str, new_model_1d: Factory
) -> None:
    model = new_model_1d(end_of_settlement_calculation=end)
    with pytest.raises(ModelError) as refused:
        model.set_calculation_times(-5)
    assert str(refused.value) == RANGE.format(text)


@pytest.mark.parametrize("times", [(3, 3), (1, 1.0), (0, 2, False), (-3, -3), (20000, 20000)])
def test_equal_times_are_refused_even_if_they_lie_out_of_range(
    times: tuple[Any, ...], new_model_1d: Factory
) -> None:
    with pytest.raises(ModelError) as refused:
        new_model_1d().set_calculation_times(*times)
    assert str(refused.value) == UNIQUE


def test_a_failed_call_leaves_the_earlier_list_in_place(new_model_1d: Factory) -> None:
    model = new_model_1d()
    model.set_calculation_times(1, 2)
    times = model._calculation_times
    for wrong in [(3, 3), (3, -1), (3, "4"), (3, [])]:
        with pytest.raises((ModelError, TypeError)):
            model.set_calculation_times(*wrong)
        assert model._calculation_times is times
        assert times == [1, 2]


def test_times_are_not_converted(new_model_1d: Factory) -> None:
    model = new_model_1d()
    model.set_calculation_times(1, 2.0, True + 2)
    assert [type(time) for time in model._serialize()["residual_times"]] == [int, float, int]


def test_a_time_that_does_not_hash_is_pythons_type_error(new_model_1d: Factory) -> None:
    with pytest.raises(TypeError, match=r"^unhashable type: 'list'$"):
        new_model_1d().set_calculation_times([1, 4, 2, 5])


def test_a_time_that_does_not_compare_is_pythons_type_error(new_model_1d: Factory) -> None:
    with pytest.raises(
        TypeError, match=r"^'<=' not supported between instances of 'int' and 'str'$"
    ):
        new_model_1d().set_calculation_times("1")


def test_the_first_offender_in_the_given_order_stops_the_check(new_model_1d: Factory) -> None:
    with pytest.raises(ModelError, match=r"^All times must be >= 0"):
        new_model_1d().set_calculation_times(-1, "1")
    with pytest.raises(TypeError):
        new_model_1d().set_calculation_times("1", -1)


def test_no_keyword_is_accepted(new_model_1d: Factory) -> None:
    with pytest.raises(TypeError, match=r"got an unexpected keyword argument 'time'$"):
        new_model_1d().set_calculation_times(time=1)
