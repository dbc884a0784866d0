"""A copy of the sources with a build of its own, in which one file at a time is changed."""

import os
import shutil
import subprocess
import sys
from pathlib import Path

PROJECT = Path(__file__).parent.parent
TREE = PROJECT / "build" / "mutants"
SOURCES = TREE / "sources"
BUILD = TREE / "build"
PACKAGE = TREE / "site" / "sembra" / "external" / "dsettlement"


def run(command: list[str], limit: float | None = None, **environment: str) -> int | None:
    """Run a command without its output; its status, or None if it took too long."""
    log = TREE / "last.log"
    with log.open("wb") as output:
        process = subprocess.Popen(
            command,
            stdin=subprocess.DEVNULL,
            stdout=output,
            stderr=subprocess.STDOUT,
            cwd=PROJECT,
            env=os.environ | environment,
            start_new_session=True,
        )
        try:
            return process.wait(limit)
        except subprocess.TimeoutExpired:
            return None
        finally:
            if process.poll() is None:
                os.killpg(process.pid, 9)
                process.wait()


def last_output() -> str:
    """What the latest command printed."""
    return (TREE / "last.log").read_text(errors="replace")


def prepare() -> None:
    """Copy the sources and build them as they are, quickly rather than well."""
    TREE.mkdir(parents=True, exist_ok=True)
    for name in ("external", "tests/native"):
        if (PROJECT / name).is_dir():
            shutil.rmtree(SOURCES / name, ignore_errors=True)
            shutil.copytree(PROJECT / name, SOURCES / name)
    shutil.copy2(PROJECT / "CMakeLists.txt", SOURCES)
    tools = Path(sys.executable).parent
    command = [
        str(tools / "cmake"), "-S", str(SOURCES), "-B", str(BUILD), "-G", "Ninja",
        f"-DCMAKE_MAKE_PROGRAM={tools / 'ninja'}", f"-DPython_EXECUTABLE={sys.executable}",
        "-DCMAKE_BUILD_TYPE=None", "-DCMAKE_CXX_FLAGS=-O1 -g0 -w",
    ]  # fmt: skip
    if run(command) != 0 or not build():
        raise SystemExit(f"the sources don't build:\n{last_output()}")


def build() -> bool:
    """Build what has changed; whether it compiles."""
    if run([str(Path(sys.executable).parent / "cmake"), "--build", str(BUILD)]) != 0:
        return False
    PACKAGE.mkdir(parents=True, exist_ok=True)
    (extension,) = BUILD.glob("__init__.*.so")
    # Not into the file that is there, which a process that has not ended may have mapped.
    shutil.copy2(extension, PACKAGE / "new")
    (PACKAGE / "new").rename(PACKAGE / extension.name)
    return True


def test(tests: tuple[str, ...], limit: float | None) -> int | None:
    """Run tests against the build until the first fails; their status, or None for too long."""
    options = ["-x", "-q", "-p", "no:cacheprovider", "-p", "mutants.limit"]
    command = [sys.executable, "-m", "pytest", *options, *tests]
    return run(
        command,
        limit,
        PYTHONPATH=str(TREE / "site"),
        SEMBRA_RANDOM_MODELS="400",
        SEMBRA_HOSTILE_PROGRAMS="200",
        SEMBRA_SEED="mutants",
    )
