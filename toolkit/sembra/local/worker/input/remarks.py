"""What of a file is hardly meant as it stands: it is calculated with, and the user is told."""

from collections.abc import Iterable, Iterator, Sequence

from sembra.local.worker.consolidation.interface import Consolidation
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.material import StorageType

FASTEST = 1e-3
"""The greatest likely coefficient of consolidation of soil that holds back water, in m²/s.

Clay has 1e-9 to 1e-6, and silt up to 1e-4. What is greater is mostly stated in another unit, or
nobody has stated it: where none is stated it is 10 m²/s.
"""


def late_loads(names: Iterable[str], end: float) -> Iterator[str]:
    """Return a remark on each load that comes when the calculation is over.

    Args:
        names: Their names.
        end: End of the calculation, in days.
    """
    for name in names:
        yield (
            f'The load "{name}" comes when the calculation has ended, after {end:g} days, and '
            "causes nothing."
        )


def late_times(times: Iterable[float], end: float) -> Iterator[str]:
    """Return a remark on each time of a residual settlement at which nothing is calculated.

    Args:
        times: The times, in days.
        end: End of the calculation, in days.
    """
    for time in times:
        if time > end:
            yield (
                f"There is no residual settlement after {time:g} days: the calculation ends after "
                f"{end:g} days."
            )


def fast_consolidation(columns: Sequence[Column], consolidation: Consolidation) -> Iterator[str]:
    """Return a remark on each material that consolidates at once, though it isn't drained.

    Args:
        columns: The columns of the file.
        consolidation: How they consolidate.
    """
    flows = {
        layer.material.name: layer.material.conductivity
        for column in columns
        for layer in column.layers
        if not layer.material.drained
    }
    for name, flow in flows.items():
        counts = consolidation.by_coefficient or flow.kind is StorageType.COEFFICIENT
        if counts and flow.cv > FASTEST:
            yield (
                f"The material {name} consolidates almost at once: its coefficient of "
                f"consolidation is {flow.cv:g} m²/s, and that of clay some 1e-8 to 1e-6 m²/s. See "
                "whether it is stated, and in m²/s, or mark the material as drained."
            )


def light_soil(columns: Sequence[Column], water_unit_weight: float) -> Iterator[str]:
    """Return a remark on each material under water that weighs less than water.

    Args:
        columns: The columns of the file.
        water_unit_weight: In kN/m³.
    """
    under_water = {
        layer.material.name: layer.material.unit_weight_wet
        for column in columns
        for layer in column.layers
        if layer.bottom < column.phreatic_level
    }
    for name, unit_weight in under_water.items():
        if unit_weight < water_unit_weight:
            yield (
                f"The material {name} would float: below the phreatic level it weighs "
                f"{unit_weight:g} kN/m³, less than water of {water_unit_weight:g} kN/m³."
            )
