"""A copy of the sources with the mutants in it, and a build of its own."""

import re
import shutil
import subprocess
import sys
from collections import defaultdict
from collections.abc import Mapping
from pathlib import Path

from mutants import switches
from mutants.source import Mutant

PROJECT = Path(__file__).parent.parent
TREE = PROJECT / "build" / "mutants"
SOURCES = TREE / "sources"
BUILD = TREE / "build"
SITE = TREE / "site"
PACKAGE = SITE / "sembra" / "external" / "dsettlement"
LOG = TREE / "build.log"
HEADER = TREE / "mutant_number.hpp"

ROUNDS = 12
"""How often mutants that don't compile are left out."""

ERROR = re.compile(
    rf"^{re.escape(str(SOURCES))}/([^:\s]+):(\d+):\d+: (?:fatal )?error:", re.MULTILINE
)


def run(command: list[str]) -> int:
    """Run a command, with its output in the log; its status."""
    with LOG.open("wb") as output:
        return subprocess.run(
            command, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT, check=False
        ).returncode


def last_output() -> str:
    """Return what the latest command printed."""
    return LOG.read_text(errors="replace")


def prepare(mutants: Mapping[int, Mutant]) -> set[int]:
    """Build the sources with the mutants behind switches; the numbers of those that are in."""
    TREE.mkdir(parents=True, exist_ok=True)
    _write(HEADER, switches.SWITCH)
    left_out: set[int] = set()
    for _ in range(ROUNDS):
        placed = _write_sources({n: m for n, m in mutants.items() if n not in left_out})
        if _build():
            return placed
        errors = {(found[1], int(found[2])) for found in ERROR.finditer(last_output())}
        at_fault = _at_fault({n: mutants[n] for n in placed}, errors)
        if not at_fault:
            break
        left_out |= at_fault
    raise SystemExit(f"the sources don't build:\n{last_output()}")


def _at_fault(mutants: Mapping[int, Mutant], errors: set[tuple[str, int]]) -> set[int]:
    """Return the mutants of the lines that don't compile, or of the next ones above them."""
    found: set[int] = set()
    for path, line in errors:
        above = {n: m.line for n, m in mutants.items() if str(m.path) == path and m.line <= line}
        nearest = max(above.values(), default=None)
        found |= {number for number, place in above.items() if place == nearest}
    return found


def _write_sources(mutants: Mapping[int, Mutant]) -> set[int]:
    """Write the sources that are not as they should be."""
    by_file: dict[Path, dict[int, Mutant]] = defaultdict(dict)
    for number, mutant in mutants.items():
        by_file[mutant.path][number] = mutant
    placed: set[int] = set()
    for path in (Path("CMakeLists.txt"), Path("pyproject.toml"), *_files("external")):
        text = (PROJECT / path).read_text()
        if path in by_file:
            text, fitting = switches.switched(text, by_file[path], HEADER)
            placed |= fitting
        _write(SOURCES / path, text)
    return placed


def _write(path: Path, text: str) -> None:
    """Write a file, unless it is as it should be: what depends on it would be built again."""
    if not path.exists() or path.read_text() != text:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)


def _files(folder: str) -> list[Path]:
    found = (path for path in (PROJECT / folder).rglob("*") if path.is_file())
    return sorted(path.relative_to(PROJECT) for path in found)


def _build() -> bool:
    """Build what has changed, quickly rather than well; whether it compiles."""
    tools = Path(sys.executable).parent
    configure = [
        str(tools / "cmake"), "-S", str(SOURCES), "-B", str(BUILD), "-G", "Ninja",
        f"-DCMAKE_MAKE_PROGRAM={tools / 'ninja'}", f"-DPython_EXECUTABLE={sys.executable}",
        "-DCMAKE_BUILD_TYPE=None", "-DCMAKE_CXX_FLAGS=-O0 -g0 -w",
    ]  # fmt: skip
    if run(configure) != 0 or run([str(tools / "cmake"), "--build", str(BUILD), "--", "-k0"]) != 0:
        return False
    PACKAGE.mkdir(parents=True, exist_ok=True)
    (extension,) = BUILD.glob("__init__.*.so")
    # Not into the file that is there, which a process that has not ended may have mapped.
    shutil.copy2(extension, PACKAGE / "new")
    (PACKAGE / "new").rename(PACKAGE / extension.name)
    return True
