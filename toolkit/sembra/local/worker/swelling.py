"""Refusal of swelling with constants that nobody has stated.

Ap and Asec, the swelling constants of the method of Koppejan, are 1 in D-Settlement where none are
stated. As the strain by unloading is ln(s1 / s0) / Ap, half of the stress less would lift a layer
by more than half of its thickness. The constants of soil are about ten and more.
"""

from __future__ import annotations

from collections.abc import Sequence

import numpy as np

from .discretisation import Mesh
from .errors import WorkerError
from .koppejan import StressPath
from .load_steps import LoadStep
from .model import Column, Material

_UNSTATED = 1.0
_ROUNDING = 1e-6


def check_swelling(
    column: Column, mesh: Mesh, steps: Sequence[LoadStep], paths: Sequence[StressPath]
) -> None:
    """Refuses unloading of a material whose Ap and Asec are both as they come.

    Args:
        column: the column.
        mesh: its mesh.
        steps: the load steps.
        paths: the stress path of each of them.

    Raises:
        WorkerError: a load step unloads such a material; the message names it and the time.
    """
    materials = [column.layers[layer].material for layer in mesh.element_layers]
    unstated = np.array([_is_unstated(material) for material in materials])
    for step, path in zip(steps, paths, strict=True):
        unloaded = np.flatnonzero(unstated & (path.swelling < -_ROUNDING))
        if len(unloaded):
            raise WorkerError(
                f"The material {materials[unloaded[0]].name} is unloaded at {step.time:g} days. It "
                "would heave far too much, since its swelling constants Ap and Asec are both 1, "
                "their value where none is stated. State them, or have them follow Cp and Cs."
            )


def _is_unstated(material: Material) -> bool:
    return material.ap == _UNSTATED and material.asec == _UNSTATED
