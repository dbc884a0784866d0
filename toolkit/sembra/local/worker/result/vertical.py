"""The results of one vertical."""

from collections.abc import Iterator

from sembra.local.worker.result.fixed_times import fixed_time_block
from sembra.local.worker.result.format import column_indication, fixed, row
from sembra.local.worker.settlement import ColumnResult


def vertical_block(number: int, result: ColumnResult) -> Iterator[str]:
    """The block of a vertical, tags included; `number` counts from 1."""
    yield "[Vertical]"
    yield f"{number:7d}     =  Vertical count"
    yield f"{fixed(result.column.x)}     =  X co-ordinate"
    yield f"{fixed(result.column.z)}     =  Z co-ordinate"
    yield from _time_settlement(result)
    yield from _depths(result)
    yield from _stresses(result)
    yield from _koppejan(result)
    yield from _time_dependent(result)
    yield from fixed_time_block(result)
    yield "[End of Vertical]"


def _time_settlement(result: ColumnResult) -> Iterator[str]:
    """Settlement of the surface by the first load step, the first two, and so on."""
    yield "[Time-Settlement per Load]"
    yield f"{len(result.times):7d}  =  Time step count "
    yield f"{result.load_settlements.shape[1]:7d}  =  Load step count "
    for time, settlements in zip(result.times, result.load_settlements, strict=True):
        yield row([time, *settlements])
    yield "[End of Time-Settlement per Load]"


def _depths(result: ColumnResult) -> Iterator[str]:
    yield "[Depths]"
    yield f"{len(result.mesh.levels):7d}    =  Depth count"
    yield from (fixed(level) for level in result.mesh.levels)
    yield "[End of Depths]"


def _stresses(result: ColumnResult) -> Iterator[str]:
    """Stresses at the nodes.

    The preconsolidation pressure is that of the element below the node, so the last one has none.
    No blank stands behind "Depth step count": readers take the line to the letter.
    """
    yield "[Stresses]"
    yield from column_indication(
        (
            "Initial total stress",
            "Initial water stress",
            "Final pre consolidation stress",
            "Final total stress",
            "Final water stress",
        )
    )
    yield "[Stress Data]"
    yield f"{len(result.mesh.levels):7d}  =  Depth step count"
    for values in zip(
        result.initial_total,
        result.initial_water,
        [*result.preconsolidation, 0.0],
        result.final_total,
        result.final_water,
        strict=True,
    ):
        yield row(values)
    yield "[End of Stress Data]"
    yield "[End of Stresses]"


def _koppejan(result: ColumnResult) -> Iterator[str]:
    """Settlement by kind; layers are numbered from the lowest."""
    yield "[Koppejan settlement]"
    yield from column_indication(
        (
            "Layer number",
            "Primary swelling",
            "Secundary swelling",
            "Primary settlement below pre cons. stress",
            "Secondary settlement below pre cons. stress",
            "Primary settlement above pre cons. stress",
            "Secondary settlement above pre cons. stress",
        )
    )
    yield "[Koppejan Settlement Data]"
    yield f"{len(result.layer_settlements):7d}  =  Layer seperation count "
    for number, layer in enumerate(reversed(result.layer_settlements), 1):
        primary, secular = layer.primary, layer.secular
        pairs = (
            (primary.swelling, secular.swelling),
            (primary.below, secular.below),
            (primary.above, secular.above),
        )
        yield f"{number:7d}   " + row(float(value) for pair in pairs for value in pair)
    yield "[End of Koppejan Settlement Data]"
    yield "[End of Koppejan Settlement]"


def _time_dependent(result: ColumnResult) -> Iterator[str]:
    """Settlement and effective stress at the nodes for every time."""
    yield "[Time-dependent Data]"
    yield from column_indication(("Settlement", "Loading"))
    for time, settlements, loading in zip(
        result.times, result.settlements, result.loading, strict=True
    ):
        yield "[Vertical Data at Time]"
        yield f"{time:17.12f}    =  Time in days"
        for settlement, stress in zip(settlements, loading, strict=True):
            yield f"{fixed(settlement)} {fixed(stress)}"
        yield "[End of Vertical Data at Time]"
    yield "[End of Time dependent Data]"
