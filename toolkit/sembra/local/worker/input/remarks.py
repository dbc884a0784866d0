"""What of a file is hardly meant as it stands: it is calculated with, and the user is told."""

from collections.abc import Iterable, Iterator, Sequence

from sembra.local.worker.consolidation.interface import Consolidation
from sembra.local.worker.failures import listed
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.material import StorageType
from sembra.local.worker.remark import Remark

FASTEST = 1e-3
"""The greatest likely coefficient of consolidation of soil that holds back water, in m²/s.

Clay has 1e-9 to 1e-6, and silt up to 1e-4. What is greater is mostly stated in another unit, or
nobody has stated it: where none is stated it is 10 m²/s.
"""


def late_loads(names: Sequence[str], end: float) -> Iterator[Remark]:
    """Return a remark on the loads that come when the calculation is over.

    Args:
        names: Their names.
        end: End of the calculation, in days.
    """
    if names:
        quoted = tuple(f'"{name}"' for name in names)
        what = f"when the calculation has ended, after {end:g} days, and so without effect"
        yield Remark("load", quoted, "come", what)


def late_times(times: Iterable[float], end: float) -> Iterator[str]:
    """Return a remark on the times of a residual settlement at which nothing is calculated.

    Args:
        times: The times, in days.
        end: End of the calculation, in days.
    """
    late = [f"{time:g}" for time in times if time > end]
    if late:
        yield (
            f"There is no residual settlement after {listed(late)} days: the calculation ends "
            f"after {end:g} days."
        )


def fast_consolidation(columns: Sequence[Column], consolidation: Consolidation) -> Iterator[Remark]:
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
            what = (
                f"almost at once: the coefficient of consolidation is {flow.cv:g} m²/s, and that "
                "of clay some 1e-8 to 1e-6 m²/s. See whether it is stated, and in m²/s, or mark "
                "the soil as drained"
            )
            yield Remark("material", (name,), "consolidate", what)


def light_soil(columns: Sequence[Column], water_unit_weight: float) -> Iterator[Remark]:
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
            what = (
                f"less than water and would float: {unit_weight:g} kN/m³ below the phreatic level, "
                f"where water has {water_unit_weight:g} kN/m³"
            )
            yield Remark("material", (name,), "weigh", what)
