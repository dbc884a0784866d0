"""The page of mistakes: each goes wrong as it says, and what it says instead does not."""

import re
import traceback
import warnings
from functools import cache
from pathlib import Path
from typing import Any

import pytest
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    DSettlementAnalysis,
    Model1D,
)

from tests.examples.conftest import ROOT

PAGE = (ROOT / "docs" / "mistakes.md").read_text(encoding="utf-8")
INTRODUCTION, *SECTIONS = re.split(r"^### ", PAGE, flags=re.MULTILINE)
MISTAKES = dict(section.split("\n", 1) for section in SECTIONS)


def blocks(text: str, language: str) -> list[str]:
    """Return the blocks of code or of text in a part of the page."""
    return re.findall(rf"^```{language}\n(.*?)^```$", text, re.DOTALL | re.MULTILINE)


@cache
def result_file() -> str:
    """Calculate a column for the file that the page reads."""
    model = Model1D(CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI)
    model.create_material("Clay", 14.5, 14.5, cp=30.0, cp1=9.0, cs=270.0, cs1=80.0, cv=1e-7)
    model.update_geometry(-5.0, [(0.0, "Clay")], phreatic_level=-1.0)
    model.set_calculation_times(10)
    analysis = DSettlementAnalysis(model.generate_input_file())
    analysis.execute(timeout=60)
    return analysis.get_sld_file().getvalue()


@pytest.fixture
def names(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> dict[str, Any]:
    """What the introduction of the page defines, in a folder with a result file."""
    monkeypatch.chdir(tmp_path)
    Path("road.sld").write_text(result_file(), newline="")
    defined: dict[str, Any] = {}
    exec(blocks(INTRODUCTION, "python")[0], defined)
    return defined


def test_there_are_at_least_twenty() -> None:
    assert len(MISTAKES) >= 20
    assert len(SECTIONS) == len(MISTAKES)


@pytest.mark.parametrize("mistake", MISTAKES)
def test_it_goes_wrong_as_the_page_says(mistake: str, names: dict[str, Any]) -> None:
    section = MISTAKES[mistake]
    wrong, *right = blocks(section, "python")
    quoted = blocks(section, "text")
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")  # A worker may warn of what is not refused.
        if quoted:
            (message,) = quoted
            with pytest.raises(Exception) as raised:  # noqa: PT011
                exec(wrong, names)
            # With the notes that stand below its text, each a line.
            lines = traceback.format_exception_only(raised.value)
            last = "".join(lines[-1 - len(getattr(raised.value, "__notes__", ())) :])
            pattern = ".*".join(map(re.escape, message.strip().split("...")))
            assert re.fullmatch(rf"(\w+\.)*{pattern}", last.strip()), last
        else:
            exec(wrong, names)
        for snippet in right:
            exec(snippet, names)
    assert quoted or "nothing is refused" in section.lower() or "empty" in mistake


def test_other_messages_that_are_told_are_true(names: dict[str, Any]) -> None:
    for parameter, message in (("'road.sld'", "'str' object has no attribute 'getvalue'"),):
        assert message in " ".join(PAGE.split())
        with pytest.raises(AttributeError, match=re.escape(message)):
            exec(f"ds.OutputFileParser({parameter})", names)
    assert "`KeyError: 0`" in PAGE
    with pytest.raises(KeyError, match=r"^0$"):
        exec("ResultFile.read('road.sld').residual_times[0]", names)
