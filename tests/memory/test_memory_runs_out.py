"""Wherever memory runs out, there is a MemoryError and all is as it was.

A few allocations of each operation are tried, others in each run; `SEMBRA_SWEEP=all` tries all,
as `make sanitize` does, and `SEMBRA_SEED` repeats a run.
"""

import json
import os
import re
import subprocess
import sys
from enum import Enum
from pathlib import Path

import pytest
from sembra.external import dsettlement

from tests.seeds import new_seed

SWEEP = os.environ.get("SEMBRA_SWEEP", "2")
PART = [] if SWEEP == "all" else ["--most", SWEEP]
SOURCE = Path(__file__).parent.parent / "native" / "failing_new.cpp"


def sweep(kind: str, **environment: str) -> None:
    """Run a sweep in a process of its own, and show its figures."""
    seed = new_seed()
    print(f"SEMBRA_SWEEP={SWEEP} SEMBRA_SEED={seed}")
    command = [sys.executable, "-m", "tests.memory.sweep", kind]
    done = subprocess.run(
        [*command, *PART, "--seed", seed],
        env=os.environ | environment,
        capture_output=True,
        text=True,
        check=False,
    )
    assert done.returncode == 0, done.stderr[-4000:]
    counts = [json.loads(line) for line in done.stdout.splitlines()]
    total = {name: sum(count[name] for count in counts) for name in ("tries", "memory_errors")}
    print(f"{kind}: {len(counts)} operations, {total}")
    assert total["memory_errors"] > 0


def test_every_public_operation_is_tried() -> None:
    tried = Path(__file__).with_name("operations.py").read_text()
    operations = {
        f"{name}.{member}"
        for name, cls in vars(dsettlement).items()
        if getattr(cls, "__module__", None) == dsettlement.__name__
        if isinstance(cls, type) and not issubclass(cls, Enum) and not name.startswith("_")
        for member in dir(cls)
        if not member.startswith("_") and not re.search(rf"\.{member}\b", tried)
    }
    # What the toolkit does in Python.
    assert operations == {"DSettlementAnalysis.execute"}


def test_memory_of_python_runs_out() -> None:
    pytest.importorskip("_testcapi", reason="this Python comes without its own tests' hooks")
    # The interpreter loses objects of its own there, as scripts/leaks has to know.
    options = os.environ.get("ASAN_OPTIONS", "") + ":log_suffix=.out-of-memory"
    sweep("python", ASAN_OPTIONS=options)


@pytest.fixture(scope="module")
def failing_new(tmp_path_factory: pytest.TempPathFactory) -> Path:
    """The library that lets `new` fail."""
    library = tmp_path_factory.mktemp("native") / "failing_new.so"
    compiler = os.environ.get("CXX", "c++")
    flags = ["-shared", "-fPIC", "-O1", "-std=c++20"]
    try:
        subprocess.run([compiler, *flags, str(SOURCE), "-o", str(library)], check=True)
    except FileNotFoundError:
        pytest.skip(f"there is no compiler {compiler} to make {SOURCE.name} with")
    return library


def test_memory_of_cpp_runs_out(failing_new: Path) -> None:
    preloaded = f"{failing_new} {os.environ.get('LD_PRELOAD', '')}".strip()
    options = os.environ.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0"
    sweep("new", LD_PRELOAD=preloaded, ASAN_OPTIONS=options)
