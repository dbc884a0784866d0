"""The rooms of the worker: which of them may know of which."""

import ast
from collections.abc import Iterator
from pathlib import Path

import pytest
import sembra.local.worker

WORKER = Path(sembra.local.worker.__file__).parent
PREFIX = "sembra.local.worker."
# Each room, or module beside the rooms, knows of those in front of it.
ORDER = (
    ("arrays", "failures", "tolerances"),
    ("remark",),
    ("spreading",),
    ("ground",),
    ("options",),
    ("loads", "soil_models"),
    ("column_result", "timesteps"),
    ("consolidation",),
    ("project",),
    ("settlement",),
    ("dissipation",),
    ("calculation", "console", "input", "result"),
    ("calculate_file",),
    ("job",),
    ("__init__",),
)
RANKS = {room: rank for rank, rooms in enumerate(ORDER) for room in rooms}


def room_of(file: Path) -> str:
    return file.relative_to(WORKER).with_suffix("").parts[0]


def imports(file: Path) -> Iterator[str]:
    """The rooms that a file imports from, its own left away."""
    for node in ast.walk(ast.parse(file.read_text("utf-8"))):
        if isinstance(node, ast.ImportFrom) and (node.module or "").startswith(PREFIX):
            room = str(node.module).removeprefix(PREFIX).partition(".")[0]
            if room != room_of(file):
                yield room


@pytest.mark.parametrize("room", RANKS)
def test_arrows_run_one_way(room: str) -> None:
    files = [file for file in WORKER.rglob("*.py") if room_of(file) == room]
    assert files
    for file in files:
        for other in imports(file):
            assert RANKS[other] < RANKS[room], f"{file} imports {other}"


def test_every_room_has_its_place() -> None:
    assert {room_of(file) for file in WORKER.rglob("*.py")} == set(RANKS)
