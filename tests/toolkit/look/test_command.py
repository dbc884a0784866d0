"""The command that shows a file."""

import os
import re
import subprocess
import sys
import webbrowser
from pathlib import Path
from urllib.parse import urlparse
from urllib.request import url2pathname

import pytest
from sembra.local.look.__main__ import main

Pair = tuple[Path, Path]
pytestmark = pytest.mark.usefixtures("no_curves")


def test_a_page_is_written(pair: Pair, tmp_path: Path, capsys: pytest.CaptureFixture[str]) -> None:
    page = tmp_path / "page.html"
    assert main([*map(str, pair), "-o", str(page)]) == 0
    assert page.read_text("utf-8").startswith("<!DOCTYPE html>")
    assert capsys.readouterr().out == ""


def test_a_page_is_opened(column_pair: Pair, monkeypatch: pytest.MonkeyPatch) -> None:
    opened: list[str] = []
    monkeypatch.setattr(webbrowser, "open", opened.append)
    assert main([str(column_pair[1])]) == 0
    [address] = opened
    path = Path(url2pathname(urlparse(address).path))
    assert "A &lt;made&gt; file" in path.read_text("utf-8")
    path.unlink()


def test_a_file_that_the_worker_calculates(
    pair: Pair, tmp_path: Path, capsys: pytest.CaptureFixture[str]
) -> None:
    page = tmp_path / "page.html"
    assert main([str(pair[0]), "--check", "-o", str(page)]) == 0
    assert capsys.readouterr().out == "The local worker calculates this file.\n"
    assert "The local worker calculates this file." in page.read_text("utf-8")


def test_a_file_that_the_worker_refuses(
    column_pair: Pair, tmp_path: Path, capsys: pytest.CaptureFixture[str]
) -> None:
    path, page = tmp_path / "fit.sli", tmp_path / "page.html"
    text = column_pair[0].read_text("utf-8")
    path.write_text(text.replace("0 : Use fit factors = FALSE", "1 : Use fit factors = TRUE"))
    assert main([str(path), "--check", "-o", str(page)]) == 1
    told = "The local worker refuses this file. The worker does not cover fit factors."
    assert capsys.readouterr().out == f"{told}\n"
    assert told in page.read_text("utf-8")


def test_a_file_whose_numbers_are_too_large(
    column_pair: Pair, tmp_path: Path, capsys: pytest.CaptureFixture[str]
) -> None:
    path, page = tmp_path / "large.sli", tmp_path / "page.html"
    text = column_pair[0].read_text("utf-8")
    path.write_text(text.replace("        18.00        1.500        0.000", " 1e200 1e200 0.0"))
    assert main([str(path), "--check", "-o", str(page)]) == 1
    assert "holds numbers that are too large or too small" in capsys.readouterr().out


def test_what_is_left_away_is_told(
    column_pair: Pair, tmp_path: Path, capsys: pytest.CaptureFixture[str]
) -> None:
    path = tmp_path / "probabilistic.sli"
    text = column_pair[0].read_text("utf-8")
    path.write_text(text.replace("0 : Probabilistic = FALSE", "1 : Probabilistic = TRUE"))
    assert main([str(path), "--check", "-o", str(tmp_path / "page.html")]) == 0
    assert re.search(r"reliability analysis .* left away", capsys.readouterr().out)


@pytest.mark.parametrize("arguments", [["missing.sli"], [], ["a", "b", "c"]])
def test_wrong_calls(arguments: list[str], capsys: pytest.CaptureFixture[str]) -> None:
    with pytest.raises(SystemExit) as end:
        main(arguments)
    assert end.value.code == 2
    assert "python -m sembra.local.look: error: " in capsys.readouterr().err


def test_a_file_of_another_kind_is_named(
    tmp_path: Path, capsys: pytest.CaptureFixture[str]
) -> None:
    path = tmp_path / "road.csv"
    path.write_text("level,soil\n0.0,clay\n")
    with pytest.raises(SystemExit) as end:
        main([str(path)])
    assert end.value.code == 2
    assert f"{path} is no input or result file of D-Settlement" in capsys.readouterr().err


def test_a_page_that_cannot_be_written(
    column_pair: Pair, tmp_path: Path, capsys: pytest.CaptureFixture[str]
) -> None:
    with pytest.raises(SystemExit) as end:
        main([str(column_pair[0]), "-o", str(tmp_path / "missing" / "page.html")])
    # Not the status by which the local worker refuses a file.
    assert end.value.code == 2
    assert "No such file or directory" in capsys.readouterr().err


def test_pictures_that_cannot_be_drawn(
    monkeypatch: pytest.MonkeyPatch, capsys: pytest.CaptureFixture[str]
) -> None:
    monkeypatch.setitem(sys.modules, "matplotlib", None)
    with pytest.raises(SystemExit) as end:
        main(["made.sli"])
    assert end.value.code == 2
    assert "need matplotlib: pip install matplotlib" in capsys.readouterr().err


def test_pictures_that_cannot_be_drawn_by_the_module_that_is_run() -> None:
    program = (
        "import runpy, sys; sys.modules['matplotlib'] = None; sys.argv = ['look', 'made.sli'];"
        "runpy.run_module('sembra.local.look', run_name='__main__')"
    )
    done = subprocess.run(
        [sys.executable, "-c", program],
        capture_output=True,
        text=True,
        timeout=60,
        check=False,
        env={**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path))},
    )
    assert done.returncode == 2
    assert "need matplotlib: pip install matplotlib" in done.stderr


def test_the_command_is_run_by_its_module() -> None:
    done = subprocess.run(
        [sys.executable, "-m", "sembra.local.look", "missing.sli"],
        capture_output=True,
        text=True,
        timeout=60,
        check=False,
        env={**os.environ, "PYTHONPATH": os.pathsep.join(filter(None, sys.path))},
    )
    assert (done.returncode, done.stdout) == (2, "")
    assert "No such file" in done.stderr
