"""What the tables need to know about settlements, whatever model they come from."""

from dataclasses import dataclass
from typing import TYPE_CHECKING, cast

import numpy as np

if TYPE_CHECKING:
    from sembra.external.dsettlement import VerticalResult

BESIDE_THE_LOADS = {"load_step_count", "time_step_count", "time"}


@dataclass(frozen=True)
class Settlements:
    """Settlement of the surface at one vertical against time.

    `times` are in days. `by_load` has one sequence per load step, in metres: the first holds the
    settlement by the first step alone, the next that by the first two, and so on; the last is the
    settlement by all of them.
    """

    times: tuple[float, ...]
    by_load: tuple[tuple[float, ...], ...]

    @classmethod
    def from_vertical(cls, vertical: "VerticalResult", load_count: int) -> "Settlements":
        """Take the settlements out of a vertical of `OutputFileParser.vertical_results`.

        vertical: the results of one vertical.
        load_count: number of load steps of the model. The file may have further columns in front,
            for the settlement under the weight of the soil itself.
        """
        block = vertical["time_settlement_per_load"]
        columns = [
            tuple(cast("list[float]", column))
            for key, column in block.items()
            if key not in BESIDE_THE_LOADS
        ]
        return cls(tuple(block.get("time", ())), tuple(columns[-load_count:]))

    @property
    def total(self) -> tuple[float, ...]:
        """Settlement by all load steps."""
        return self.by_load[-1]

    @property
    def final(self) -> float:
        """Settlement by all load steps at the end of the calculation."""
        return self.total[-1]

    def at(self, time: float) -> list[float]:
        """Return the settlement by the first load step, the first two, and so on, at a time.

        At a time that the results have, it is what they have; elsewhere it is interpolated.
        """
        return [float(np.interp(time, self.times, column)) for column in self.by_load]
