"""One vertical: coordinates, depths, leakages, drained layers, stresses."""

import pytest

from tests.output.blocks import (
    at_time,
    lines,
    parser_of,
    read_vertical,
    results,
    stresses,
    time_dependent,
    time_settlement,
    vertical,
)

KEYS = [
    "coordinates",
    "depths",
    "leakages",
    "drained_layers",
    "stresses",
    "time_settlement_per_load",
    "vertical_data",
]
LINE_BLOCKS = [
    ("Depths", "depths"),
    ("Leakages", "leakages"),
    ("Drained Layers", "drained_layers"),
]


def test_a_vertical_has_all_keys_in_order_whatever_it_holds() -> None:
    result = read_vertical("nothing")
    assert list(result) == KEYS
    assert [result[key] for key in KEYS] == [{}, [], [], [], {}, {}, {}]


def test_verticals_are_numbered_from_one_in_text_order() -> None:
    text = results(*(vertical(f"{x}.0 =  X co-ordinate") for x in (3, 1, 2)))
    verticals = parser_of(text).vertical_results
    assert list(verticals) == [1, 2, 3]
    assert [verticals[number]["coordinates"]["x"] for number in verticals] == [3.0, 1.0, 2.0]


def test_a_vertical_without_closing_tag_runs_on_to_the_next() -> None:
    text = results("[Vertical]", "1.0 =  X co-ordinate", vertical("2.0 =  Z co-ordinate"))
    assert parser_of(text).vertical_results[1]["coordinates"] == {"x": 1.0, "z": 2.0}
    assert list(parser_of(text).vertical_results) == [1]


def test_a_last_vertical_without_closing_tag_is_not_counted() -> None:
    text = results(vertical("text"), "[Vertical]", "1.0 =  X co-ordinate")
    assert list(parser_of(text).vertical_results) == [1]


def test_data_at_a_time_is_no_vertical() -> None:
    text = results("[Vertical Data at Time]", "text", "[End of Vertical Data at Time]")
    assert parser_of(text).vertical_results == {}


# Coordinates.


def test_coordinates_stand_in_the_order_of_the_file() -> None:
    result = read_vertical("  2.5 =  Z co-ordinate", "  1.5 =  X co-ordinate")
    assert list(result["coordinates"].items()) == [("z", 2.5), ("x", 1.5)]


def test_a_vertical_with_one_coordinate_has_that_axis_alone() -> None:
    assert read_vertical("  60.0000000     =  X co-ordinate")["coordinates"] == {"x": 60.0}


def test_a_later_line_of_the_same_axis_overwrites_in_the_first_place() -> None:
    result = read_vertical("1.0 =  X co-ordinate", "2.0 =  Z co-ordinate", "3.0 =  X co-ordinate")
    assert list(result["coordinates"].items()) == [("x", 3.0), ("z", 2.0)]


def test_coordinates_are_found_within_other_blocks() -> None:
    result = read_vertical("[Depths]", "1.0 =  X co-ordinate", "[End of Depths]")
    assert result["coordinates"] == {"x": 1.0}


@pytest.mark.parametrize("axis", ["x", "z", "Y"])
def test_other_axes_are_passed_over(axis: str) -> None:
    assert read_vertical(f"1.0 =  {axis} co-ordinate")["coordinates"] == {}


def test_the_bar_is_an_axis_too() -> None:
    assert read_vertical("1.0 =  | co-ordinate")["coordinates"] == {"|": 1.0}


def test_one_blank_behind_the_equals_sign_is_too_little() -> None:
    assert read_vertical("1.000 = X co-ordinate")["coordinates"] == {}


def test_the_last_character_in_front_of_the_axis_must_be_a_blank() -> None:
    assert read_vertical("1.0 = \tX co-ordinate")["coordinates"] == {}
    assert read_vertical("1.0 =\t X\tco-ordinate")["coordinates"] == {"x": 1.0}


def test_anything_in_front_of_the_number_belongs_to_it() -> None:
    with pytest.raises(ValueError, match=r"could not convert string to float: ' at 1\.0'"):
        read_vertical(" at 1.0 =  X co-ordinate")


def test_the_number_may_stand_lines_before_the_equals_sign() -> None:
    assert read_vertical("1.0", "", "=", "  X co-ordinate")["coordinates"] == {"x": 1.0}


# Lists of lines.


@pytest.mark.parametrize(("name", "key"), LINE_BLOCKS)
def test_lines_behind_the_first_are_numbers(name: str, key: str) -> None:
    result = read_vertical(f"[{name}]", "not read", " -1.0", "2", "3e1\t", f"[End of {name}]")
    assert result[key] == [-1.0, 2.0, 30.0]
    assert all(type(number) is float for number in result[key])


@pytest.mark.parametrize(("name", "key"), LINE_BLOCKS)
@pytest.mark.parametrize("first", ["5 = count", ""])
def test_a_block_of_one_line_gives_an_empty_list(name: str, key: str, first: str) -> None:
    assert read_vertical(f"[{name}]", first, f"[End of {name}]")[key] == []


