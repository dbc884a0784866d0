"""The worker: settles `.sli` input files on this machine and gives back `.sld` result files.

It covers NEN-Koppejan with Terzaghi consolidation below uniform loads and, on cross-sections, below
non-uniform ones, with or without vertical drains. What it doesn't cover ends a job with an error
that says so.
"""

from sembra.local.worker.job import run_job

__all__ = ["run_job"]
