"""The `[Results]` block, and what is said of a file without one."""

import pytest
from sembra.errors import ParsingError
from sembra.external.dsettlement import OutputFileParser

from tests.output.blocks import lines, parser_of, residuals, results, vertical


def message_of(text: str) -> str:
    with pytest.raises(ParsingError) as raised:
        parser_of(text)
    assert type(raised.value) is ParsingError
    assert len(raised.value.args) == 1
    return str(raised.value)


@pytest.mark.parametrize("end", ["\n", "\r\n", "\r"])
def test_raw_results_hold_the_block_with_its_tags(end: str) -> None:
    text = lines("before", "[Results]", "something", "[End of Results]", "after", end=end)
    raw = parser_of(text).raw_results
    assert raw == lines("[Results]", "something", "[End of Results]", end=end)


def test_any_object_whose_getvalue_gives_the_text_will_do() -> None:
    class Source:
        def getvalue(self) -> str:
            return results("")

    assert OutputFileParser(Source()).raw_results.startswith("[Results]")  # type: ignore[arg-type]


def test_an_instance_holds_the_block_alone() -> None:
    assert list(vars(parser_of(results("text")))) == ["_results"]


def test_each_read_returns_new_objects() -> None:
    parser = parser_of(results(vertical("text"), residuals(("Vertical", "Time"), "1 2.0")))
    assert parser.vertical_results == parser.vertical_results
    assert parser.vertical_results is not parser.vertical_results
    assert parser.vertical_results[1]["depths"] is not parser.vertical_results[1]["depths"]
    assert parser.residual_times is not parser.residual_times


def test_only_the_first_of_two_blocks_is_read() -> None:
    text = results("first") + results("second")
    assert parser_of(text).raw_results == "[Results]\nfirst\n[End of Results]"


def test_one_empty_line_between_the_tags_gives_empty_mappings() -> None:
    parser = parser_of("[Results]\n\n[End of Results]")
    assert parser.vertical_results == {}
    assert parser.residual_times == {}


def test_tags_on_adjacent_lines_do_not_match() -> None:
    assert message_of("[Results]\n[End of Results]") == "sld-file contains no [Results]"


def test_tags_on_adjacent_lines_match_where_a_line_end_can_be_divided() -> None:
    # The CR serves the one tag and the LF the other.
    assert parser_of("[Results]\r\n[End of Results]").vertical_results == {}


def test_a_block_without_closing_tag_is_none() -> None:
    assert message_of("[Results]\ntext\n") == "sld-file contains no [Results]"


def test_the_message_names_the_last_piece_of_the_path() -> None:
    text = "FILENAME  : C:\\work\\my story.sld\n"
    assert message_of(text) == "my story.sld contains no [Results]"


@pytest.mark.parametrize("path", ["story.sld", "work/story.sld", ""])
def test_a_path_without_backslashes_is_used_whole(path: str) -> None:
    assert message_of(f"FILENAME\t: {path}\n") == f"{path} contains no [Results]"


def test_the_message_keeps_the_carriage_return_of_a_crlf() -> None:
    text = "FILENAME : C:\\story.sld\r\nnext\r\n"
    assert message_of(text) == "story.sld\r contains no [Results]"


def test_with_bare_cr_the_path_runs_on_to_the_last_of_them() -> None:
    text = "FILENAME : story.sld\rnext\rlast"
    assert message_of(text) == "story.sld\rnext contains no [Results]"


@pytest.mark.parametrize(
    "text",
    ["", "FILENAME : story.sld", "FILENAME: story.sld\n", "FILENAME :story.sld\n", "other\n"],
)
def test_without_a_fitting_line_the_message_has_a_word_for_the_file(text: str) -> None:
    assert message_of(text) == "sld-file contains no [Results]"


@pytest.mark.parametrize("end", ["\r\n", "mixed"])
def test_line_ends_of_other_kinds_give_equal_results(end: str) -> None:
    text = results(
        vertical(
            "  1.0 =  X co-ordinate", "[Depths]", "1 = Depth count", "-1.0", "[End of Depths]"
        ),
        residuals(("Vertical", "Time"), "1 2.0"),
    )
    other = text.replace("\n", "\r\n")
    if end == "mixed":
        half = len(text) // 2
        other = text[:half] + text[half:].replace("\n", "\r\n")
    one, two = parser_of(text), parser_of(other)
    assert one.vertical_results == two.vertical_results
    assert one.residual_times == two.residual_times


def test_with_bare_cr_a_coordinate_line_is_no_number() -> None:
    text = results(
        vertical("1.0 =  X co-ordinate", end="\r"), residuals(("V", "Time"), "1 2.0"), end="\r"
    )
    parser = parser_of(text.replace("\n", "\r"))
    assert parser.raw_results.startswith("[Results]\r")
    assert parser.residual_times == {1: {"Time": [2.0]}}
    with pytest.raises(
        ValueError, match=r"could not convert string to float: '\[Vertical\]\\r1.0'"
    ):
        _ = parser.vertical_results


@pytest.mark.parametrize("name", ["raw_results", "vertical_results", "residual_times"])
def test_properties_are_read_only(name: str) -> None:
    with pytest.raises(AttributeError):
        setattr(parser_of(results("")), name, None)


def test_results_have_their_type() -> None:
    assert OutputFileParser.__annotations__ == {"_results": "str"}
