"""Subclasses and patches of the reader are honoured."""

import re
import time
from io import StringIO
from typing import Any

import pytest
from sembra.external.dsettlement import OutputFileParser

from benchmarks.plain.output_parser import OutputFileParser as PlainOutputFileParser
from tests.output.agreement import difference_with, outcomes
from tests.output.blocks import (
    at_time,
    parser_of,
    residuals,
    results,
    stresses,
    time_dependent,
    time_settlement,
    vertical,
)
from tests.output.changed_readers import EVERYWHERE, OTHERS, changed, watched

PATTERNS = [name for name, value in vars(OutputFileParser).items() if isinstance(value, re.Pattern)]
FULL = results(
    vertical(
        "1.0 =  X co-ordinate",
        "[Depths]",
        "2 = count",
        "-1.0",
        "[End of Depths]",
        stresses(("A", "B"), "1 2", "3 4"),
        time_settlement("0 1", "2 3"),
        time_dependent(("A",), at_time("1.0", "1"), at_time("2.0", "2")),
    ),
    vertical("2.0 =  Z co-ordinate"),
    residuals(("Vertical", "Time"), "1 2.0", "2 3.0"),
)


def patterns_of_a_vertical(parser_class: Any) -> list[str]:
    cls = watched(parser_class)
    cls._parse_verticals(FULL)
    return [name for name in dict.fromkeys(cls.seen) if name in PATTERNS[3:]]


VERTICAL_PATTERNS = patterns_of_a_vertical(PlainOutputFileParser)


def test_there_are_twelve_compiled_patterns_in_their_order() -> None:
    assert PATTERNS == [
        "_FILE_NAME_PATTERN",
        "_RESULTS_PATTERN",
        "_VERTICAL_PATTERN",
        "_COORDINATE_PATTERN",
        "_TIME_SETTLEMENT_PER_LOAD_PATTERN",
        "_DEPTHS_PATTERN",
        "_LEAKAGES_PATTERN",
        "_DRAINED_LAYERS_PATTERN",
        "_STRESSES_PATTERN",
        "_TIME_DEPENDENT_DATA_PATTERN",
        "_VERTICAL_DATA_AT_TIME",
        "_RESIDUAL_SETTLEMENTS_PATTERN",
    ]


@pytest.mark.parametrize("name", PATTERNS)
def test_the_patterns_are_those_of_the_plain_reader(name: str) -> None:
    assert getattr(OutputFileParser, name) == getattr(PlainOutputFileParser, name)


@pytest.mark.parametrize("name", PATTERNS)
def test_an_equal_pattern_in_the_place_of_the_original_reads_the_same(
    name: str, monkeypatch: pytest.MonkeyPatch
) -> None:
    expected = outcomes(OutputFileParser, FULL)
    original = getattr(OutputFileParser, name)

    class Pattern:
        """Runs the original, and is another object."""

        def search(self, text: str) -> Any:
            return original.search(text)

        def finditer(self, text: str) -> Any:
            return original.finditer(text)

    monkeypatch.setattr(OutputFileParser, name, Pattern())
    assert outcomes(OutputFileParser, FULL) == expected


@pytest.mark.parametrize("name", PATTERNS)
def test_a_differing_pattern_gives_what_it_gives_the_plain_reader(name: str) -> None:
    changes = {name: OTHERS[name]}
    texts = [FULL, FULL.replace("\n", "\r\n"), FULL.replace("count", "count of them")]
    texts += [FULL.replace("[Depths]", "[Leakages]"), "FILENAME: C:\\road.sld\nno results"]
    assert [difference_with(changes, text) for text in texts] == [None] * len(texts)
    # The pattern matters: without it the outcomes are others.
    changed_reader = changed(OutputFileParser, changes)
    assert any(outcomes(changed_reader, text) != outcomes(OutputFileParser, text) for text in texts)


@pytest.mark.parametrize("name", PATTERNS)
@pytest.mark.parametrize("other", EVERYWHERE, ids=range(len(EVERYWHERE)))
def test_any_pattern_in_any_place_gives_what_it_gives_the_plain_reader(
    name: str, other: re.Pattern[str]
) -> None:
    assert difference_with({name: other}, FULL) is None


def test_a_vertical_looks_up_all_its_patterns() -> None:
    assert len(VERTICAL_PATTERNS) == 8
    assert patterns_of_a_vertical(OutputFileParser) == VERTICAL_PATTERNS


