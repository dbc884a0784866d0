"""Reads the text of an `.sli` input file into a `Project`."""

from sembra.local.worker.input.reader import read_project

__all__ = ["read_project"]
