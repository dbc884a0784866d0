"""The pool of workers that all jobs of this process share."""

import atexit
import os
import threading

from sembra.local.jobs.engine_error import EngineError
from sembra.local.jobs.pool import WorkerPool

WORKERS_SETTING = "SEMBRA_WORKERS"
"""Environment setting: how many worker processes there may be. Unset or empty: one per core."""

PRELOADED = ("sembra.local.worker.calculate_file",)

_lock = threading.Lock()
_pool: WorkerPool | None = None


def shared_pool() -> WorkerPool:
    """Return the pool, whose workers start when they are first needed."""
    global _pool
    with _lock:
        if _pool is None:
            _pool = WorkerPool(worker_count, PRELOADED)
        return _pool


def end_shared_pool() -> None:
    """End all workers and the jobs in them; the next job starts others."""
    global _pool
    with _lock:
        pool, _pool = _pool, None
    if pool is not None:
        pool.shutdown(cancel_futures=True)


def worker_count() -> int:
    """Return how many worker processes there may be.

    Raises:
        EngineError: The setting is not a whole number above 0.
    """
    setting = os.environ.get(WORKERS_SETTING, "").strip()
    if not setting:
        return len(os.sched_getaffinity(0)) if hasattr(os, "sched_getaffinity") else _cores()
    if not setting.isdecimal() or int(setting) < 1:
        raise EngineError(
            f"The setting {WORKERS_SETTING} must be a whole number above 0, not {setting!r}"
        )
    return int(setting)


def _cores() -> int:
    return os.cpu_count() or 1


def _forget_after_fork() -> None:
    global _lock, _pool
    _lock = threading.Lock()
    _pool = None


atexit.register(end_shared_pool)
if hasattr(os, "register_at_fork"):
    os.register_at_fork(after_in_child=_forget_after_fork)
