"""Settlement of the layers by kind, for NEN-Koppejan."""

from collections.abc import Iterator, Sequence

from sembra.local.worker.result.format import column_indication, row
from sembra.local.worker.soil_models.layer_settlement import LayerSettlement, SettlementParts

_HEADERS = (
    "Layer number",
    "Primary swelling",
    "Secundary swelling",
    "Primary settlement below pre cons. stress",
    "Secondary settlement below pre cons. stress",
    "Primary settlement above pre cons. stress",
    "Secondary settlement above pre cons. stress",
)

NO_SETTLEMENT = LayerSettlement(SettlementParts(0.0, 0.0, 0.0), SettlementParts(0.0, 0.0, 0.0))


def koppejan_block(layers: Sequence[LayerSettlement]) -> Iterator[str]:
    """Return the settlement by kind; layers are given from the top, and count from the lowest."""
    yield "[Koppejan settlement]"
    yield from column_indication(_HEADERS)
    yield "[Koppejan Settlement Data]"
    yield f"{len(layers):7d}  =  Layer seperation count "
    for number, layer in enumerate(reversed(layers), 1):
        primary, secular = layer.primary, layer.secular
        pairs = (
            (primary.swelling, secular.swelling),
            (primary.below, secular.below),
            (primary.above, secular.above),
        )
        yield f"{number:7d}   " + row(float(value) for pair in pairs for value in pair)
    yield "[End of Koppejan Settlement Data]"
    yield "[End of Koppejan Settlement]"
