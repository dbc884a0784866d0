"""The comparison on many texts keeps what it was at work on, whatever becomes of it."""

import json
import os
import re
import subprocess
import sys
from pathlib import Path

import pytest

from fuzz.current_text import CurrentText, read_current_text
from tests.output.result_texts import ResultTexts

ROOT = Path(__file__).resolve().parents[2]
COUNT = 60
FATAL = 41
SCRIPT = """
import ctypes, sys, time
from pathlib import Path
import fuzz.compare_readers as readers

fatal = ascii({text!r})
readers.FINDINGS = Path({findings!r})
readers.difference = lambda text: {act} if ascii(text) == fatal else None
sys.exit(readers.run({count}, 1, "seed", limit=1.0))
"""


def fatal_text() -> str:
    texts = ResultTexts("seed-0")
    return [texts.next() for _ in range(COUNT)][FATAL]


@pytest.mark.parametrize(
    ("act", "shown"),
    [
        ("ctypes.string_at(0)", "Segmentation fault"),
        ("time.sleep(60)", "Timeout"),
        ("1 / 0", ""),
        ("'differs'", ""),
    ],
)
def test_the_text_that_breaks_the_comparison_is_saved(act: str, shown: str, tmp_path: Path) -> None:
    text = fatal_text()
    script = SCRIPT.format(text=text, findings=str(tmp_path), act=act, count=COUNT)
    command = [sys.executable, "-c", script]
    # Where the tests run under a sanitizer, it is not to take this fault for one of the module.
    options = f"{os.environ.get('ASAN_OPTIONS', '')}:handle_segv=0"
    done = subprocess.run(
        command,
        cwd=ROOT,
        env=os.environ | {"ASAN_OPTIONS": options},
        capture_output=True,
        text=True,
        timeout=60,
    )
    assert done.returncode == 1
    assert shown in done.stderr
    assert re.search(r"^seed seed: \d+ texts compared in \d+ s, 1 findings", done.stdout, re.M)
    (saved,) = tmp_path.iterdir()
    assert json.loads(saved.read_text())["text"] == text


def test_the_current_text_is_read_back_as_far_as_there_is_room(tmp_path: Path) -> None:
    path = tmp_path / "text"
    current = CurrentText(path, room=100)
    assert read_current_text(path) is None
    for text in ("[Vertical]\r\n", "\ud800\x00", "", "é"):
        current.set(text)
        assert read_current_text(path) == (text or None)
    current.set("1" * 200)
    assert read_current_text(path) == "1" * 23
    current.clear()
    assert read_current_text(path) is None
