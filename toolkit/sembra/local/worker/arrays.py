"""The type of the arrays that the worker calculates with."""

import numpy as np
from numpy.typing import NDArray

Floats = NDArray[np.float64]
