"""Warning of strains by constants that nobody has stated.

The constants of the method of Koppejan are 1 in D-Settlement where none are stated: Cp and Cp' of
primary compression, Cs and Cs' of secular compression, Ap and Asec of swelling. As a strain is the
logarithm of a ratio of stresses divided by the constant, a layer would settle or heave by more than
half of its thickness when its stress doubles or halves. The constants of soil are about five and
more.
"""

from collections.abc import Sequence

import numpy as np

from sembra.local.worker.remark import Remark
from sembra.local.worker.soil_models.soil_model import Elements
from sembra.local.worker.soil_models.stress_path import StressPath

_UNSTATED = 1.0
_ROUNDING = 1e-6
_KINDS = (
    ("cp", "cp1", "Cp and Cp'", "settle", "loaded", ""),
    ("cs", "cs1", "Cs and Cs'", "settle", "loaded", ""),
    ("ap", "asec", "Ap and Asec", "heave", "unloaded", ", or have them follow Cp and Cs"),
)


def unstated_constants(elements: Elements, paths: Sequence[StressPath]) -> list[Remark]:
    """Return a remark on the materials that a strain is calculated for without their constants.

    Args:
        elements: The elements of a column.
        paths: The stress path of each load step.
    """
    loaded = np.any([(path.below > _ROUNDING) | (path.above > _ROUNDING) for path in paths], axis=0)
    unloaded = np.any([path.swelling < -_ROUNDING for path in paths], axis=0)
    remarks: list[Remark] = []
    for one, other, constants, verb, cause, hint in _KINDS:
        concerned = unloaded if one == "ap" else loaded
        unstated = (elements.parameter(one) == _UNSTATED) & (elements.parameter(other) == _UNSTATED)
        if names := elements.names_where(concerned & unstated):
            what = (
                f"far too much when {cause}: the constants {constants} are both 1, their value "
                f"where none is stated. State them{hint}"
            )
            remarks.append(Remark("material", tuple(names), verb, what))
    return remarks
