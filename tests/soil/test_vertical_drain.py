"""The constructor of `VerticalDrain`: what is demanded, the ranges, and the order of the checks."""

from collections.abc import Callable
from fractions import Fraction
from typing import Any

import pytest
from sembra.errors import ModelError
from sembra.external.dsettlement import (
    DrainageSimpleMode,
    DrainGrid,
    DrainType,
    VerticalDrain,
    _Model,
)

Factory = Callable[..., Any]

FIELDS = [
    "_drain_type",
    "range_from",
    "range_to",
    "bottom_position",
    "center_to_center",
    "width_diameter",
    "_thickness",
    "_position_drain",
    "_grid",
    "_start_of_drainage",
    "_phreatic_level_in_drain",
    "_schedule",
]
START_AND_LEVEL = (
    "'start_of_drainage' and 'phreatic_level_in_drain' must be set "
    "if drainage schedule is not of type 'List' (detailed input)"
)
SIMPLE = DrainageSimpleMode(0.0, 10.0, 5.0, 1.0)


def refusal(make: Factory, **parameters: Any) -> str:
    """The text with which a drain of these parameters is refused."""
    with pytest.raises(ModelError) as refused:
        make(**parameters)
    assert type(refused.value) is ModelError
    return str(refused.value)


def test_fields_are_stored_in_order_as_given(new_strip_drain: Factory) -> None:
    values: list[Any] = [DrainType.STRIP, *"abc", 2, 1.5, 3, object(), object(), 4, object(), []]
    drain = VerticalDrain(*values)
    assert list(vars(drain)) == FIELDS
    assert all(vars(drain)[name] is value for name, value in zip(FIELDS, values, strict=True))


def test_the_optional_six_are_none_if_left_out() -> None:
    drain = VerticalDrain(DrainType.SAND_WALL, 5.0, 90.0, 0.0, 2.0, 4.0, schedule=[])
    assert list(vars(drain).values()) == [
        *[DrainType.SAND_WALL, 5.0, 90.0, 0.0, 2.0, 4.0],
        *[None, None, None, None, None, []],
    ]


def test_a_refused_drain_has_stored_nothing() -> None:
    unmade: Any = VerticalDrain.__new__(VerticalDrain)
    with pytest.raises(ModelError):
        unmade.__init__(DrainType.STRIP, 0.0, 1.0, 0.0, 1.0, 2000.0, 0.1, grid=DrainGrid.TRIANGULAR)
    assert vars(unmade) == {}


def test_position_drain_is_a_read_only_property(new_strip_drain: Factory) -> None:
    drain = new_strip_drain(position_drain=-2)
    assert drain.position_drain == -2
    assert new_strip_drain().position_drain is None
    with pytest.raises(
        AttributeError, match=r"^property 'position_drain' of 'VerticalDrain' object has no setter$"
    ):
        drain.position_drain = 1.0


def test_public_fields_can_be_changed_without_a_check(new_strip_drain: Factory) -> None:
    drain = new_strip_drain()
    drain.center_to_center = -1.0
    assert drain._serialize()["center_to_center"] == -1.0


def test_a_sand_wall_without_schedule_needs_neither_thickness_nor_grid_nor_position() -> None:
    drain = VerticalDrain(
        *(DrainType.SAND_WALL, 5.0, 90.0, 0.0, 2.0, 4.0),
        start_of_drainage=2.0,
        phreatic_level_in_drain=4.0,
    )
    assert drain.position_drain is None


@pytest.mark.parametrize("thickness", [None, 0, 0.0, False])
def test_a_strip_without_thickness_is_refused(thickness: Any, new_strip_drain: Factory) -> None:
    message = "'thickness' must be set for vertical drain of type 'DrainType.STRIP'"
    assert refusal(new_strip_drain, thickness=thickness) == message


@pytest.mark.parametrize("thickness", [1000.001, 0.0009, -1, float("nan")])
def test_a_thickness_out_of_range_is_refused_with_the_center_to_center_distance_in_the_text(
    thickness: float, new_strip_drain: Factory
) -> None:
    message = "'thickness' must be between 0.001 and 1000 (2.5)"
    assert refusal(new_strip_drain, thickness=thickness, center_to_center=2.5) == message


