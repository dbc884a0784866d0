"""Placing labels along an axis so that none covers another."""

from collections.abc import Sequence


def spread(positions: Sequence[float], gap: float) -> list[float]:
    """Move positions apart until neighbours have a gap, as little as possible.

    The sum of squares of the moves is the least (isotonic regression, by pooling of adjacent
    violators). Positions that are far enough apart stay.

    positions: wanted positions in any order.
    gap: least distance between neighbours.

    Returns the new positions in the order of the old ones.
    """
    order = sorted(range(len(positions)), key=lambda index: positions[index])
    # In coordinates that run back by one gap per label, labels need only keep their order.
    pools: list[list[float]] = []
    for rank, index in enumerate(order):
        pools.append([positions[index] - rank * gap])
        while len(pools) > 1 and _mean(pools[-2]) > _mean(pools[-1]):
            pools[-2:] = [pools[-2] + pools[-1]]
    places = [_mean(pool) for pool in pools for _ in pool]
    result = [0.0] * len(positions)
    for rank, index in enumerate(order):
        result[index] = places[rank] + rank * gap
    return result


def _mean(values: Sequence[float]) -> float:
    return sum(values) / len(values)
