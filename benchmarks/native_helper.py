"""Native helpers of the benchmarks, each built when it is first asked for."""

import ctypes
import os
import shutil
import subprocess
import sysconfig
from collections.abc import Sequence
from pathlib import Path

FOLDER = Path(__file__).resolve().parents[1] / "build" / "benchmarks"


def _compiler() -> str:
    for name in (os.environ.get("CXX"), "c++", "g++", "clang++"):
        if name and shutil.which(name):
            return name
    raise RuntimeError("the benchmarks need a C++ compiler; set CXX or install g++")


def load(name: str, sources: Sequence[Path], *include: Path) -> ctypes.PyDLL:
    """Return the helper made of the sources. Its calls keep the interpreter lock.

    Args:
        name: The helper's name in the build folder.
        sources: What is compiled.
        include: Folders of headers, beside that of Python. The helper is built anew when a source
            or a header has changed.
    """
    library = FOLDER / f"{name}.so"
    headers = [header for folder in include for header in folder.rglob("*.hpp")]
    newest = max(file.stat().st_mtime for file in (*sources, *headers))
    if not library.exists() or library.stat().st_mtime < newest:
        library.parent.mkdir(parents=True, exist_ok=True)
        folders = [f"-I{folder}" for folder in (sysconfig.get_path("include"), *include)]
        command = [_compiler(), "-std=c++20", "-O3", "-DNDEBUG", "-shared", "-fPIC", *folders]
        subprocess.run([*command, *map(str, sources), "-o", str(library)], check=True)
    return ctypes.PyDLL(str(library))
