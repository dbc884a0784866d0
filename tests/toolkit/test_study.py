"""Studies of many variants."""

import csv
import os
import re
import signal
import subprocess
import sys
import threading
from collections.abc import Sequence
from contextlib import suppress
from dataclasses import dataclass
from pathlib import Path
from typing import Any, NamedTuple

import numpy as np
import pytest
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    DSettlementAnalysis,
    Model1D,
    OutputFileParser,
)
from sembra.local.jobs.engine_error import EngineError
from sembra.local.study import Row, Value, run_study

from tests.toolkit.processes import application, await_that

COLUMNS = ["settlement [m]", "times"]


class Height(NamedTuple):
    height: float
    name: str = "a"


def build(variant: Height) -> Model1D:
    model = Model1D(
        CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI, create_default_materials=False
    )
    cp1 = np.nan if variant.name == "no number" else 12.0
    model.create_material("Clay", 15.0, 15.0, cp=36, cp1=cp1, cs=300, cs1=100, cv=1e-7)
    model.update_geometry(-4.0, [(0.0, "Clay")], phreatic_level=-1.0)
    if variant.name == "no model":
        raise LookupError("no such\nmodel")
    weight = -1000.0 if variant.name == "floats" else 18.0
    model.create_uniform_load("Sand", 0, weight, variant.height, 0.0)
    model.set_calculation_times(100, 10000)
    return model


def read(results: OutputFileParser) -> list[Value]:
    settlements = results.residual_times[1]["Settlement"]
    return [settlements[-1], len(settlements)]


def lines_of(path: Path) -> list[list[str]]:
    assert path.read_bytes().startswith(b"\xef\xbb\xbfvariant,")
    assert path.read_bytes().count(b"\r\n") == path.read_bytes().count(b"\n")
    with path.open(encoding="utf-8-sig", newline="") as file:
        return list(csv.reader(file))


def alone(variant: Height) -> float:
    analysis = DSettlementAnalysis(build(variant).generate_input_file())
    analysis.execute()
    value = read(OutputFileParser(analysis.get_sld_file()))[0]
    assert isinstance(value, float)
    return value


VARIANTS = [Height(1.0), Height(2.0, 'é; "b", c'), Height(0.5)]


def test_rows_are_those_of_the_variants_one_by_one(tmp_path: Path) -> None:
    rows = run_study(VARIANTS, build, COLUMNS, read, tmp_path / "study.csv")
    assert rows == [Row(variant, (alone(variant), 2), None) for variant in VARIANTS]


def test_table_can_be_read_by_a_spreadsheet(tmp_path: Path) -> None:
    rows = run_study(VARIANTS, build, COLUMNS, read, tmp_path / "study.csv")
    header, *lines = lines_of(tmp_path / "study.csv")
    assert header == ["variant", "height", "name", "settlement [m]", "times", "error"]
    for line, variant, row in zip(sorted(lines), VARIANTS, rows, strict=True):
        assert row.values is not None
        assert line[1:3] == [repr(variant.height), variant.name]
        assert line[3:] == [repr(row.values[0]), "2", ""]


def test_variant_that_fails_is_a_row_and_the_rest_goes_on(tmp_path: Path) -> None:
    names = ["a", "no model", "no number", "floats", "b"]
    variants = [Height(1.0, name) for name in names]
    rows = run_study(variants, build, COLUMNS, read, tmp_path / "study.csv")
    assert [row.values is None for row in rows] == [False, True, True, True, False]
    errors = [row.error or "" for row in rows]
    assert errors[1] == "LookupError: no such model"
    assert "material 'Clay', cp1: nan is not a finite number" in errors[2]
    assert errors[3].startswith(
        'ExecutionError: The load "Sand" brings the effective stress down to '
    )
    _, *lines = lines_of(tmp_path / "study.csv")
    assert sorted(line[-1] for line in lines) == sorted(errors)
    assert run_study(variants, build, COLUMNS, read, tmp_path / "study.csv") == rows


@pytest.mark.parametrize(
    ("value", "text"),
    [(np.float64(0.1), "0.1"), (np.int64(3), "3"), (1e300, "1e+300"), ("a\nb", "a b"), (None, "")],
)
def test_values_of_other_types(tmp_path: Path, value: Any, text: str) -> None:
    run_study(VARIANTS[:1], build, ["a"], lambda _: [value], tmp_path / "study.csv")
    assert lines_of(tmp_path / "study.csv")[1][3] == text


def test_values_that_do_not_fit_the_columns_are_an_error(tmp_path: Path) -> None:
    (row,) = run_study(VARIANTS[:1], build, ["a"], read, tmp_path / "study.csv")
    assert row.error == "ValueError: 2 values for 1 columns"


