"""Running the examples as a user does: each in an interpreter of its own."""

import subprocess
import sys
from collections.abc import Callable
from pathlib import Path

import pytest

from tests.examples.showcase_run import Showcase

ROOT = Path(__file__).resolve().parents[2]

Run = Callable[..., str]


@pytest.fixture(scope="session")
def run_example() -> Run:
    """Run Python with arguments at the root of the repository; return what it printed."""

    def run(*arguments: str, given: str | None = None) -> str:
        done = subprocess.run(
            [sys.executable, *arguments],
            cwd=ROOT,
            input=given,
            capture_output=True,
            text=True,
            encoding="utf-8",
            timeout=120,
            check=False,
        )
        assert done.returncode == 0, done.stderr
        return done.stdout

    return run


@pytest.fixture(scope="session")
def showcase(run_example: Run, tmp_path_factory: pytest.TempPathFactory) -> Showcase:
    """One run of all stories."""
    pytest.importorskip("matplotlib", reason="the pictures need matplotlib (dependency group demo)")
    folder = tmp_path_factory.mktemp("showcase") / "demo"
    return Showcase(run_example("-m", "examples.showcase", str(folder)), folder)
