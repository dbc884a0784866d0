"""What the tests of the pages share."""

from pathlib import Path

import matplotlib
import pytest

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
