"""Writes the results of a calculation as the text of an `.sld` file."""

from sembra.local.worker.result.document import write_results

__all__ = ["write_results"]
