"""Every character of Unicode counts as the host has it: digits, white space, line boundaries."""

import sys
from collections.abc import Callable, Iterator

import pytest
from sembra.external.dsettlement import OutputFileParser

from tests.output.blocks import at_time, lines, stresses, time_dependent, vertical

CHUNK = 0x8000
CHUNKS = range(0, sys.maxunicode + 1, CHUNK)


def times_of(first: int, block_of: Callable[[int], str]) -> set[float]:
    blocks = [block_of(code) for code in range(first, min(first + CHUNK, sys.maxunicode + 1))]
    text = vertical(time_dependent(("A",), *blocks))
    return set(OutputFileParser._parse_vertical(text)["vertical_data"])


def codes_that(first: int, belongs: Callable[[str], bool]) -> Iterator[int]:
    return (c for c in range(first, min(first + CHUNK, sys.maxunicode + 1)) if belongs(chr(c)))


@pytest.mark.parametrize("first", CHUNKS)
def test_decimal_digits(first: int) -> None:
    times = times_of(first, lambda code: at_time(f"{code}{chr(code)}.0", ""))
    assert times == {float(f"{code}{chr(code)}.0") for code in codes_that(first, str.isdecimal)}


@pytest.mark.parametrize("first", CHUNKS)
def test_white_space(first: int) -> None:
    times = times_of(first, lambda c: at_time(f"{c}.0", "").replace("in days", f"in{chr(c)}days"))
    assert times == {float(code) for code in codes_that(first, str.isspace)}


@pytest.mark.parametrize("first", CHUNKS)
def test_line_boundaries(first: int) -> None:
    headers = "".join(f"{c}{chr(c)}" for c in range(first, min(first + CHUNK, sys.maxunicode + 1)))
    block = stresses((headers,), " ".join(["1"] * CHUNK * 2))
    assert list(OutputFileParser._parse_vertical(block)["stresses"]) == headers.splitlines()


@pytest.mark.parametrize("first", CHUNKS)
def test_field_separators(first: int) -> None:
    codes = range(first, min(first + CHUNK, sys.maxunicode + 1))
    spaces = "".join(f"{c}{chr(c)}" for c in codes if chr(c).isspace())
    row = "".join(spaces.splitlines()) + "0"
    headers = tuple(str(i) for i in range(len(row.split())))
    columns = OutputFileParser._parse_vertical(stresses(headers, row))["stresses"]
    assert [column[0] for column in columns.values()] == [float(field) for field in row.split()]


def test_the_text_of_a_failure_shows_lone_surrogates_as_the_host_does() -> None:
    text = lines("[Depths]", "1 = count", "1\udc80", "[End of Depths]", "")
    with pytest.raises(ValueError, match=r"could not convert string to float: '1\\udc80'"):
        OutputFileParser._parse_vertical(text)