@pytest.mark.parametrize("drain_type", [DrainType.COLUMN, DrainType.SAND_WALL])
@pytest.mark.parametrize("thickness", [None, 0.0, -5.0, 5000.0, "thick"])
def test_only_strips_have_their_thickness_tested(
    drain_type: DrainType, thickness: Any, new_strip_drain: Factory
) -> None:
    drain = new_strip_drain(drain_type=drain_type, thickness=thickness)
    assert drain._thickness is thickness


@pytest.mark.parametrize("schedule", [SIMPLE, [(0.0, 0.0, 0.0)], ((0.0, 0.0, 0.0),), "yes"])
def test_a_sand_wall_with_a_schedule_needs_its_position(
    schedule: Any, new_strip_drain: Factory
) -> None:
    wall = {"drain_type": DrainType.SAND_WALL, "schedule": schedule}
    message = (
        "'position_drain' must be set for vertical drain of type 'DrainType.SAND_WALL' "
        "with schedule"
    )
    assert refusal(new_strip_drain, **wall) == message
    assert new_strip_drain(**wall, position_drain=0.0).position_drain == 0.0


@pytest.mark.parametrize("schedule", [None, [], (), 0])
def test_a_sand_wall_without_a_true_schedule_needs_no_position(
    schedule: Any, new_strip_drain: Factory
) -> None:
    wall = new_strip_drain(drain_type=DrainType.SAND_WALL, schedule=schedule)
    assert wall.position_drain is None


@pytest.mark.parametrize("drain_type", [DrainType.STRIP, DrainType.COLUMN])
@pytest.mark.parametrize("grid", [None, 0, ""])
def test_strips_and_columns_need_a_grid(
    drain_type: DrainType, grid: Any, new_strip_drain: Factory
) -> None:
    message = f"'grid' must be set for vertical drain of type '{drain_type}'"
    assert refusal(new_strip_drain, drain_type=drain_type, grid=grid) == message
    assert str(drain_type) in message


@pytest.mark.parametrize("grid", DrainGrid)
def test_every_grid_counts_as_set(grid: DrainGrid, new_strip_drain: Factory) -> None:
    assert new_strip_drain(grid=grid)._grid is grid


def test_a_sand_wall_needs_no_grid(new_strip_drain: Factory) -> None:
    assert new_strip_drain(drain_type=DrainType.SAND_WALL, grid=None)._grid is None


@pytest.mark.parametrize("schedule", [None, SIMPLE, (), ((0.0, 0.0, 0.0),)])
@pytest.mark.parametrize("left_out", ["start_of_drainage", "phreatic_level_in_drain"])
def test_without_a_list_as_schedule_start_and_level_are_demanded(
    left_out: str, schedule: Any, new_strip_drain: Factory
) -> None:
    assert refusal(new_strip_drain, schedule=schedule, **{left_out: None}) == START_AND_LEVEL


@pytest.mark.parametrize("start", [-1, -0.5, 100001, 100000.5, float("nan")])
def test_a_start_of_drainage_out_of_range_is_refused(start: Any, new_strip_drain: Factory) -> None:
    message = f"'start_of_drainage' must be between 0 and 100000 ({start})"
    assert refusal(new_strip_drain, start_of_drainage=start) == message


@pytest.mark.parametrize("name", ["center_to_center", "width_diameter"])
@pytest.mark.parametrize("value", [0.0009, 0, -1.0, 1000.001, float("nan"), float("inf")])
def test_a_distance_or_a_width_out_of_range_is_refused(
    name: str, value: float, new_strip_drain: Factory
) -> None:
    message = f"'{name}' must be between 0.001 and 1000 ({value})"
    assert refusal(new_strip_drain, **{name: value}) == message


