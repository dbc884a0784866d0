"""Result files as they are really written, read into mappings and data frames."""

from local.results.dissipation import LayerDissipation
from local.results.result_file import ResultFile

__all__ = ["LayerDissipation", "ResultFile"]