@pytest.mark.parametrize("name", VERTICAL_PATTERNS)
def test_beside_a_replaced_pattern_all_is_read_natively(name: str) -> None:
    # Each of the defined patterns would take seconds on this text, and longer by its square.
    tags = ["[Depths]", "[Leakages]", "[Drained Layers]"]
    tags += [f"[{block}]\n[Column Indication]" for block in ("Stresses", "Time-dependent Data")]
    tags += ["[Time-Settlement per Load]\n1 = Time step count\n1 = Load step count"]
    tags += ["[Vertical Data at Time]\n1.0 = Time in days"]
    text = vertical(*(f"{tag}\n" * 3000 for tag in tags), "blank " * 20_000)
    other = changed(OutputFileParser, {name: re.compile("never")})
    start = time.process_time()
    other._parse_verticals(text)
    assert time.process_time() - start < 1.0


def test_a_replaced_pattern_decides() -> None:
    class Other(OutputFileParser):
        _DEPTHS_PATTERN = re.compile(r"\[Levels\]\n(?P<data>.*?)\n\[End of Levels\]", re.DOTALL)

    text = vertical("[Levels]", "2 = count", "-1.5", "[End of Levels]")
    assert Other._parse_vertical(text)["depths"] == [-1.5]
    assert Other._parse_verticals(text)[1]["depths"] == [-1.5]
    assert OutputFileParser._parse_vertical(text)["depths"] == []


def test_a_group_that_took_no_part_raises_what_none_raises() -> None:
    class Other(OutputFileParser):
        _DEPTHS_PATTERN = re.compile(r"\[Depths\](?P<data>never)?")

    with pytest.raises(AttributeError, match="'NoneType' object has no attribute 'splitlines'"):
        Other._parse_vertical("[Depths]")


@pytest.mark.parametrize(
    "name", ["_DEPTHS_PATTERN", "_LEAKAGES_PATTERN", "_DRAINED_LAYERS_PATTERN"]
)
@pytest.mark.parametrize("parser_class", [PlainOutputFileParser, OutputFileParser])
def test_lines_are_taken_as_they_are_found_and_read_last(name: str, parser_class: Any) -> None:
    text = vertical(stresses(("A",), "wrong"))

    class WithoutLines(parser_class):  # type: ignore[misc]
        pass

    setattr(WithoutLines, name, re.compile(r"\[Vertical\](?P<data>never)?"))
    with pytest.raises(AttributeError, match="'NoneType' object has no attribute 'splitlines'"):
        WithoutLines._parse_vertical(text)

    class WrongLines(parser_class):  # type: ignore[misc]
        pass

    setattr(WrongLines, name, re.compile(r"\[Vertical\](?P<data>.*)", re.DOTALL))
    with pytest.raises(ValueError, match="'wrong'"):
        WrongLines._parse_vertical(text)


@pytest.mark.parametrize("parser_class", [PlainOutputFileParser, OutputFileParser])
def test_without_headers_the_rows_of_a_time_are_not_looked_at(parser_class: Any) -> None:
    class Other(parser_class):  # type: ignore[misc]
        _VERTICAL_DATA_AT_TIME = re.compile(r"(?P<time>\d\.\d) = Time(?P<data>never)?")

    def text(*headers: str) -> str:
        return vertical(time_dependent(headers, "1.0 = Time"))

    assert Other._parse_vertical(text(""))["vertical_data"] == {1.0: {}}
    with pytest.raises(AttributeError, match="'NoneType' object has no attribute 'splitlines'"):
        Other._parse_vertical(text("A"))


def test_an_overridden_vertical_is_called_for_each_block() -> None:
    texts = []

    class Other(OutputFileParser):
        @classmethod
        def _parse_vertical(cls, vertical: str) -> dict[str, Any]:
            texts.append(vertical)
            return super()._parse_vertical(vertical) | {"extra": cls.__name__}

    other = Other.__new__(Other)
    other._results = FULL
    verticals: dict[int, Any] = dict(other.vertical_results)
    assert [v["extra"] for v in verticals.values()] == ["Other", "Other"]
    assert all(t.startswith("[Vertical]") and t.endswith("[End of Vertical]") for t in texts)
    plain = parser_of(FULL).vertical_results
    assert [{k: v for k, v in r.items() if k != "extra"} for r in verticals.values()] == [
        *plain.values()
    ]


