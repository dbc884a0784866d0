"""Let memory run out at each allocation of each operation, one after the other.

    python -m tests.memory.sweep python
    python -m tests.memory.sweep new --most 2  # of each operation, spread over all of it

A program of its own, since what goes wrong may end it: `tests/memory/test_memory_runs_out.py` runs
it. For `new` it needs the library `failing_new` loaded before all others.

Each try begins with a new subject. Where memory ran out, the subject must be as it was, and the
same act must then do what it does undisturbed; once after a look at the subject, and once without,
since looking makes a model sort out what it knows.
"""

import argparse
import faulthandler
import gc
import json
import pickle
import random
import sys
from dataclasses import asdict, dataclass
from typing import Any

from tests.memory.failing import Memory, OutOfMemory, memory_of
from tests.memory.operations import (
    OPERATIONS,
    Operation,
    answer_in_place_of_the_service,
    described,
)

# For so many allocations memory stays away where it does not come back at once. Not for ever: the
# interpreter tries some of its own again and again until they succeed, on the way to a handler.
LONG = 10_000

# After so many tries what they leave behind is collected: a module of a megabyte for each import.
MANY = 200


@dataclass
class Count:
    """What the sweep over one operation came to."""

    operation: str
    allocations: int
    tries: int = 0
    memory_errors: int = 0


class WentWrongError(Exception):
    """An operation did something else than to fail with MemoryError and leave all as it was."""


class Sweep:
    """Tries of one operation."""

    def __init__(self, operation: Operation, memory: Memory) -> None:
        self._operation, self._memory = operation, memory
        subject = operation.subject()
        self._before = described(subject)
        answer = operation.act(subject)
        self._after = described(subject), described(answer)
        self.count = Count(operation.name, self._allocations())

    def _fails(self, first: int, behind: int, subject: Any) -> bool:
        try:
            with OutOfMemory(self._memory, first, behind):
                self._operation.act(subject)
        except (MemoryError, pickle.PicklingError):  # pickle puts its own in the place of the first
            return True
        return False

    def _allocations(self) -> int:
        """After how many allocations the act gets through, found by halving."""
        low, high = 0, 1
        while self._fails(high, high + LONG, self._operation.subject()):
            low, high = high, 2 * high
        while high - low > 1:
            middle = (low + high) // 2
            if self._fails(middle, middle + LONG, self._operation.subject()):
                low = middle
            else:
                high = middle
        return low

    def _check(self, what: str, found: Any, expected: Any) -> None:
        if found != expected:
            raise WentWrongError(f"{what}\n  expected {expected}\n  found    {found}")

    def attempt(self, first: int, behind: int, look: bool) -> None:
        """Let memory run out once."""
        subject = self._operation.subject()
        self.count.tries += 1
        if not self._fails(first, behind, subject):
            return
        self.count.memory_errors += 1
        leaves = self._operation.leaves or self._operation.leaves_unordered
        if look and not leaves:
            self._check("after running out of memory", described(subject), self._before)
        answer = self._operation.act(subject)
        found = described(subject), described(answer)
        if not self._operation.leaves_unordered:
            self._check("at the second attempt", found, self._after)

    def run(self, most: int | None, rng: random.Random) -> None:
        """Let memory run out at each allocation, or at `most` of them, as far from one another."""
        there_are = self.count.allocations + 1  # the last of them is one too many
        every = -(-there_are // most) if most else 1
        for number in range(1 + rng.randrange(every), there_are + 1, every):
            for length in (1, LONG):
                for look in (True, False):
                    try:
                        self.attempt(number, number + length, look)
                    except Exception as error:
                        raise WentWrongError(
                            f"{self._operation.name}, allocation {number} "
                            f"{'and those behind it' if length > 1 else 'alone'}, "
                            f"{'looked at' if look else 'not looked at'}"
                        ) from error
            if self.count.tries % MANY == 0:
                gc.collect()


def main() -> int:
    """Read the command line and run."""
    parser = argparse.ArgumentParser(description="Let memory run out everywhere.")
    parser.add_argument("memory", choices=["python", "new"])
    parser.add_argument("--most", type=int, help="try so many allocations of each operation")
    parser.add_argument("--seed", default="0", help="which ones")
    parser.add_argument("--operations", nargs="*", help="only these")
    options = parser.parse_args()
    faulthandler.enable()
    answer_in_place_of_the_service()
    memory = memory_of(options.memory)
    gc.disable()  # else others would fail than those of the operation
    for operation in OPERATIONS:
        if options.operations and operation.name not in options.operations:
            continue
        if operation.makes_functions and options.memory == "python":
            continue
        print(operation.name, file=sys.stderr, flush=True)
        sweep = Sweep(operation, memory)
        sweep.run(options.most, random.Random(f"{options.seed} {operation.name}"))
        print(json.dumps(asdict(sweep.count)), flush=True)
        gc.collect()
    return 0


if __name__ == "__main__":
    sys.exit(main())
