"""The time series of a vertical: settlement per load, and data per time."""

from io import StringIO
from typing import Any

import pytest
from sembra.external.dsettlement import OutputFileParser

from benchmarks.plain.output_parser import OutputFileParser as PlainOutputFileParser
from tests.output.blocks import (
    at_time,
    lines,
    read_vertical,
    results,
    time_dependent,
    time_settlement,
    vertical,
)

# Settlement against time.


def test_columns_are_time_and_one_per_load() -> None:
    block = time_settlement("0.0 1.0 2.0", "10.0 3.0 4.0", load_steps="2")
    result = read_vertical(block)["time_settlement_per_load"]
    assert list(result.items()) == [
        ("load_step_count", 2),
        ("time_step_count", 2),
        ("time", [0.0, 10.0]),
        ("load_1", [1.0, 3.0]),
        ("load_2", [2.0, 4.0]),
    ]
    assert type(result["load_step_count"]) is int


def test_the_counts_of_the_file_are_passed_on_unchecked() -> None:
    result = read_vertical(time_settlement("0.0 1.0", time_steps="049", load_steps="2"))
    assert result["time_settlement_per_load"] == {
        "load_step_count": 2,
        "time_step_count": 49,
        "time": [0.0],
        "load_1": [1.0],
    }


def test_rows_of_one_field_give_the_time_alone() -> None:
    result = read_vertical(time_settlement("0.0", "1.0"))["time_settlement_per_load"]
    assert list(result) == ["load_step_count", "time_step_count", "time"]


def test_the_shortest_row_settles_how_many_columns_there_are() -> None:
    result = read_vertical(time_settlement("0 1 2", "3 4 5", "6 7"))["time_settlement_per_load"]
    assert list(result)[2:] == ["time", "load_1"]
    assert result["time"] == [0.0, 3.0, 6.0]
    assert result["load_1"] == [1.0, 4.0, 7.0]


def test_surplus_fields_must_be_numbers_all_the_same() -> None:
    with pytest.raises(ValueError, match="'x'"):
        read_vertical(time_settlement("0 1", "3 4 x"))


@pytest.mark.parametrize("rows", [("",), ("1 2", "", "3 4")])
def test_an_empty_row_leaves_no_first_column(rows: tuple[str, ...]) -> None:
    with pytest.raises(IndexError, match=r"^list index out of range$"):
        read_vertical(time_settlement(*rows))


def test_an_empty_line_ahead_of_the_rows_does_no_harm() -> None:
    result = read_vertical(time_settlement("", "1 2"))["time_settlement_per_load"]
    assert (result["time"], result["load_1"]) == ([1.0], [2.0])


def test_a_closing_tag_directly_behind_the_counts_does_not_fit() -> None:
    assert read_vertical(time_settlement())["time_settlement_per_load"] == {}


def test_a_closing_tag_directly_behind_the_counts_fits_where_a_line_end_can_be_divided() -> None:
    block = time_settlement().replace("\n", "\r\n")
    with pytest.raises(IndexError):
        read_vertical(block)


def test_white_space_around_the_counts_is_passed_over() -> None:
    block = lines(
        "[Time-Settlement per Load]",
        "",
        " \t",
        " 2\n=\n Time\tstep\u2003count",
        "",
        "1 = Load step count   ",
        "",
        "   ",
        "0 1",
        "[End of Time-Settlement per Load]",
    )
    result = read_vertical(block)["time_settlement_per_load"]
    assert result == {"load_step_count": 1, "time_step_count": 2, "time": [0.0], "load_1": [1.0]}


def test_the_words_of_a_count_line_stand_one_white_space_apart() -> None:
    block = time_settlement("0 1").replace("Time step", "Time  step")
    assert read_vertical(block)["time_settlement_per_load"] == {}


def test_counts_may_be_digits_of_any_script() -> None:
    block = time_settlement("0 1", time_steps="\u0663", load_steps="\uff11\uff12")
    result = read_vertical(block)["time_settlement_per_load"]
    assert (result["time_step_count"], result["load_step_count"]) == (3, 12)


def test_a_count_with_too_many_digits_is_refused_by_the_host() -> None:
    with pytest.raises(ValueError, match="Exceeds the limit"):
        read_vertical(time_settlement("0 1", time_steps="9" * 5000))


# Data per time.


def test_each_time_has_a_column_per_header() -> None:
    block = time_dependent(
        ("Depth", "Settlement "), at_time("0.0", " 1 2 9", " 3 4"), at_time("10.50", "5 6")
    )
    assert list(read_vertical(block)["vertical_data"].items()) == [
        (0.0, {"Depth": [1.0, 3.0], "Settlement ": [2.0, 4.0]}),
        (10.5, {"Depth": [5.0], "Settlement ": [6.0]}),
    ]


def test_of_equal_times_the_later_block_wins_in_the_first_place() -> None:
    block = time_dependent(("A",), at_time("1.0", "1"), at_time("2.0", "2"), at_time("1.00", "3"))
    data = read_vertical(block)["vertical_data"]
    assert list(data.items()) == [(1.0, {"A": [3.0]}), (2.0, {"A": [2.0]})]


