"""A vertical drain in a model: what the model keeps, and the check when the input is generated."""

from collections.abc import Callable
from types import SimpleNamespace
from typing import Any

import pytest
from sembra.errors import ModelError
from sembra.external.dsettlement import VerticalDrain, _Model

Factory = Callable[..., Any]

NAN = float("nan")


def check(model: Any) -> str:
    """The text with which the model's check refuses its drain."""
    with pytest.raises(ModelError) as refused:
        model._validate()
    assert type(refused.value) is ModelError
    return str(refused.value)


def test_a_model_without_drains_writes_the_default_record(new_model_1d: Factory) -> None:
    document = new_model_1d()._serialize()
    assert document["has_vertical_drains"] is False
    assert document["vertical_drain"] == _Model._DEFAULT_VERTICAL_DRAIN._serialize()


def test_models_without_drains_share_one_record(new_model_1d: Factory) -> None:
    one, other = new_model_1d(), new_model_1d(vertical_drain=None)
    assert one._vertical_drain is other._vertical_drain is _Model._DEFAULT_VERTICAL_DRAIN
    assert one._has_vertical_drains is False


def test_a_drain_of_the_caller_is_kept_and_written(
    new_model_1d: Factory, new_strip_drain: Factory
) -> None:
    drain = new_strip_drain()
    model = new_model_1d(vertical_drain=drain)
    assert model._vertical_drain is drain
    assert model._has_vertical_drains is True
    assert model._serialize()["has_vertical_drains"] is True
    assert model._serialize()["vertical_drain"] == drain._serialize()


def test_a_drain_that_counts_as_false_switches_the_drains_off(
    new_model_1d: Factory, new_strip_drain: Factory
) -> None:
    class Nothing(VerticalDrain):
        def __bool__(self) -> bool:
            return False

    model = new_model_1d(vertical_drain=new_strip_drain(Nothing))
    assert model._has_vertical_drains is False
    assert model._vertical_drain is _Model._DEFAULT_VERTICAL_DRAIN


@pytest.mark.parametrize("limits", [(0.0, 100.0), (100.0, 0.0), (0.0, 1.0), None, ("a", 1)])
def test_without_drains_the_check_passes_whatever_the_limits_are(
    limits: Any, new_frame: Factory
) -> None:
    assert new_frame(limits=limits)._validate() is None


def test_a_fitting_drain_passes(new_model_1d: Factory, new_strip_drain: Factory) -> None:
    assert new_model_1d(vertical_drain=new_strip_drain(position_drain=-3.0))._validate() is None


@pytest.mark.parametrize(
    "levels",
    [
        {"range_from": 0.0, "range_to": 100.0, "bottom_position": -10.0, "position_drain": 0.0},
        {"range_from": 100, "range_to": 0, "bottom_position": 0, "position_drain": -10},
    ],
)
def test_the_bounds_are_included_and_the_range_may_run_backwards(
    levels: dict[str, Any], new_model_1d: Factory, new_strip_drain: Factory
) -> None:
    assert new_model_1d(vertical_drain=new_strip_drain(**levels))._validate() is None


@pytest.mark.parametrize("value", [-0.5, 100.5, NAN, -1, 1e16])
@pytest.mark.parametrize("name", ["range_from", "range_to"])
def test_the_range_must_lie_between_the_limits_of_the_model(
    name: str, value: Any, new_model_1d: Factory, new_strip_drain: Factory
) -> None:
    model = new_model_1d(vertical_drain=new_strip_drain(**{name: value}))
    assert check(model) == (
        f"Vertical drains '{name}' ({value}) must be between model limits (0.0 - 100.0)"
    )


@pytest.mark.parametrize("value", [0.5, -10.5, NAN, -11])
@pytest.mark.parametrize("name", ["bottom_position", "position_drain"])
def test_the_levels_must_lie_between_the_bottom_and_the_top_of_the_model(
    name: str, value: Any, new_model_1d: Factory, new_strip_drain: Factory
) -> None:
    model = new_model_1d(vertical_drain=new_strip_drain(**{name: value}))
    assert check(model) == (
        f"Vertical drains '{name}' ({value}) must be between top and bottom limits (-10.0 - 0.0)"
    )


