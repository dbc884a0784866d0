"""The Python code of the documentation, a test per page.

What stands further down on a page goes on from what stands above, so a page is not to be torn apart
by running tests in several processes.
"""

import os
from collections.abc import Iterator
from io import StringIO
from pathlib import Path
from tempfile import TemporaryDirectory
from typing import Any

import pytest
import sembra.external.dsettlement as ds
from sybil import Document, Sybil
from sybil.parsers.myst import PythonCodeBlockParser

PAGES = (
    "tutorials/*.md",
    "how-to/soil-models.md",
    "how-to/drains.md",
    "how-to/staged-loads.md",
    "how-to/testing.md",
    "reference/*.md",
)
"""Pages that stand alone."""

AFTERWARDS = ("how-to/results.md", "how-to/data-frames.md", "how-to/existing-files.md")
"""Pages that go on from a calculation that has been done."""

HERE = Path.cwd()
FOLDERS: list[TemporaryDirectory[str]] = []


def enter(namespace: dict[str, Any]) -> None:
    """Let a page write its files into a folder of its own."""
    FOLDERS.append(TemporaryDirectory())
    namespace["DOCS"] = Path(__file__).parent
    os.chdir(FOLDERS[-1].name)


def leave(_: dict[str, Any]) -> None:
    """Take the folder away."""
    os.chdir(HERE)
    FOLDERS.pop().cleanup()


def calculate(namespace: dict[str, Any]) -> None:
    """Let a page find what a calculation leaves: model, input file, analysis, files on the disk."""
    enter(namespace)
    model = ds.Model1D(ds.CalculationModel.NEN_KOPPEJAN, ds.ConsolidationModel.TERZAGHI)
    model.create_material("Clay", 14.5, 14.5, cp=30.0, cp1=9.0, cs=270.0, cs1=80.0, cv=1e-7)
    model.update_geometry(-5.0, [(0.0, "Clay")], phreatic_level=-1.0)
    model.create_uniform_load("Sand", 0, 18.0, 1.5, 0.0)
    model.set_calculation_times(10, 100, 1000)
    input_file = model.generate_input_file(dissipation_calculation=model.verticals[0])
    Path("road.sli").write_bytes(input_file.getvalue())
    analysis = ds.DSettlementAnalysis(input_file)
    analysis.execute(timeout=60)
    result: StringIO = analysis.get_sld_file()
    Path("road.sld").write_text(result.getvalue(), newline="")
    namespace |= {"ds": ds, "model": model, "input_file": input_file, "analysis": analysis}


PARSERS = [PythonCodeBlockParser()]
SYBILS = (
    Sybil(PARSERS, patterns=PAGES, setup=enter, teardown=leave),
    Sybil(PARSERS, patterns=AFTERWARDS, setup=calculate, teardown=leave),
)


class Page(pytest.File):
    """A page of the documentation."""

    def collect(self) -> Iterator["Code"]:
        """Yield one test, if there is code on the page."""
        for sybil in SYBILS:
            if sybil.should_parse(self.path):
                document = sybil.parse(self.path)
                if any(document.examples()):
                    yield Code.from_parent(self, name="code", sybil=sybil, document=document)


class Code(pytest.Item):
    """The code of a page, from top to bottom."""

    def __init__(self, *, sybil: Sybil, document: Document, **of_item: Any) -> None:
        super().__init__(**of_item)
        self._sybil = sybil
        self._document = document

    def setup(self) -> None:
        """Make what the page begins with."""
        assert self._sybil.setup is not None
        self._sybil.setup(self._document.namespace)

    def runtest(self) -> None:
        """Run the blocks one after the other."""
        for example in self._document.examples():
            example.evaluate()

    def teardown(self) -> None:
        """Take away what the page has made."""
        assert self._sybil.teardown is not None
        self._sybil.teardown(self._document.namespace)


def pytest_collect_file(file_path: Path, parent: pytest.Collector) -> Page | None:
    """Collect the pages."""
    if any(sybil.should_parse(file_path) for sybil in SYBILS):
        return Page.from_parent(parent, path=file_path)
    return None