@pytest.mark.parametrize(
    ("name", "values"),
    [
        ("thickness", [0.001, 1000]),
        ("center_to_center", [0.001, 1000, Fraction(1, 2)]),
        ("width_diameter", [0.001, 1000, True]),
        ("start_of_drainage", [0, 100000]),
        ("phreatic_level_in_drain", [-1e9, 1e9, "any"]),
        ("range_from", [-1e9, 1e9, None]),
        ("range_to", [-1e9, 1e9, None]),
        ("bottom_position", [-1e9, 1e9, None]),
        ("position_drain", [-1e9, 1e9, "any"]),
    ],
)
def test_bounds_are_included_and_what_is_free_is_not_tested(
    name: str, values: list[Any], new_strip_drain: Factory
) -> None:
    for value in values:
        drain = new_strip_drain(**{name: value})
        assert value in vars(drain).values()


def test_the_range_may_run_backwards(new_strip_drain: Factory) -> None:
    assert new_strip_drain(range_from=90.0, range_to=5.0)


def test_the_first_failing_test_decides(new_strip_drain: Factory) -> None:
    wrong: dict[str, Any] = {
        "thickness": None,
        "grid": None,
        "start_of_drainage": None,
        "center_to_center": 0.0,
        "width_diameter": 0.0,
    }
    mended: list[tuple[str, dict[str, Any]]] = [
        ("'thickness' must be set for", {"thickness": 2000.0}),
        ("'thickness' must be between 0.001 and 1000 (0.0)", {"thickness": 0.1}),
        ("'grid' must be set for", {"grid": DrainGrid.RECTANGULAR}),
        ("'start_of_drainage' and 'phreatic_level", {"start_of_drainage": -1.0}),
        ("'start_of_drainage' must be between", {"start_of_drainage": 1.0}),
        ("'center_to_center' must be", {"center_to_center": 1.0}),
        ("'width_diameter' must be", {"width_diameter": 1.0}),
    ]
    for start, mend in mended:
        assert refusal(new_strip_drain, **wrong).startswith(start)
        wrong |= mend
    assert new_strip_drain(**wrong)


@pytest.mark.parametrize(
    ("parameters", "message"),
    [
        ({"thickness": "0.1"}, "'<=' not supported between instances of 'float' and 'str'"),
        ({"start_of_drainage": "0"}, "'<=' not supported between instances of 'int' and 'str'"),
        (
            {"center_to_center": None},
            "'<=' not supported between instances of 'float' and 'NoneType'",
        ),
        ({"width_diameter": "1"}, "'<=' not supported between instances of 'float' and 'str'"),
    ],
)
def test_a_value_that_does_not_compare_is_pythons_type_error(
    parameters: dict[str, Any], message: str, new_strip_drain: Factory
) -> None:
    with pytest.raises(TypeError) as refused:
        new_strip_drain(**parameters)
    assert str(refused.value) == message


def test_a_type_that_is_no_member_is_treated_as_neither_strip_nor_sand_wall(
    new_strip_drain: Factory,
) -> None:
    drain = new_strip_drain(drain_type=0, thickness=None)
    message = "'grid' must be set for vertical drain of type '0'"
    assert refusal(new_strip_drain, drain_type=0, grid=None) == message
    with pytest.raises(AttributeError, match=r"^'int' object has no attribute 'value'$"):
        drain._serialize()


def test_the_default_drain_is_a_record_of_strips_over_the_whole_width() -> None:
    default = vars(_Model._DEFAULT_VERTICAL_DRAIN)
    assert list(default.items()) == [
        ("_drain_type", DrainType.STRIP),
        ("range_from", 0.0),
        ("range_to", 100.0),
        ("bottom_position", 0.0),
        ("center_to_center", 1.0),
        ("width_diameter", 0.1),
        ("_thickness", 0.003),
        ("_position_drain", None),
        ("_grid", DrainGrid.TRIANGULAR),
        ("_start_of_drainage", 0.0),
        ("_phreatic_level_in_drain", 0.0),
        ("_schedule", None),
    ]
    assert all(type(value) is float for value in list(default.values())[1:7])
