"""Reads the text of an `.sli` input file into a `Project`."""

from __future__ import annotations

from .project import read_project

__all__ = ["read_project"]
