"""Degree of consolidation of the layers of a vertical."""

from collections.abc import Iterator

from sembra.local.worker.result.format import row
from sembra.local.worker.settlement import ColumnResult


def dissipation_block(result: ColumnResult) -> Iterator[str]:
    """The mean degree of consolidation against time; layers are numbered from the lowest."""
    yield "[Dissipation in Layers]"
    yield f"{len(result.dissipation):7d}  =  Number of Layers "
    yield f"{len(result.times):7d}  =  Number of time steps "
    for number, degrees in enumerate(reversed(result.dissipation), 1):
        yield "[Dissipation layer]"
        yield f"{number:7d}  =  Layer Number "
        yield from (row(pair) for pair in zip(result.times, degrees, strict=True))
        yield "[End of Dissipation layer]"
    yield "[End of Dissipation in Layers]"