@pytest.mark.parametrize(("name", "key"), LINE_BLOCKS)
@pytest.mark.parametrize("end", ["\n", "\r\n"])
def test_a_block_without_lines_gives_an_empty_list(name: str, key: str, end: str) -> None:
    assert read_vertical(f"[{name}]", f"[End of {name}]", end=end)[key] == []


def test_the_closing_tag_needs_a_line_end_behind_it() -> None:
    result = read_vertical("[Depths]", "0", "1.0", "[End of Depths] ", "2.0")
    assert result["depths"] == []


@pytest.mark.parametrize("line", ["", "1.0 2.0", "x"])
def test_a_line_that_is_no_number_raises(line: str) -> None:
    with pytest.raises(ValueError, match="could not convert string to float"):
        read_vertical("[Depths]", "2 = Depth count", "1.0", line, "3.0", "[End of Depths]")


def test_an_empty_block_runs_on_to_the_next_closing_tag_of_its_kind() -> None:
    text = lines("[Depths]", "[End of Depths]", "1.0", "[End of Depths]")
    assert read_vertical(text)["depths"] == [1.0]


# Stresses.


def test_header_i_is_field_i() -> None:
    result = read_vertical(stresses(("A", "B"), " 1.0 2.0 9.0", " 3.0 4.0"))
    assert list(result["stresses"].items()) == [("A", [1.0, 3.0]), ("B", [2.0, 4.0])]


def test_headers_are_kept_to_the_letter() -> None:
    result = read_vertical(stresses(("Initial total stress ", " B"), "1 2"))
    assert list(result["stresses"]) == ["Initial total stress ", " B"]


def test_of_equal_headers_the_later_column_wins_in_the_first_place() -> None:
    result = read_vertical(stresses(("A", "B", "A"), "1 2 3", "4 5 6"))
    assert list(result["stresses"].items()) == [("A", [3.0, 6.0]), ("B", [2.0, 5.0])]


def test_stress_data_without_rows_gives_empty_lists() -> None:
    assert read_vertical(stresses(("A", "B"), ""))["stresses"] == {"A": [], "B": []}


def test_an_empty_line_among_the_stress_rows_raises() -> None:
    with pytest.raises(IndexError, match=r"^list index out of range$"):
        read_vertical(stresses(("A",), "1", "", "2"))


def test_an_empty_line_as_the_only_header_is_no_header() -> None:
    assert read_vertical(stresses(("",), "no", "numbers"))["stresses"] == {}


@pytest.mark.parametrize(
    "count",
    [
        "2 = Depth step count ",
        "x = Depth step count",
        "\u0663 = Depth step count",
        "= Depth step count",
    ],
)
def test_the_count_line_of_the_stresses_is_strict(count: str) -> None:
    assert read_vertical(stresses(("A",), "1", count=count))["stresses"] == {}


def test_empty_lines_may_stand_in_front_of_the_count_of_the_stresses() -> None:
    result = read_vertical(stresses(("A",), "1", count="\n\n 2 \n=\nDepth step count"))
    assert result["stresses"] == {"A": [1.0]}


# The order of failures.


def test_the_first_header_that_fails_is_raised_though_its_row_comes_later() -> None:
    with pytest.raises(ValueError, match="'second'"):
        read_vertical(stresses(("A", "B"), "1 first", "second 2"))


def test_a_missing_field_of_an_earlier_header_comes_first() -> None:
    with pytest.raises(IndexError):
        read_vertical(stresses(("A", "B", "C"), "1 2 x", "1"))


def wrong_lines(name: str, line: str) -> str:
    return lines(f"[{name}]", "1 = count", line, f"[End of {name}]")


@pytest.mark.parametrize(
    "parts",
    [
        ("bad =  X co-ordinate", stresses(("A",), "wrong")),
        (time_settlement("wrong"), stresses(("A",), "bad")),
        (time_dependent(("A",), at_time("1.0", "wrong")), time_settlement("bad")),
        (wrong_lines("Depths", "wrong"), time_dependent(("A",), at_time("1.0", "bad"))),
        (wrong_lines("Leakages", "wrong"), wrong_lines("Depths", "bad")),
        (wrong_lines("Drained Layers", "wrong"), wrong_lines("Leakages", "bad")),
    ],
)
def test_the_order_of_the_steps_settles_which_failure_is_seen(parts: tuple[str, ...]) -> None:
    with pytest.raises(ValueError, match="could not convert string to float: 'bad'"):
        read_vertical(*parts)


def test_a_first_row_that_is_much_longer_than_the_others_gives_no_columns_of_its_own() -> None:
    rows = ["1.0" + 200 * " 2.0", *300 * ["3.0 4.0"]]
    result = read_vertical(time_settlement(*rows))["time_settlement_per_load"]
    assert result["time"] == [1.0, *300 * [3.0]]
    assert result["load_1"] == [2.0, *300 * [4.0]]
    assert "load_2" not in result


def test_columns_are_lists_of_their_own() -> None:
    result = read_vertical(stresses(("A", "B"), "1 1", "1 1"))["stresses"]
    result["A"].append(2.0)
    assert result["B"] == [1.0, 1.0]
