"""The reader's first stage alone, built when it is first imported."""

import ctypes
from pathlib import Path

from benchmarks.native_helper import load

_MODULE = Path(__file__).resolve().parents[2] / "external" / "dsettlement"
_SOURCES = [Path(__file__).with_name("marking.cpp")]


def mark_verticals(text: str) -> int:
    """Find the marks of all verticals in a text of one-byte characters; return how many times."""
    count: int = _function(text)
    return count


_function = load("marking", _SOURCES, _MODULE).mark_verticals
_function.argtypes = [ctypes.py_object]
_function.restype = ctypes.c_size_t
