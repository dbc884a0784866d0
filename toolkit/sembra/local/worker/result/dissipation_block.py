"""Degree of consolidation of the layers of a vertical."""

from collections.abc import Iterator

from sembra.local.worker.column_result import Dissipation
from sembra.local.worker.result.format import row


def dissipation_block(dissipation: Dissipation) -> Iterator[str]:
    """Return the degree of consolidation against time; layers are numbered from the lowest."""
    yield "[Dissipation in Layers]"
    yield f"{len(dissipation.degrees):7d}  =  Number of Layers "
    yield f"{len(dissipation.times):7d}  =  Number of time steps "
    for number, degrees in enumerate(reversed(dissipation.degrees), 1):
        yield "[Dissipation layer]"
        yield f"{number:7d}  =  Layer Number "
        yield from (row(pair) for pair in zip(dissipation.times, degrees, strict=True))
        yield "[End of Dissipation layer]"
    yield "[End of Dissipation in Layers]"