def test_study_goes_on_where_it_stopped(tmp_path: Path) -> None:
    path = tmp_path / "study.csv"
    built: list[float] = []

    def build_noted(variant: Height) -> Model1D:
        built.append(variant.height)
        return build(variant)

    whole = run_study(VARIANTS, build, COLUMNS, read, path)
    text = path.read_bytes()
    first = text.index(b"\r\n", text.index(b"\r\n") + 2) + 2
    path.write_bytes(text[:first] + b'2,2.0,"a row that was cut o')
    (done,) = [int(line[0]) for line in csv.reader(text[3:first].decode().splitlines()[1:])]
    assert run_study(VARIANTS, build_noted, COLUMNS, read, path) == whole
    assert len(built) == 2
    assert VARIANTS[done - 1].height not in built
    assert sorted(lines_of(path)) == sorted(csv.reader(text.decode("utf-8-sig").splitlines()))
    built.clear()
    assert run_study(VARIANTS, build_noted, COLUMNS, read, path) == whole
    assert built == []


def test_exit_from_within_a_study_ends_it(tmp_path: Path) -> None:
    def leave(_: Height) -> Model1D:
        raise SystemExit("enough")

    with pytest.raises(SystemExit, match="enough"):
        run_study(VARIANTS, leave, COLUMNS, read, tmp_path / "study.csv")
    assert run_study(VARIANTS, build, COLUMNS, read, tmp_path / "study.csv")[0].error is None


