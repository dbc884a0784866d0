"""The command that shows a file."""

import re
import webbrowser
from pathlib import Path
from urllib.parse import urlparse
from urllib.request import url2pathname

import pytest
from sembra.local.look.__main__ import main

Pair = tuple[Path, Path]


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