def test_of_equal_headers_the_later_column_wins_in_the_first_place() -> None:
    block = time_dependent(("A", "B", "A"), at_time("1.0", "1 2 3"))
    assert list(read_vertical(block)["vertical_data"][1.0].items()) == [("A", [3.0]), ("B", [2.0])]


def test_a_later_block_wins_with_and_without_rows() -> None:
    for rows, column in ((("", "1"), [1.0]), (("1", ""), []), (("1", "", "2"), [2.0])):
        block = time_dependent(("A",), *(at_time("1.0", row) for row in rows))
        assert read_vertical(block)["vertical_data"] == {1.0: {"A": column}}


def test_equal_headers_of_blocks_without_rows_share_nothing() -> None:
    block = time_dependent(("A", "B", "A"), at_time("1.0", ""), at_time("2.0", ""))
    data = read_vertical(block)["vertical_data"]
    assert data == {1.0: {"A": [], "B": []}, 2.0: {"A": [], "B": []}}
    lists = [column for table in data.values() for column in table.values()]
    assert len({id(column) for column in lists}) == 4


def test_a_column_that_another_takes_the_place_of_is_read_all_the_same() -> None:
    with pytest.raises(ValueError, match="'first'"):
        read_vertical(time_dependent(("A", "A"), at_time("1.0", "1 late", "first 2")))
    with pytest.raises(ValueError, match="'early'"):
        read_vertical(time_dependent(("A",), at_time("1.0", "early"), at_time("1.0", "1")))


@pytest.mark.parametrize("time", ["1", "-1.0", "1.0e1", "1.", ".5", "x"])
def test_a_block_with_a_time_of_another_form_is_skipped(time: str) -> None:
    block = time_dependent(("A",), at_time("1.0", "1"), at_time(time, "2"), at_time("3.0", "3"))
    assert list(read_vertical(block)["vertical_data"]) == [1.0, 3.0]


BEGINNINGS_OF_A_TIME_LINE = [
    "",
    "12",
    "12.",
    "12.5",
    "12.5 =",
    "12.5 = Time",
    "12.5 = Time in",
    "12.5 = Time in day",
]
ROWS_BEHIND = [("1 2 3",), ("", "1 2 3"), ("", "", "1 2 3"), ("1", "2", "3")]


@pytest.mark.parametrize("parser_class", [OutputFileParser, PlainOutputFileParser])
@pytest.mark.parametrize("end", ["\n", "\r\n", "\r"])
@pytest.mark.parametrize("rows", ROWS_BEHIND)
@pytest.mark.parametrize("time_line", BEGINNINGS_OF_A_TIME_LINE)
def test_a_block_whose_time_line_breaks_off_is_skipped(
    parser_class: Any, end: str, rows: tuple[str, ...], time_line: str
) -> None:
    broken = lines("[Vertical Data at Time]", time_line, *rows, "[End of Vertical Data at Time]")
    block = time_dependent(("A",), at_time("1.0", "4"), broken, at_time("3.0", "5"))
    text = results(vertical(block)).replace("\n", end)
    data = parser_class(StringIO(text, newline="")).vertical_results[1]["vertical_data"]
    assert data == {1.0: {"A": [4.0]}, 3.0: {"A": [5.0]}}


def test_white_space_behind_the_time_line_skips_the_block() -> None:
    block = time_dependent(("A",), at_time("1.0", "1").replace("days", "days "))
    assert read_vertical(block)["vertical_data"] == {}


def test_times_may_be_digits_of_any_script() -> None:
    block = time_dependent(("A",), at_time("\u0663.\u0665", "1"))
    assert list(read_vertical(block)["vertical_data"]) == [3.5]


def test_a_block_outside_the_time_dependent_data_is_not_read() -> None:
    result = read_vertical(at_time("1.0", "1"), time_dependent(("A",), at_time("2.0", "2")))
    assert list(result["vertical_data"]) == [2.0]


def test_without_time_dependent_data_there_are_no_times() -> None:
    assert read_vertical(at_time("1.0", "1"))["vertical_data"] == {}


def test_with_an_empty_header_part_the_rows_are_not_read() -> None:
    block = time_dependent(("",), at_time("1.0", "no numbers"), at_time("2.0", ""))
    assert read_vertical(block)["vertical_data"] == {1.0: {}, 2.0: {}}


def test_a_block_without_rows_gives_empty_lists() -> None:
    block = time_dependent(("A", "B"), at_time("1.0", ""))
    assert read_vertical(block)["vertical_data"] == {1.0: {"A": [], "B": []}}


def test_a_row_that_is_too_short_raises() -> None:
    with pytest.raises(IndexError, match=r"^list index out of range$"):
        read_vertical(time_dependent(("A", "B"), at_time("1.0", "1 2", "3")))


def test_many_headers_above_short_rows_take_no_room() -> None:
    headers = tuple(f"header {number}" for number in range(100_000))
    rows = ["1"] * 100_000
    with pytest.raises(IndexError):
        read_vertical(time_dependent(headers, at_time("1.0", *rows)))
