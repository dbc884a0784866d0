"""What a calculation hands to the writer of result files, one object for each vertical.

Both kinds of consolidation fill the same `ColumnResult`; what only one of them has stands in
`TerzaghiStresses` or `DarcyHistory`. Levels and settlements are in metres, times in days, stresses
in kPa; compression is positive. Nodes, elements and layers run from top to bottom.
"""

from dataclasses import dataclass

import numpy as np
from numpy.typing import NDArray

from sembra.local.worker.arrays import Floats
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.mesh import Mesh
from sembra.local.worker.remark import Remark
from sembra.local.worker.soil_models.layer_settlement import LayerSettlement


@dataclass(frozen=True)
class TerzaghiStresses:
    """Stresses of a calculation by Terzaghi, which has no history of pore pressures.

    Attributes:
        initial_total: Total stress at the nodes before the first load step, shape (nodes,).
        initial_water: Pore pressure at the nodes then, shape (nodes,).
        final_total: Total stress at the nodes in the end, shape (nodes,).
        final_water: Pore pressure at the nodes in the end, shape (nodes,).
        loading: Effective stress at the nodes, after consolidation, under the loads that came
            before each time, shape (times, nodes).
        preconsolidation: Preconsolidation pressure of the elements, shape (nodes - 1,); None for
            Isotache, whose files don't have it.
    """

    initial_total: Floats
    initial_water: Floats
    final_total: Floats
    final_water: Floats
    loading: Floats
    preconsolidation: Floats | None


@dataclass(frozen=True)
class DarcyHistory:
    """Stresses and pore pressures of a calculation by Darcy.

    Attributes:
        initial_effective: Effective stress at the nodes before the first load step, shape (nodes,).
        effective: Effective stress at the nodes, shape (times, nodes).
        head: Hydraulic head at the nodes, that is, level + pore pressure / unit weight of water
            [m], shape (times, nodes).
        loading: Increase of the total stress by the loads that came before each time at the nodes,
            shape (times, nodes).
        upper_amplitudes: Amplitude of the convolution at the upper end of the elements [m of
            water], of the step that ends at the time, shape (times, nodes - 1); 0 at time 0.
        lower_amplitudes: Likewise at their lower end.
        normalized_coefficients: 4 K / (S h²) of the elements for the step that begins at the time
            [1/day], shape (times, nodes - 1); 0 in a drained element.
        leakages: Flow to vertical drains of the elements, shape (nodes - 1,).
        drained: Whether the element's layer is drained, shape (nodes - 1,).
    """

    initial_effective: Floats
    effective: Floats
    head: Floats
    loading: Floats
    upper_amplitudes: Floats
    lower_amplitudes: Floats
    normalized_coefficients: Floats
    leakages: Floats
    drained: NDArray[np.bool_]


@dataclass(frozen=True)
class Dissipation:
    """Degree of consolidation of the layers, counted as for one load at time 0.

    Attributes:
        times: Shape (dissipation times,).
        degrees: 1 when all excess pressure is gone, shape (layers, dissipation times). By Darcy
            they can fall, as creep makes new excess, and pass 1, where drains draw pressure down.
    """

    times: Floats
    degrees: Floats


@dataclass(frozen=True)
class ColumnResult:
    """What is calculated for one vertical.

    Attributes:
        column: The ground below the vertical.
        mesh: Its nodes.
        times: All times of the calculation, from 0 to its end, shape (times,).
        settlements: Settlement of the nodes, shape (times, nodes); 0 at the lowest.
        consolidation: The stresses, as the kind of consolidation has them.
        load_settlements: Settlement of the surface by the first load step, by the first two, and
            so on, shape (times, load steps). Always there for Terzaghi; for Darcy only with the
            option "Predict settlements omitting additional loadsteps", else None.
        layer_settlements: Settlement of each layer by kind, for NEN-Koppejan; None for the other
            models.
        dissipation: Where the input file wants it, else None.
        remarks: What the user should know about it.
        superelevation: cross-section of the superelevation, in m², if the profile is maintained.
    """

    column: Column
    mesh: Mesh
    times: Floats
    settlements: Floats
    consolidation: TerzaghiStresses | DarcyHistory
    load_settlements: Floats | None
    layer_settlements: tuple[LayerSettlement, ...] | None
    dissipation: Dissipation | None = None
    remarks: tuple[Remark | str, ...] = ()
    superelevation: float | None = None
