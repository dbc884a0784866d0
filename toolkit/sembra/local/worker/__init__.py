"""The worker: settles `.sli` input files on this machine and gives back `.sld` result files.

It covers one-dimensional models with NEN-Koppejan, Terzaghi consolidation and uniform loads. What
it doesn't cover ends a job with an error that says so.
"""

from __future__ import annotations

from .job import run_job

__all__ = ["run_job"]
