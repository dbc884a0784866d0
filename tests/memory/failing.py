"""The two places where memory can run out: allocations of Python, and `new` of C++."""

import ctypes
import importlib
from collections.abc import Callable
from contextlib import AbstractContextManager
from types import TracebackType
from typing import Any, Protocol


class Memory(Protocol):
    """Lets allocations fail: those from `first` on, counted from 1, that come before `behind`."""

    def fail(self, first: int, behind: int) -> None: ...

    def stop(self) -> None: ...


class PythonMemory:
    """What Python allocates, by the hooks of its own tests."""

    def __init__(self) -> None:
        hooks = importlib.import_module("_testcapi")
        self._fail: Callable[[int, int], None] = hooks.set_nomemory
        self._stop: Callable[[], None] = hooks.remove_mem_hooks

    def fail(self, first: int, behind: int) -> None:
        # Told by how many get through before the first that fails, and by the last that does.
        self._fail(first - 1, behind - 1)

    def stop(self) -> None:
        self._stop()


class NewMemory:
    """What the C++ code allocates, by the library `failing_new`, loaded before all others."""

    def __init__(self) -> None:
        loaded = ctypes.PyDLL(None)
        self._fail: Any = loaded.fail_new
        self._fail.argtypes = (ctypes.c_long, ctypes.c_long)
        self._fail.restype = None

    def fail(self, first: int, behind: int) -> None:
        self._fail(first, behind)

    def stop(self) -> None:
        self._fail(0, 0)


class OutOfMemory(AbstractContextManager[None]):
    """For the length of a `with` statement memory runs out."""

    def __init__(self, memory: Memory, first: int, behind: int) -> None:
        self._memory, self._range = memory, (first, behind)

    def __enter__(self) -> None:
        self._memory.fail(*self._range)

    def __exit__(
        self,
        error_type: type[BaseException] | None,
        error: BaseException | None,
        traceback: TracebackType | None,
    ) -> None:
        self._memory.stop()


def memory_of(kind: str) -> Memory:
    """The memory of a kind: "python" or "new"."""
    return PythonMemory() if kind == "python" else NewMemory()
