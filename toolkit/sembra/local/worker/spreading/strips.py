"""Upright columns that a load is cut into, and what of their pressure reaches the ground below."""

from collections.abc import Iterator
from dataclasses import dataclass, field

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.spreading.distribution import Distribution, strip_share

_MOST_SLICES = 1000
_VALUES_AT_ONCE = 1_000_000


@dataclass(frozen=True)
class Strips:
    """Columns side by side, of endless length across: edges, level of the base, height, in metres.

    `slope` is that of the base, and `top_slope` that of the top, by default the same. Cut into
    slices of about a metre, a column spreads its weight from within: each slice has an even part of
    it and spreads from its own base.
    """

    left: Floats
    right: Floats
    base: Floats
    height: Floats
    slope: Floats
    distribution: Distribution
    sliced: bool = False
    top_slope: Floats | None = None
    _shares: dict[tuple[float, bytes], Floats] = field(
        default_factory=dict, init=False, repr=False, compare=False
    )

    @property
    def middles(self) -> Floats:
        """Where the columns have their middles."""
        return (self.left + self.right) / 2

    @property
    def tops(self) -> Floats:
        """Levels of the tops."""
        return self.base + self.height

    @property
    def ends(self) -> tuple[Floats, Floats]:
        """Level of the base and height at the left and right edges, each of shape (2, columns)."""
        outwards = np.stack([self.left - self.middles, self.right - self.middles])
        top_slope = self.slope if self.top_slope is None else self.top_slope
        base = self.base + self.slope * outwards
        return base, np.maximum(self.height + (top_slope - self.slope) * outwards, 0.0)

    def shares(self, x: float, levels: Floats) -> Floats:
        """Return what part of each column's pressure reaches points, shape (levels, columns).

        A column acts at no depth on points that lie above its base. What is found is kept, since a
        calculation comes back to the same points.
        """
        key = (x, levels.tobytes())
        if key not in self._shares:
            found = [self._cut_shares(x, some) for some in self._portions(levels)]
            self._shares[key] = np.concatenate([np.empty((0, len(self.base))), *found])
        return self._shares[key]

    def bases_at(self, x: float) -> Floats:
        """Return the bases' levels of the columns that stand at x, endless ones elsewhere."""
        there = (self.left <= x) & (x <= self.right)
        return np.where(there, self.base + self.slope * (x - self.middles), np.inf)

    def _counts(self) -> Floats:
        if not self.sliced:
            return np.ones_like(self.height)
        return np.clip(np.rint(self.height), 1, _MOST_SLICES)

    def _portions(self, levels: Floats) -> Iterator[Floats]:
        size = max(int(_VALUES_AT_ONCE / max(self._counts().sum(), 1)), 1)
        return (levels[start : start + size] for start in range(0, len(levels), size))

    def _cut_shares(self, x: float, levels: Floats) -> Floats:
        counts = self._counts()
        owner = np.repeat(np.arange(len(counts)), counts.astype(np.intp))
        first = np.cumsum(counts) - counts
        number = np.arange(len(owner)) - first[owner]
        base = self.base[owner] + number * (self.height / counts)[owner]
        depths = np.maximum(base - levels[:, np.newaxis], 0.0)
        left, right = self.left[owner] - x, self.right[owner] - x
        shares = strip_share(self.distribution, left, right, depths)
        if len(owner) == len(counts):
            return shares
        means: Floats = np.add.reduceat(shares, first.astype(np.intp), axis=1) / counts
        return means
