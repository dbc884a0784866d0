"""What the tests of the pages share."""

from pathlib import Path

import matplotlib
import matplotlib.pyplot as plt
import pytest
from markupsafe import Markup
from matplotlib.figure import Figure
from sembra.local.look import page_pictures

from tests.toolkit.look.made_files import column, cross_section, write_pair

matplotlib.use("agg")

Pair = tuple[Path, Path]


@pytest.fixture(scope="session", params=["1D", "2D"])
def pair(request: pytest.FixtureRequest, tmp_path_factory: pytest.TempPathFactory) -> Pair:
    """Input file and result file of a model."""
    model = column() if request.param == "1D" else cross_section()
    return write_pair(tmp_path_factory.mktemp("made"), model)


@pytest.fixture(scope="session")
def column_pair(tmp_path_factory: pytest.TempPathFactory) -> Pair:
    """Input file and result file of a column."""
    return write_pair(tmp_path_factory.mktemp("column"), column())


@pytest.fixture
def no_curves(monkeypatch: pytest.MonkeyPatch) -> None:
    """Leave out what takes most of the time of a page: arranging and writing its pictures."""

    def without_lines(figure: Figure, _name: str, _told: str) -> Markup:
        plt.close(figure)
        return Markup('<svg xmlns="http://www.w3.org/2000/svg"/>')

    monkeypatch.setattr(page_pictures, "svg", without_lines)
