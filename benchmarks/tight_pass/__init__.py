"""The tight pass, built when it is first imported."""

import ctypes
import os
import shutil
import subprocess
import sysconfig
from collections.abc import Callable
from pathlib import Path

SOURCE = Path(__file__).with_name("tight_pass.cpp")
LIBRARY = Path(__file__).resolve().parents[2] / "build" / "benchmarks" / "tight_pass.so"


def _compiler() -> str:
    for name in (os.environ.get("CXX"), "c++", "g++", "clang++"):
        if name and shutil.which(name):
            return name
    raise RuntimeError("the tight pass needs a C++ compiler; set CXX or install g++")


def _build() -> Path:
    if not LIBRARY.exists() or LIBRARY.stat().st_mtime < SOURCE.stat().st_mtime:
        LIBRARY.parent.mkdir(parents=True, exist_ok=True)
        include = sysconfig.get_path("include")
        command = [_compiler(), "-std=c++20", "-O3", "-DNDEBUG", "-shared", "-fPIC"]
        subprocess.run([*command, f"-I{include}", str(SOURCE), "-o", str(LIBRARY)], check=True)
    return LIBRARY


def _load(name: str) -> Callable[[str], list[float]]:
    # PyDLL keeps the interpreter lock, which making Python objects needs.
    function = getattr(ctypes.PyDLL(str(_build())), name)
    function.argtypes = [ctypes.py_object]
    function.restype = ctypes.py_object
    result: Callable[[str], list[float]] = function
    return result


exactly = _load("exactly")
generally = _load("generally")
