"""Writes the results of a calculation as the text of an `.sld` file."""

from __future__ import annotations

from .document import write_results

__all__ = ["write_results"]
