"""Refusal of strains by constants that nobody has stated.

The constants of the method of Koppejan are 1 in D-Settlement where none are stated: Cp and Cp' of
primary compression, Cs and Cs' of secular compression, Ap and Asec of swelling. As a strain is the
logarithm of a ratio of stresses divided by the constant, a layer would settle or heave by more than
half of its thickness when its stress doubles or halves. The constants of soil are about five and
more.
"""

from collections.abc import Sequence

import numpy as np
from numpy.typing import NDArray

from sembra.local.worker.errors import WorkerError
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.material import Material
from sembra.local.worker.ground.mesh import Mesh
from sembra.local.worker.loads.load_steps import LoadStep
from sembra.local.worker.soil_models.koppejan import StressPath

type Marks = NDArray[np.bool_]

_UNSTATED = 1.0
_ROUNDING = 1e-6


def check_constants(
    column: Column, mesh: Mesh, steps: Sequence[LoadStep], paths: Sequence[StressPath]
) -> None:
    """Refuses loading or unloading of a material whose constants for it are as they come.

    Args:
        column: the column.
        mesh: its mesh.
        steps: the load steps.
        paths: the stress path of each of them.

    Raises:
        WorkerError: a load step loads or unloads such a material; the message names it and the
            time.
    """
    materials = [column.layers[layer].material for layer in mesh.element_layers]
    primary = _where(materials, "cp", "cp1")
    secular = _where(materials, "cs", "cs1")
    swelling = _where(materials, "ap", "asec")
    for step, path in zip(steps, paths, strict=True):
        loaded = (path.below > _ROUNDING) | (path.above > _ROUNDING)
        unloaded = path.swelling < -_ROUNDING
        for concerned, what, names in (
            (primary & loaded, "loaded at {time:g} days. It would settle", "Cp and Cp'"),
            (secular & loaded, "loaded at {time:g} days. It would settle", "Cs and Cs'"),
            (swelling & unloaded, "unloaded at {time:g} days. It would heave", "Ap and Asec"),
        ):
            if concerned.any():
                name = materials[int(np.flatnonzero(concerned)[0])].name
                hint = ", or have them follow Cp and Cs" if names == "Ap and Asec" else ""
                raise WorkerError(
                    f"The material {name} is {what.format(time=step.time)} far too much, since its "
                    f"constants {names} are both 1, their value where none is stated. State "
                    f"them{hint}."
                )


def _where(materials: Sequence[Material], *names: str) -> Marks:
    """Tells which elements have both constants as they come."""
    return np.array(
        [all(material.parameters[name] == _UNSTATED for name in names) for material in materials]
    )
