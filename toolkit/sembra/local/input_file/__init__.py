"""An input file of D-Settlement, read back into a model."""

from sembra.local.input_file.left_out import LeftOut, Reason
from sembra.local.input_file.read_model import ReadModel, read_model

__all__ = ["LeftOut", "ReadModel", "Reason", "read_model"]
