"""Two ways of doing the same, timed in turn in one run.

The machine's speed drifts, so a figure counts only as the ratio of neighbours: each round times
both ways one behind the other, and the median of the rounds' ratios is what is reported.
"""

import gc
import time
from collections.abc import Callable
from dataclasses import dataclass
from statistics import median


@dataclass(frozen=True)
class Row:
    """One line of the report: a ratio and the bound that it has to keep."""

    name: str
    ratio: float
    at_least: float | None = None
    at_most: float | None = None
    note: str = ""

    @property
    def holds(self) -> bool:
        return (self.at_least is None or self.ratio >= self.at_least) and (
            self.at_most is None or self.ratio <= self.at_most
        )


def seconds(work: Callable[[], object]) -> float:
    gc.collect()
    start = time.perf_counter()
    work()
    return time.perf_counter() - start


def compare(
    name: str,
    slow: Callable[[], object],
    fast: Callable[[], object],
    *,
    rounds: int = 7,
    at_least: float | None = None,
    at_most: float | None = None,
) -> Row:
    """Return how many times longer `slow` takes than `fast`."""
    slow()
    fast()
    pairs = [(seconds(slow), seconds(fast)) for _ in range(rounds)]
    note = (
        f"{median(s for s, _ in pairs) * 1e3:.2f} ms : {median(f for _, f in pairs) * 1e3:.2f} ms"
    )
    return Row(name, median(s / f for s, f in pairs), at_least, at_most, note)
