"""The residual settlements of a file."""

import pytest

from tests.output.blocks import parser_of, read_residuals, residuals, results, vertical

HEADERS = ("Vertical", "Time", "Settlement")


def test_without_a_block_there_are_none() -> None:
    assert read_residuals("text") == {}


def test_the_first_header_is_dropped_and_the_rest_go_with_the_fields_behind_the_number() -> None:
    result = read_residuals(residuals(HEADERS, " 1 10.0 0.5 9 9", " 1 20.0 0.6"))
    assert result == {1: {"Time": [10.0, 20.0], "Settlement": [0.5, 0.6]}}


def test_verticals_stand_in_the_order_of_their_first_row() -> None:
    result = read_residuals(residuals(HEADERS, "2 1 2", "1 3 4", "2 5 6"))
    assert list(result.items()) == [
        (2, {"Time": [1.0, 5.0], "Settlement": [2.0, 6.0]}),
        (1, {"Time": [3.0], "Settlement": [4.0]}),
    ]
    assert all(type(number) is int for number in result)


def test_equal_headers_share_one_list() -> None:
    result = read_residuals(residuals(("V", "A", "B", "A"), "1 1 2 3", "1 4 5 6"))
    assert list(result[1].items()) == [("A", [1.0, 3.0, 4.0, 6.0]), ("B", [2.0, 5.0])]


def test_one_header_gives_each_vertical_an_empty_mapping() -> None:
    assert read_residuals(residuals(("Vertical",), "1 no numbers", "2")) == {1: {}, 2: {}}


@pytest.mark.parametrize("headers", [HEADERS, ("Vertical",), ("",)])
def test_an_empty_row_raises(headers: tuple[str, ...]) -> None:
    with pytest.raises(IndexError, match=r"^list index out of range$"):
        read_residuals(residuals(headers, "1 2 3", "", "1 2 3"))


def test_a_row_that_is_too_short_raises() -> None:
    with pytest.raises(IndexError, match=r"^list index out of range$"):
        read_residuals(residuals(HEADERS, "1 2"))


def test_a_number_of_a_vertical_must_be_an_integer() -> None:
    with pytest.raises(ValueError, match=r"invalid literal for int\(\) with base 10: '1.0'"):
        read_residuals(residuals(HEADERS, "1.0 2 3"))


def test_a_field_that_is_no_number_raises() -> None:
    with pytest.raises(ValueError, match="could not convert string to float: 'x'"):
        read_residuals(residuals(HEADERS, "1 2 x"))


@pytest.mark.parametrize("count", ["", "any text", "several\nlines\n[of] it"])
def test_the_count_is_not_read(count: str) -> None:
    result = read_residuals(residuals(HEADERS, "1 2 3", count=count))
    assert result == {1: {"Time": [2.0], "Settlement": [3.0]}}


def test_a_count_needs_a_line_end_on_both_sides() -> None:
    text = residuals(HEADERS, "1 2 3").replace("  3 Data count\n", "")
    assert read_residuals(text) == {}


@pytest.mark.parametrize(
    "part",
    [
        "[END OF RESIDUAL SETTLEMENT DATA]",
        "[DATA COUNT]\n  3 Data count\n[END OF DATA COUNT]\n",
        "[End of Column Indication]\n",
    ],
)
def test_a_block_that_lacks_a_part_counts_as_absent(part: str) -> None:
    assert read_residuals(residuals(HEADERS, "1 2 3").replace(part, "")) == {}


def test_the_first_of_several_blocks_counts_wherever_it_stands() -> None:
    text = results(vertical("text", residuals(HEADERS, "7 1 2")), residuals(HEADERS, "8 3 4"))
    assert list(parser_of(text).residual_times) == [7]


def test_verticals_with_very_large_numbers() -> None:
    number = 10**30
    assert list(read_residuals(residuals(HEADERS, f"{number} 1 2"))) == [number]
