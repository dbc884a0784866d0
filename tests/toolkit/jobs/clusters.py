"""Dask clusters on this machine."""

from typing import Any

import pytest


def new_cluster(workers: int, threads: int = 1) -> Any:
    """Dask workers, each a process that is started anew when it dies."""
    distributed = pytest.importorskip("distributed")
    return distributed.LocalCluster(
        n_workers=workers, threads_per_worker=threads, processes=True, dashboard_address=":0"
    )


def address_of(cluster: Any) -> str:
    """Return the setting that names a cluster."""
    return f"dask://{cluster.scheduler_address.removeprefix('tcp://')}"