def test_engine_that_is_lost_stops_the_study(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    """The variants that it was lost for haven't failed: they are calculated when it is back."""
    path = tmp_path / "study.csv"
    monkeypatch.setenv("SEMBRA_WORKERS", "1")

    def build_or_lose(variant: Height) -> Model1D:
        if variant.height == 3.0:
            monkeypatch.setenv("SEMBRA_WORKERS", "none")
        return build(variant)

    variants = [Height(height / 2) for height in range(1, 13)]
    with pytest.raises(EngineError, match="SEMBRA_WORKERS must be"):
        run_study(variants, build_or_lose, COLUMNS, read, path)
    _, *lines = lines_of(path)
    assert 0 < len(lines) < 12
    assert [line[-1] for line in lines] == [""] * len(lines)
    monkeypatch.delenv("SEMBRA_WORKERS")
    rows = run_study(variants, build, COLUMNS, read, path)
    assert [row.error for row in rows] == [None] * 12


@pytest.mark.parametrize("url", ["http://127.0.0.1:9", "nowhere"])
def test_service_that_is_lost_stops_the_study(
    url: str, tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    """Else it would stand in the table as the error of each variant."""
    path = tmp_path / "study.csv"
    monkeypatch.setenv("SEMBRA_ADDON_URL", url)
    with pytest.raises(EngineError, match=r"127\.0\.0\.1|SEMBRA_ADDON_URL"):
        run_study(VARIANTS, build, COLUMNS, read, path)
    assert len(lines_of(path)) == 1
    monkeypatch.delenv("SEMBRA_ADDON_URL")
    rows = run_study(VARIANTS, build, COLUMNS, read, path)
    assert [row.error for row in rows] == [None, None, None]


@pytest.mark.parametrize(
    ("variants", "columns"),
    [
        ([Height(1.0), Height(9.0), Height(0.5)], COLUMNS),
        (VARIANTS[:2], COLUMNS),
        (VARIANTS, ["settlement [m]", "count"]),
    ],
)
def test_table_of_another_study_is_left_alone(
    tmp_path: Path, variants: Sequence[Height], columns: list[str]
) -> None:
    path = tmp_path / "study.csv"
    run_study(VARIANTS, build, COLUMNS, read, path)
    text = path.read_bytes()
    with pytest.raises(ValueError, match="another study"):
        run_study(variants, build, columns, read, path)
    assert path.read_bytes() == text


@dataclass
class Described:
    height: float
    note: str


@pytest.mark.parametrize(
    ("variant", "header", "fields"),
    [
        (Described(1.5, "x\u2028y"), ["height", "note"], ["1.5", "x y"]),
        ({"height": np.float32(0.5), 3: None}, ["height", "3"], ["0.5", ""]),
        (1.5, ["value"], ["1.5"]),
        ("text", ["value"], ["text"]),
        ((1, 2), ["value"], ["(1, 2)"]),
    ],
)
def test_any_object_is_a_variant(
    tmp_path: Path, variant: Any, header: list[str], fields: list[str]
) -> None:
    path = tmp_path / "study.csv"
    (row,) = run_study([variant], lambda _: build(Height(1.0)), COLUMNS, read, path)
    assert row.variant is variant
    assert lines_of(path)[0][1:-3] == header
    assert lines_of(path)[1][1:-3] == fields


@pytest.mark.parametrize("timeout", [0, -1, np.nan])
def test_timeout_that_is_none_leaves_no_row(timeout: float, tmp_path: Path) -> None:
    path = tmp_path / "study.csv"
    with pytest.raises(ValueError, match="timeout must be above 0"):
        run_study(VARIANTS, build, COLUMNS, read, path, timeout=timeout)
    assert not path.exists()


def test_no_variants(tmp_path: Path) -> None:
    assert run_study([], build, COLUMNS, read, tmp_path / "study.csv") == []


def test_variants_that_have_not_the_same_fields(tmp_path: Path) -> None:
    path = tmp_path / "study.csv"
    with pytest.raises(ValueError, match="all variants must have the same fields"):
        run_study([Height(1.0), {"height": 2.0}], lambda _: build(Height(1.0)), COLUMNS, read, path)
    assert not path.exists()


def test_results_that_are_texts_come_back_from_the_table(tmp_path: Path) -> None:
    def judge(results: OutputFileParser) -> list[Value]:
        settlement = results.residual_times[1]["Settlement"][-1]
        return [settlement, "too much" if settlement > 0.1 else None]

    for _ in range(2):
        rows = run_study(
            VARIANTS[:1], build, ["settlement [m]", "verdict"], judge, tmp_path / "a.csv"
        )
        assert [row.values for row in rows] == [(alone(VARIANTS[0]), "too much")]


def test_columns_of_the_same_name(tmp_path: Path) -> None:
    with pytest.raises(ValueError, match="two columns have the same name"):
        run_study(VARIANTS, build, ["height", "b"], read, tmp_path / "study.csv")


def test_nothing_is_shown_without_a_terminal(
    tmp_path: Path, capfd: pytest.CaptureFixture[str]
) -> None:
    run_study(VARIANTS, build, COLUMNS, read, tmp_path / "study.csv")
    assert capfd.readouterr() == ("", "")


def test_no_thread_stays_behind(tmp_path: Path) -> None:
    run_study(VARIANTS, build, COLUMNS, read, tmp_path / "study.csv")
    assert not [t for t in threading.enumerate() if t.name == "sembra-study"]


PROGRAM = """
import sys, time
from pathlib import Path
from sembra.local.study import run_study
from tests.toolkit.test_study import COLUMNS, Height, build, read

def build_slowly(variant):
    if variant.height > 3:
        while not Path(sys.argv[2]).exists():
            time.sleep(0.01)
    return build(variant)

variants = [Height(height / 2) for height in range(1, 13)]
rows = run_study(variants, build_slowly, COLUMNS, read, sys.argv[1])
print(len(rows), sum(row.error is None for row in rows))
"""


@pytest.mark.parametrize("number", [signal.SIGINT, signal.SIGKILL])
def test_interrupted_study_keeps_its_rows(tmp_path: Path, number: signal.Signals) -> None:
    path, gate = tmp_path / "study.csv", tmp_path / "gate"
    code = PROGRAM.replace("sys.argv[1]", repr(str(path))).replace("sys.argv[2]", repr(str(gate)))
    with application(code, tmp_path) as program:
        assert await_that(lambda: path.exists() and path.read_bytes().count(b"\r\n") == 7, 90)
        program.send_signal(number)
        if number == signal.SIGINT:
            gate.touch()
        program.communicate(timeout=60)
        assert program.returncode == -number
    kept = path.read_bytes()
    assert kept.count(b"\r\n") >= 7
    gate.touch()
    with application(code, tmp_path) as program:
        output, _ = program.communicate(timeout=90)
    assert output == "12 12\n"
    assert path.read_bytes().startswith(kept)


def test_one_bar_on_a_terminal(tmp_path: Path) -> None:
    pty = pytest.importorskip("pty")
    ours, theirs = pty.openpty()
    code = PROGRAM.replace("sys.argv[1]", repr(str(tmp_path / "study.csv")))
    program = subprocess.Popen(
        [sys.executable, "-c", code.replace("sys.argv[2]", repr(str(tmp_path)))],
        stderr=theirs,
        stdout=subprocess.DEVNULL,
        env={**os.environ, "TERM": "xterm", "PYTHONPATH": os.pathsep.join(filter(None, sys.path))},
    )
    os.close(theirs)
    shown = b""
    with suppress(OSError):  # the terminal's end, on Linux
        while chunk := os.read(ours, 4096):
            shown += chunk
    os.close(ours)
    assert program.wait(30) == 0
    plain = re.sub(rb"\x1b\[[0-9;?]*[a-zA-Z]", b"", shown).decode()
    assert "12/12 done, 0 failed" in plain
    assert "left" in plain
    assert "dsettlement" not in plain
