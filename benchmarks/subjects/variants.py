"""Many variants through the public interface, and many result files read back.

The bare calculation hands filled documents to the worker's function one after the other, in one
process: nothing is built, posted, sent or read there.
"""

import os
import tempfile
from base64 import b64decode, b64encode
from collections.abc import Sequence
from concurrent.futures import ProcessPoolExecutor, ThreadPoolExecutor
from contextlib import AbstractContextManager
from io import StringIO
from itertools import cycle, islice
from multiprocessing import get_context
from pathlib import Path
from typing import Any
from unittest.mock import patch

import dask
from distributed import LocalCluster
from sembra.external.dsettlement import DSettlementAnalysis, OutputFileParser
from sembra.local.jobs.dask_engine import close_clients
from sembra.local.jobs.engine import EXECUTOR_SETTING
from sembra.local.worker.job import run_job

from benchmarks.side_by_side import Row, compare
from examples.parametric_study import Variant, build_model, variants

VARIANTS = 200
THREADS = 4
ROUNDS = 3
ROUNDS_ON_CLUSTER = 5
FILES = 10_000
DIFFERENT_FILES = 100
CHUNK = 50


def calculate(variant: Variant) -> str:
    """Calculate a variant through the public interface; return its result file."""
    analysis = DSettlementAnalysis(build_model(variant).generate_input_file())
    analysis.execute(timeout=60)
    return analysis.get_sld_file().getvalue()


def calculate_all(some: Sequence[Variant]) -> list[str]:
    with ThreadPoolExecutor(THREADS) as threads:
        return list(threads.map(calculate, some))


def calculate_bare(jobs: Sequence[dict[str, Any]]) -> list[str]:
    return [b64decode(run_job(job)["files"][".sld"]).decode() for job in jobs]


def job_of(variant: Variant) -> dict[str, Any]:
    body = b64encode(build_model(variant).generate_input_file().getvalue()).decode()
    return {"name": "dsettlement", "version": 1, "body": body}


def final_settlement(path: str) -> float:
    """Read a result file, and take a number out of it."""
    text = Path(path).read_bytes().decode()
    vertical = OutputFileParser(StringIO(text, newline="")).vertical_results[1]
    settlement: float = vertical["time_settlement_per_load"]["load_2"][-1]
    return settlement


def rows() -> list[Row]:
    some = variants()[:VARIANTS]
    jobs = [job_of(variant) for variant in some]
    texts = calculate_all(some)
    if texts != calculate_bare(jobs):
        raise AssertionError("the results differ from those of the bare calculation")
    public = compare(
        f"{VARIANTS} variants, {THREADS} threads : bare calculation in one process",
        lambda: calculate_all(some),
        lambda: calculate_bare(jobs),
        rounds=ROUNDS,
        at_most=1.0,
    )
    return [public, on_cluster(some, texts), read_back(texts[:DIFFERENT_FILES])]


def _two_workers() -> AbstractContextManager[Any]:
    make: Any = LocalCluster  # without types
    cluster: AbstractContextManager[Any] = make(
        n_workers=2, threads_per_worker=1, dashboard_address=":0"
    )
    return cluster


def on_cluster(some: Sequence[Variant], texts: Sequence[str]) -> Row:
    """Return how many times as long two Dask workers on this machine take as the pool.

    Their profiler, which looks at all threads a hundred times a second, is off. What is left beyond
    the pool is the way of jobs to the Dask workers and back.
    """
    with (
        dask.config.set({"distributed.worker.profile.enabled": False}),
        _two_workers() as cluster,
    ):
        address = f"dask://{cluster.scheduler_address.removeprefix('tcp://')}"

        def calculate_on(executor: str) -> list[str]:
            with patch.dict(os.environ, {EXECUTOR_SETTING: executor}):
                return calculate_all(some)

        try:
            if calculate_on(address) != texts:
                raise AssertionError("the results differ from those of the pool")
            return compare(
                f"{VARIANTS} variants, {THREADS} threads, on two Dask workers : on the pool",
                lambda: calculate_on(address),
                lambda: calculate_on("process"),
                rounds=ROUNDS_ON_CLUSTER,
                at_most=1.5,
            )
        finally:
            close_clients()


def read_back(texts: Sequence[str]) -> Row:
    """Return how many times as fast a pool of processes reads as one process."""
    with tempfile.TemporaryDirectory() as folder:
        for number, text in enumerate(texts):
            Path(folder, f"{number}.sld").write_bytes(text.encode())
        paths = list(islice(cycle(sorted(map(str, Path(folder).iterdir()))), FILES))
        cores = len(os.sched_getaffinity(0))
        with ProcessPoolExecutor(cores, get_context("spawn")) as pool:
            return compare(
                f"{FILES} result files read in one process : in {cores}",
                lambda: [final_settlement(path) for path in paths],
                lambda: list(pool.map(final_settlement, paths, chunksize=CHUNK)),
                rounds=ROUNDS,
                at_least=1.4 if cores > 1 else None,
            )
