"""Result files as they are really written, read into mappings and data frames."""

from .dissipation import LayerDissipation
from .result_file import ResultFile

__all__ = ["LayerDissipation", "ResultFile"]
