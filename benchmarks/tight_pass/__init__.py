"""The tight pass, built when it is first imported."""

import ctypes
from collections.abc import Callable
from pathlib import Path

from benchmarks.native_helper import load

_LIBRARY = load("tight_pass", [Path(__file__).with_name("tight_pass.cpp")])


def _function(name: str) -> Callable[[str], list[float]]:
    function = getattr(_LIBRARY, name)
    function.argtypes = [ctypes.py_object]
    function.restype = ctypes.py_object
    result: Callable[[str], list[float]] = function
    return result


exactly = _function("exactly")
generally = _function("generally")
