"""The one interface of the kinds of consolidation: from the loads on a column to its strains."""

from abc import ABC, abstractmethod
from collections.abc import Sequence
from dataclasses import dataclass
from typing import ClassVar

from sembra.local.worker.arrays import Floats
from sembra.local.worker.column_result import DarcyHistory, TerzaghiStresses
from sembra.local.worker.consolidation.drains.equal_drains import Drains
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.mesh import Mesh
from sembra.local.worker.loads.load import Load
from sembra.local.worker.options import Options
from sembra.local.worker.soil_models.soil_model import SoilModel


@dataclass(frozen=True)
class Situation:
    """A column and what happens to it.

    Args:
        column: The column.
        mesh: Its mesh.
        initial: Effective stress at the nodes before the first load, in kPa.
        water: Pore pressure at the nodes then, in kPa.
        model: The soil model of its elements.
        loads: All loads, initial ones too.
        drains: The drains of the file, if there are any.
        options: The calculation options.
        wanted_times: Times in days that results are wanted for, beside those of the calculation.
    """

    column: Column
    mesh: Mesh
    initial: Floats
    water: Floats
    model: SoilModel
    loads: Sequence[Load]
    drains: Drains | None
    options: Options
    wanted_times: Sequence[float]


@dataclass(frozen=True)
class Consolidated:
    """What becomes of a column.

    Args:
        times: All times of the calculation, from 0 to its end, shape (times,).
        strain: Strain of the elements relative to their initial height, shape (times, elements).
        load_settlements: Settlement of the surface by the first load step, by the first two, and
            so on, shape (times, load steps), or None if the tool doesn't give it.
        stresses: The stresses, as the kind of consolidation has them.
        drained: Effective stress of the elements after each step of loads or dewatering, in kPa,
            once all water is out that it presses out.
    """

    times: Floats
    strain: Floats
    load_settlements: Floats | None
    stresses: TerzaghiStresses | DarcyHistory
    drained: Sequence[Floats]


class Consolidation(ABC):
    """A kind of consolidation."""

    goes_by_steps: ClassVar[bool]
    """Whether it goes from one time to the next, with all columns together."""

    by_coefficient: ClassVar[bool]
    """Whether all materials consolidate by their coefficient of consolidation c_v."""

    @abstractmethod
    def consolidate(
        self, situations: Sequence[Situation], *, sinking: bool = False
    ) -> list[Consolidated]:
        """Return what becomes of each of some columns of a project.

        Args:
            situations: The columns, with the same loads, which may have sunk to several depths.
            sinking: Whether the loads sink into the water with the columns, from one time to the
                next; only for a kind that goes by steps.

        Raises:
            WorkerError: An effective stress isn't positive, or a layer can't consolidate.
        """

    @abstractmethod
    def dissipation(
        self, unloaded: Situation, load: Floats, times: Floats, *, sinking: bool = False
    ) -> Floats:
        """Return the degree of consolidation of each layer, shape (layers, times).

        Args:
            unloaded: A column without any loads, initial ones included.
            load: Increase of the effective stress at the nodes by all loads in the end, in kPa.
                It comes at time 0.
            times: Times in days, from 0 on.
            sinking: As for `consolidate`.

        Raises:
            WorkerError: A layer can't consolidate.
        """
