"""Settlement of the layers of a column by kind: swelling, below and above preconsolidation."""

from collections.abc import Sequence
from dataclasses import dataclass

from sembra.local.worker.ground.mesh import Mesh
from sembra.local.worker.soil_models.koppejan import Compressibility, StressPath


@dataclass(frozen=True)
class SettlementParts:
    """Settlement of a layer by kind, in metres; swelling is negative."""

    swelling: float
    below: float
    above: float


@dataclass(frozen=True)
class LayerSettlement:
    """Settlement of a layer by all load steps when all water is out.

    The secular part is that of one decade of time after each step.
    """

    primary: SettlementParts
    secular: SettlementParts


def layer_settlements(
    mesh: Mesh,
    paths: Sequence[StressPath],
    primary: Compressibility,
    secular: Compressibility,
    count: int,
) -> tuple[LayerSettlement, ...]:
    """The settlement of each of `count` layers, from top to bottom.

    Args:
        mesh: the mesh of the column.
        paths: the stress path of each load step.
        primary: primary constants of the elements.
        secular: secular constants of the elements.
        count: number of layers of the column.
    """
    return tuple(
        LayerSettlement(
            _parts(mesh, paths, primary, index),
            _parts(mesh, paths, secular, index),
        )
        for index in range(count)
    )


def _parts(
    mesh: Mesh, paths: Sequence[StressPath], constants: Compressibility, layer: int
) -> SettlementParts:
    heights = mesh.thicknesses * (mesh.element_layers == layer)
    strains = [constants.parts(path) for path in paths]
    return SettlementParts(
        swelling=float(sum(strain.swelling @ heights for strain in strains)),
        below=float(sum(strain.below @ heights for strain in strains)),
        above=float(sum(strain.above @ heights for strain in strains)),
    )
