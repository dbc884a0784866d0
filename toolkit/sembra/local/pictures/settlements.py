"""Settlements as the pictures need them, whatever the file has of them."""

from collections.abc import Sequence
from dataclasses import dataclass

from sembra.external.dsettlement import OutputFileParser

BESIDE_THE_LOADS = {"load_step_count", "time_step_count", "time"}


@dataclass(frozen=True)
class Settlements:
    """Settlement of the surface at one vertical against time.

    `times` are in days. `by_load` has one sequence per load step, in metres: the first holds the
    settlement by the first step alone, the next that by the first two, and so on; the last is the
    settlement by all of them. A file that doesn't tell the steps apart has one sequence.
    """

    times: Sequence[float]
    by_load: Sequence[Sequence[float]]

    @property
    def total(self) -> Sequence[float]:
        """Settlement by all load steps."""
        return self.by_load[-1]


def settlements_of(results: OutputFileParser) -> dict[int, Settlements]:
    """Return the settlements of all verticals that have any, by their numbers.

    Raises:
        ValueError: The results have no settlement at all, or what reading them raises.
    """
    found: dict[int, Settlements] = {}
    for number, vertical in results.vertical_results.items():
        block = vertical["time_settlement_per_load"]
        if block:
            columns = {key: value for key, value in block.items() if key not in BESIDE_THE_LOADS}
            found[number] = Settlements(block["time"], [*_lists(columns)])
            continue
        # Darcy's model has no such block; the first node lies at the surface.
        surface = {
            time: table["Settlement"][0]
            for time, table in vertical["vertical_data"].items()
            if table.get("Settlement")
        }
        if surface:
            found[number] = Settlements([*surface], [[*surface.values()]])
    if not found:
        raise ValueError("the results have no settlements")
    return found


def settlements_at(results: OutputFileParser, vertical: int) -> Settlements:
    """Return the settlements of one vertical.

    Raises:
        KeyError: There is no such vertical, or it has no settlement.
        ValueError: The results have no settlement at all, or what reading them raises.
    """
    found = settlements_of(results)
    if vertical not in found:
        raise KeyError(f"no settlements at vertical {vertical}; there are {sorted(found)}")
    return found[vertical]


def _lists(columns: dict[str, object]) -> list[list[float]]:
    return [value for value in columns.values() if isinstance(value, list)]
