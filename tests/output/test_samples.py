"""Result files of the real tool read alike by both readers."""

import os
from pathlib import Path

import pytest
from sembra.external.dsettlement import OutputFileParser

from benchmarks.plain.output_parser import OutputFileParser as PlainOutputFileParser
from tests.output.agreement import outcomes

ROOT = Path(__file__).resolve().parents[2]
SAMPLES = Path(os.environ.get("SEMBRA_SAMPLES", ROOT.parent / "shared" / "samples"))
FILES = sorted(SAMPLES.glob("*.sld"))

pytestmark = pytest.mark.skipif(
    not FILES, reason=f"no result files in {SAMPLES}; set SEMBRA_SAMPLES to their folder"
)


@pytest.mark.parametrize("path", FILES, ids=lambda path: path.stem)
@pytest.mark.parametrize("ends", ["as they are", "\n", "\r\n"])
def test_both_readers_agree_on_a_real_file(path: Path, ends: str) -> None:
    text = path.read_bytes().decode("cp1252")
    if ends != "as they are":
        text = text.replace("\r\n", "\n").replace("\n", ends)
    actual = outcomes(OutputFileParser, text)
    assert actual == outcomes(PlainOutputFileParser, text)
    assert actual["vertical_results"].startswith("{1: {'coordinates': {'x': ")


@pytest.mark.parametrize("path", FILES, ids=lambda path: path.stem)
def test_a_real_file_of_wider_characters_reads_alike(path: Path) -> None:
    text = path.read_bytes().decode("cp1252")
    expected = outcomes(OutputFileParser, text)
    for character in "\u0101\U0001f4a7":
        # In front of the results: the text has wider characters, the results are the same.
        wide = outcomes(OutputFileParser, character + text)
        assert wide == expected
        # Within them, where nothing reads it.
        text_within = text.replace("[End of Results]", f"{character}\n[End of Results]")
        within = outcomes(OutputFileParser, text_within)
        assert within["vertical_results"] == expected["vertical_results"]
