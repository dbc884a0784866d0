"""An input file of D-Settlement, read back into a model."""

from .left_out import LeftOut, Reason
from .read_model import ReadModel, read_model

__all__ = ["LeftOut", "ReadModel", "Reason", "read_model"]
