"""Result files as they are really written, read into mappings and data frames."""

from sembra.local.results.dissipation import LayerDissipation
from sembra.local.results.result_file import ResultFile

__all__ = ["LayerDissipation", "ResultFile"]
