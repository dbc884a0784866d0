"""`ResultFile` reads what real files write."""

import random
from io import StringIO
from pathlib import Path

import pytest
from sembra.errors import ParsingError
from sembra.external.dsettlement import OutputFileParser
from sembra.local.results import ResultFile

from tests.output.agreement import outcomes
from tests.output.blocks import lines, residuals, results, stresses, vertical
from tests.toolkit.results.real_files import FILES

REAL_COUNT = "     30  =  Depth step count "
ENDS = pytest.mark.parametrize("end", ["\n", "\r\n", "\r"], ids=["LF", "CR LF", "CR"])


def parsers(text: str, end: str) -> tuple[OutputFileParser, ResultFile]:
    """Make both readers of a text with other line ends."""
    text = text.replace("\n", end)
    return (
        OutputFileParser(StringIO(text, newline="")),
        ResultFile(StringIO(text, newline="")),
    )


@ENDS
def test_a_blank_behind_the_count_is_taken(end: str) -> None:
    text = results(vertical(stresses(("A", "B"), " 1 2 ", " 3 4 ", count=REAL_COUNT)))
    parser, file = parsers(text, end)
    assert parser.vertical_results[1]["stresses"] == {}
    assert file.vertical_results[1]["stresses"] == {"A": [1.0, 3.0], "B": [2.0, 4.0]}


@ENDS
def test_stresses_without_a_blank_are_read_as_ever(end: str) -> None:
    parser, file = parsers(results(vertical(stresses(("A",), "1", "2"))), end)
    assert file.vertical_results == parser.vertical_results
    assert file.vertical_results[1]["stresses"] == {"A": [1.0, 2.0]}


@ENDS
@pytest.mark.parametrize("rows", [(), ("     1  10  0.1",)])
@pytest.mark.parametrize("blocks", [1, 2])
def test_residual_blocks_without_rows_are_empty(
    end: str, rows: tuple[str, ...], blocks: int
) -> None:
    block = lines(residuals(("Vertical", "Time", "Settlement"), *rows), "[END OF RESIDUALS]")
    _, file = parsers(results(*[block] * blocks), end)
    expected = {1: {"Time": [10.0], "Settlement": [0.1]}} if rows else {}
    assert file.residual_times == expected


def test_a_bad_row_is_told() -> None:
    text = results(
        vertical(stresses(("A",), "[1]", count=REAL_COUNT)),
        residuals(("Vertical", "Time"), "1 [Time"),
    )
    _, file = parsers(text, "\n")
    with pytest.raises(ValueError, match=r"'\[1\]'"):
        _ = file.vertical_results
    with pytest.raises(ValueError, match=r"'\[Time'"):
        _ = file.residual_times


def test_well_formed_blocks_that_the_parser_reads_are_read_alike() -> None:
    chance = random.Random("read alike")
    for _ in range(300):
        headers = tuple(chance.choices(("A", "B", "", "[m]"), k=chance.randint(1, 3)))
        rows = [f" 1 {row} 3.5" for row in range(chance.randint(0, 3))] or [""]
        text = results(
            vertical("1.0 =  X co-ordinate", stresses(headers, *rows)),
            residuals(("Vertical", *headers), *rows),
        )
        ends = chance.choice((("\n",), ("\r\n",), ("\r\n", "\n")))
        text = "".join(line + chance.choice(ends) for line in text.split("\n"))
        assert outcomes(ResultFile, text) == outcomes(OutputFileParser, text), text


def test_dissipation_is_read_by_layer() -> None:
    text = lines(
        "[Dissipation in Layers]",
        "      1  =  Number of Layers ",
        "      2  =  Number of time steps ",
        "[Dissipation layer]",
        "      1  =  Layer Number ",
        "   0.0000000      0.0000000   ",
        "  10.0000000      0.5000000   ",
        "[End of Dissipation layer]",
        "[End of Dissipation in Layers]",
    )
    for end in ("\n", "\r\n"):
        _, file = parsers(results(text), end)
        assert file.dissipation == {1: {"time": [0.0, 10.0], "degree": [0.0, 0.5]}}
    assert parsers(results(""), "\n")[1].dissipation == {}


def test_a_file_is_read_from_the_disk_as_it_is(tmp_path: Path) -> None:
    path = tmp_path / "road.sld"
    path.write_bytes(b"Gr\xf6\xdfe \x96 \x81\r\n[Results]\r\n\xb0\x81\r\n[End of Results]\r\n")
    for given in (path, str(path)):
        assert ResultFile.read(given).raw_results == (
            "[Results]\r\n\N{DEGREE SIGN}\\x81\r\n[End of Results]"
        )


def test_a_file_of_the_local_worker_keeps_its_names(tmp_path: Path) -> None:
    path = tmp_path / "road.sld"
    path.write_bytes("[Results]\nT\u00e9\u00e9k\n[End of Results]\n".encode())
    assert "T\u00e9\u00e9k" in ResultFile.read(path).raw_results


def test_a_failed_calculation_has_no_results(tmp_path: Path) -> None:
    path = tmp_path / "road.sld"
    path.write_bytes(b"FILENAME    : C:\\work\\road.sld\n[RUN]\n")
    with pytest.raises(ParsingError, match=r"^road\.sld contains no \[Results\]$"):
        ResultFile.read(path)
    with pytest.raises(FileNotFoundError):
        ResultFile.read(tmp_path / "other.sld")


def test_a_derived_class_reads_files_of_its_own_kind(tmp_path: Path) -> None:
    class Derived(ResultFile):
        pass

    path = tmp_path / "road.sld"
    path.write_bytes(results("").encode())
    assert type(Derived.read(path)) is Derived


@pytest.mark.parametrize("path", FILES, ids=lambda path: path.stem)
def test_a_real_file_is_read_whole(path: Path) -> None:
    file = ResultFile.read(path)
    text = file.raw_results
    for vertical_ in file.vertical_results.values():
        assert bool(vertical_["stresses"]) == ("[Stresses]" in text)
        for column in vertical_["stresses"].values():
            assert len(column) == len(vertical_["depths"])
    assert bool(file.dissipation) == ("[Dissipation in Layers]" in text)
    block = text[text.index("[RESIDUAL SETTLEMENT DATA]") :].splitlines()
    rows = block[1 : block.index("[END OF RESIDUAL SETTLEMENT DATA]")]
    assert sum(len(table["Time"]) for table in file.residual_times.values()) == len(rows)