def test_values_stand_in_the_messages_in_their_plain_text_form(
    new_frame: Factory, new_strip_drain: Factory
) -> None:
    model = new_frame(limits=[0, 50.0], vertical_drain=new_strip_drain(range_to=51))
    assert check(model) == (
        "Vertical drains 'range_to' (51) must be between model limits (0 - 50.0)"
    )


def test_without_a_position_its_check_is_left_out(
    new_model_1d: Factory, new_strip_drain: Factory
) -> None:
    assert new_model_1d(vertical_drain=new_strip_drain(position_drain=None))._validate() is None


def test_the_checks_run_in_order(new_model_1d: Factory, new_strip_drain: Factory) -> None:
    order = ["range_to", "range_from", "bottom_position", "position_drain"]
    drain = new_strip_drain(**dict.fromkeys(order, 1000.0))
    model = new_model_1d(vertical_drain=drain)
    for name in order[:3]:
        assert check(model).startswith(f"Vertical drains '{name}' (1000.0)")
        setattr(drain, name, 0.0)
    assert check(model).startswith("Vertical drains 'position_drain' (1000.0)")


def test_limits_in_the_wrong_order_make_every_drain_fail(
    new_frame: Factory, new_strip_drain: Factory
) -> None:
    model = new_frame(limits=(100.0, 0.0), vertical_drain=new_strip_drain(range_to=50.0))
    assert check(model) == (
        "Vertical drains 'range_to' (50.0) must be between model limits (100.0 - 0.0)"
    )


def test_a_drain_that_does_not_fit_is_accepted_until_the_input_is_generated(
    new_model_1d: Factory, new_strip_drain: Factory, post: Any
) -> None:
    model = new_model_1d(vertical_drain=new_strip_drain(bottom_position=-20.0))
    with pytest.raises(ModelError, match=r"^Vertical drains 'bottom_position'"):
        model.generate_input_file()
    assert post.calls == []
    model.update_geometry(-25, [(0.0, "Sand")])
    model.generate_input_file()
    assert post.document["vertical_drain"]["bottom_position"] == -20.0


def test_a_drain_that_fitted_may_fail_after_a_change_of_the_geometry(
    new_model_1d: Factory, new_strip_drain: Factory
) -> None:
    model = new_model_1d(vertical_drain=new_strip_drain(bottom_position=-4.0))
    model.update_geometry(-2, [(1, "Sand")])
    assert check(model) == (
        "Vertical drains 'bottom_position' (-4.0) must be between top and bottom limits (-2 - 1)"
    )


def test_levels_that_do_not_compare_are_pythons_type_error(
    new_model_1d: Factory, new_strip_drain: Factory
) -> None:
    model = new_model_1d(vertical_drain=new_strip_drain(range_to="100"))
    with pytest.raises(
        TypeError, match=r"^'<=' not supported between instances of 'float' and 'str'$"
    ):
        model._validate()


def test_limits_that_are_no_pair_are_pythons_index_error(
    new_frame: Factory, new_strip_drain: Factory
) -> None:
    with pytest.raises(IndexError, match=r"^tuple index out of range$"):
        new_frame(limits=(0.0,), vertical_drain=new_strip_drain())._validate()


def test_anything_with_the_levels_of_a_drain_is_checked_like_one(new_model_1d: Factory) -> None:
    drain = SimpleNamespace(range_to=1, range_from=1, bottom_position=-1, position_drain=7)
    model = new_model_1d(vertical_drain=drain)
    assert check(model).startswith("Vertical drains 'position_drain' (7) must be between")
    drain.position_drain = None
    assert model._validate() is None


def test_the_check_changes_nothing(new_model_1d: Factory, new_strip_drain: Factory) -> None:
    model = new_model_1d(vertical_drain=new_strip_drain())
    before, drain = dict(vars(model)), dict(vars(model._vertical_drain))
    model._validate()
    assert vars(model) == before
    assert vars(model._vertical_drain) == drain