@pytest.mark.parametrize(
    ("operation", "name"),
    [
        ("_parse_verticals", "vertical_results"),
        ("_parse_residual_settlements", "residual_times"),
    ],
)
def test_an_overridden_operation_stands_behind_its_property(operation: str, name: str) -> None:
    namespace = {operation: classmethod(lambda cls, text: text)}
    other: Any = type("Other", (OutputFileParser,), namespace)
    parser = other(StringIO(FULL))
    parser._results = "text"
    assert getattr(parser, name) == "text"


def test_an_operation_patched_on_the_object_stands_behind_its_property(
    monkeypatch: pytest.MonkeyPatch,
) -> None:
    parser = parser_of(FULL)
    monkeypatch.setattr(parser, "_parse_verticals", lambda text: {1: {"text": text}})
    verticals: Any = parser.vertical_results
    assert verticals == {1: {"text": parser.raw_results}}


def test_the_constructor_calls_the_overridden_operation() -> None:
    class Other(OutputFileParser):
        @classmethod
        def _parse_results(cls, sld_file: str) -> str:
            return super()._parse_results(sld_file).upper()

    assert Other(StringIO(FULL)).raw_results.startswith("[RESULTS]")


def test_patterns_of_bytes_are_refused() -> None:
    class OfBytes(OutputFileParser):
        pass

    for name in PATTERNS:
        original = getattr(OutputFileParser, name)
        flags = original.flags & ~re.UNICODE
        setattr(OfBytes, name, re.compile(original.pattern.encode(), flags))
    text: Any = vertical("[Depths]", "1 = count", "1.0", "[End of Depths]").encode()
    with pytest.raises(TypeError, match="a result text must be of type str"):
        OfBytes._parse_vertical(text)


@pytest.mark.parametrize("parser_class", [PlainOutputFileParser, OutputFileParser])
def test_nothing_is_looked_up_for_verticals_that_are_not_there(parser_class: Any) -> None:
    refused = {"_parse_vertical": RuntimeError(), "_DEPTHS_PATTERN": RuntimeError()}
    cls = watched(parser_class, **refused)
    assert cls._parse_verticals(results("")) == {}
    assert cls.seen == ["_parse_verticals", "_VERTICAL_PATTERN"]


@pytest.mark.parametrize("error", [RuntimeError("no"), KeyboardInterrupt(), AttributeError("no")])
@pytest.mark.parametrize("parser_class", [PlainOutputFileParser, OutputFileParser])
def test_a_failure_to_look_up_a_pattern_is_raised(parser_class: Any, error: Any) -> None:
    cls = watched(parser_class, _STRESSES_PATTERN=error)
    with pytest.raises(type(error)) as raised:
        cls._parse_verticals(FULL)
    assert raised.value is error
    assert cls.seen == [
        "_parse_verticals",
        "_VERTICAL_PATTERN",
        "_parse_vertical",
        "_COORDINATE_PATTERN",
        "_DEPTHS_PATTERN",
        "_LEAKAGES_PATTERN",
        "_DRAINED_LAYERS_PATTERN",
        "_STRESSES_PATTERN",
    ]


def test_an_operation_that_puts_itself_back_is_called_once(
    monkeypatch: pytest.MonkeyPatch,
) -> None:
    def parse_once(text: str) -> Any:
        monkeypatch.undo()
        return "once"

    monkeypatch.setattr(OutputFileParser, "_parse_vertical", parse_once)
    verticals: Any = OutputFileParser._parse_verticals(FULL)
    assert verticals[1] == "once"
    assert verticals[2]["coordinates"] == {"z": 2.0}


@pytest.mark.parametrize("parser_class", [PlainOutputFileParser, OutputFileParser])
def test_the_constructor_looks_for_the_operation_before_it_asks_for_the_text(
    parser_class: Any,
) -> None:
    steps = []

    class Other(parser_class):  # type: ignore[misc]
        def __getattribute__(self, name: str) -> Any:
            steps.append(name)
            return super().__getattribute__(name)

    class Source:
        def getvalue(self) -> str:
            steps.append("getvalue")
            return FULL

    Other(Source())
    assert steps == ["_parse_results", "getvalue"]


@pytest.mark.parametrize("value", [b"bytes", 1, None])
@pytest.mark.parametrize(
    "operation",
    ["_parse_results", "_parse_verticals", "_parse_vertical", "_parse_residual_settlements"],
)
def test_what_is_no_text_is_refused_as_the_patterns_refuse_it(operation: str, value: Any) -> None:
    with pytest.raises(TypeError) as expected:
        getattr(PlainOutputFileParser, operation)(value)
    with pytest.raises(TypeError) as raised:
        getattr(OutputFileParser, operation)(value)
    assert str(raised.value) == str(expected.value)
