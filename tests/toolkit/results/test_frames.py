"""Results as data frames."""

import subprocess
import sys
from io import StringIO
from pathlib import Path

import pandas as pd
import pytest
from sembra.local.results import ResultFile

from tests.output.blocks import at_time, residuals, results, stresses, time_dependent, vertical
from tests.output.blocks import time_settlement as time_settlement_block
from tests.toolkit.results.real_files import FILES

FULL = results(
    vertical(
        "  1.0 =  X co-ordinate",
        "  0.5 =  Z co-ordinate",
        time_settlement_block("0 0", "10 0.1"),
        *("[Depths]", "2 = count", "0.5", "-1.0", "[End of Depths]", ""),
        *("[Leakages]", "1 = count", "0.25", "[End of Leakages]", ""),
        *("[Drained Layers]", "1 = count", "1", "[End of Drained Layers]", ""),
        stresses(("Initial total stress",), "1", "20", count="  2  =  Depth step count "),
        time_dependent(("Settlement",), at_time("0.0", "0", "0"), at_time("10.0", "0.1", "0")),
    ),
    vertical(
        "  2.0 =  X co-ordinate",
        "  0.5 =  Z co-ordinate",
        time_settlement_block("0 0 0", "5 0.2 0.3"),
    ),
    residuals(("Vertical", "Time", "Settlement"), "1 10 0.1", "2 10 0.2", count="2"),
    "[Dissipation layer]\n 3  =  Layer Number \n 0.0 0.0\n 10.0 0.5\n[End of Dissipation layer]",
)
FILE = ResultFile(StringIO(FULL))
EMPTY = ResultFile(StringIO(results("")))
KINDS = ("vertical", "settlement", "residual", "stress", "time_dependent", "element", "dissipation")


def records(frame: pd.DataFrame) -> list[tuple[object, ...]]:
    """Return the rows, absent values as None."""
    rows = [tuple(row) for row in frame.itertuples(index=False)]
    return [tuple(None if pd.isna(value) else value for value in row) for row in rows]


def test_verticals() -> None:
    frame = FILE.vertical_frame()
    assert list(frame) == ["vertical", "x", "z"]
    assert records(frame) == [(1, 1.0, 0.5), (2, 2.0, 0.5)]


def test_settlements_of_verticals_with_unlike_loads() -> None:
    frame = FILE.settlement_frame()
    assert list(frame) == ["vertical", "time", "load_1", "load_2"]
    assert records(frame) == [
        (1, 0.0, 0.0, None),
        (1, 10.0, 0.1, None),
        (2, 0.0, 0.0, 0.0),
        (2, 5.0, 0.2, 0.3),
    ]


def test_residuals() -> None:
    frame = FILE.residual_frame()
    assert list(frame) == ["vertical", "Time", "Settlement"]
    assert records(frame) == [(1, 10.0, 0.1), (2, 10.0, 0.2)]


def test_stresses() -> None:
    frame = FILE.stress_frame()
    assert list(frame) == ["vertical", "depth", "Initial total stress"]
    assert records(frame) == [(1, 0.5, 1.0), (1, -1.0, 20.0)]


def test_what_depends_on_time() -> None:
    frame = FILE.time_dependent_frame()
    assert list(frame) == ["vertical", "time", "depth", "Settlement"]
    assert records(frame)[1:3] == [(1, 0.0, -1.0, 0.0), (1, 10.0, 0.5, 0.1)]
    wide = frame.pivot_table(index="time", columns="depth", values="Settlement")
    assert wide[0.5].to_dict() == {0.0: 0.0, 10.0: 0.1}


def test_elements() -> None:
    assert records(FILE.element_frame()) == [(1, 0.5, -1.0, 0.25, 1.0)]


def test_dissipation() -> None:
    assert records(FILE.dissipation_frame()) == [(3, 0.0, 0.0), (3, 10.0, 0.5)]


@pytest.mark.parametrize("kind", KINDS)
def test_without_results_a_frame_has_no_rows(kind: str) -> None:
    frame: pd.DataFrame = getattr(EMPTY, f"{kind}_frame")()
    assert frame.empty
    assert frame.columns[0] in ("vertical", "layer")


@pytest.mark.parametrize("path", FILES, ids=lambda path: path.stem)
def test_every_kind_of_frame_of_a_real_file_is_full(path: Path) -> None:
    file = ResultFile.read(path)
    verticals = file.vertical_results
    frames: dict[str, pd.DataFrame] = {kind: getattr(file, f"{kind}_frame")() for kind in KINDS}
    for kind, frame in frames.items():
        assert not frame.isna().any(axis=None), kind
    rows = {kind: len(frame) for kind, frame in frames.items()}
    assert rows["vertical"] == len(verticals)
    assert rows["settlement"] == sum(
        len(v["time_settlement_per_load"].get("time", ())) for v in verticals.values()
    )
    assert rows["time_dependent"] == sum(
        len(v["vertical_data"]) * len(v["depths"]) for v in verticals.values()
    )
    assert rows["element"] == sum(len(v["leakages"]) for v in verticals.values())


def test_without_pandas_the_reason_is_told() -> None:
    program = (
        "import sys; sys.modules['pandas'] = None\n"
        "from io import StringIO\n"
        "from sembra.local.results import ResultFile\n"
        "file = ResultFile(StringIO('[Results]\\n\\n[End of Results]'))\n"
        "assert file.vertical_results == {}\n"
        "file.vertical_frame()\n"
    )
    run = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True)
    assert run.returncode == 1
    assert run.stderr.splitlines()[-1] == (
        "ModuleNotFoundError: data frames need pandas, which is not installed: pip install pandas"
    )
