"""Pools for the tests, and a job for them."""

from sembra.local.jobs.pool import WorkerPool

CONTENT = {"name": "x", "version": 1, "body": "é"}


def pool(size: int = 2) -> WorkerPool:
    """Return a pool of so many workers."""
    return WorkerPool(lambda: size)
