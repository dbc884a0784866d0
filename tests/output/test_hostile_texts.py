"""Texts on which a backtracking reader takes quadratic time."""

import time
import tracemalloc

import pytest
from sembra.external.dsettlement import OutputFileParser

from benchmarks.hostile_texts import MAKERS
from tests.output.agreement import difference, outcome_of


@pytest.mark.parametrize("name", MAKERS)
@pytest.mark.parametrize("size", [1, 300, 1500])
def test_both_readers_agree_on_small_hostile_texts(name: str, size: int) -> None:
    text = MAKERS[name](size)
    for variant in (text, text.replace("\n", "\r\n"), text[:-7]):
        assert difference(variant) is None


@pytest.mark.parametrize("name", MAKERS)
def test_a_large_hostile_text_is_read_in_no_time(name: str) -> None:
    text = MAKERS[name](2_000_000)
    start = time.process_time()
    outcome_of(lambda: OutputFileParser._parse_results(text))
    # Not shown as text, which would take longer than the read.
    outcome_of(lambda: OutputFileParser._parse_verticals(text) and None)
    outcome_of(lambda: OutputFileParser._parse_residual_settlements(text) and None)
    # A quadratic reader takes minutes; this one takes hundredths of a second.
    assert time.process_time() - start < 5.0


def test_equal_headers_take_no_room() -> None:
    text = MAKERS["equal headers, no rows"](500_000)
    tracemalloc.start()
    try:
        assert OutputFileParser._parse_verticals(text)[1]["stresses"] == {"": []}
        _, peak = tracemalloc.get_traced_memory()
    finally:
        tracemalloc.stop()
    # A list for each of them would take thirty million bytes.
    assert peak < 100_000
