"""Settlement of the layers of a column by kind: swelling, below and above preconsolidation."""

from dataclasses import dataclass


@dataclass(frozen=True)
class SettlementParts:
    """Settlement of a layer by kind, in metres; swelling is negative."""

    swelling: float
    below: float
    above: float


@dataclass(frozen=True)
class LayerSettlement:
    """Settlement of a layer by all load steps when all water is out.

    The secular part is that of one decade of time after each step.
    """

    primary: SettlementParts
    secular: SettlementParts
