"""Which cases are off, and which of those are known with their reason.

The list of known cases, `known.toml`, is kept honest from both sides: an entry whose case is right
again is an error, and so is a case that is further off than its entry says.
"""

import math
import tomllib
from collections.abc import Mapping
from dataclasses import dataclass
from enum import Enum
from pathlib import Path

from verification.calculating import Outcome
from verification.comparing import Difference

LARGEST_FINAL = 0.1
"""Largest difference of the final settlement of a case that isn't off, in per cent of it."""

LARGEST_CURVE = 0.5
"""Largest difference of settlement at any time, depth or load step, in per cent of the final."""

LARGEST_STRESS = 0.5
"""Largest difference of any stress, in per cent of the largest of its kind at the vertical."""

LARGEST_DISSIPATION = 0.5
"""Largest difference of any degree of consolidation, in per cent of the full one."""

LIST = Path(__file__).with_name("known.toml")


class Verdict(Enum):
    """What is to be said of a case, in the words of the table."""

    GOOD = "good"
    KNOWN = "known"
    OFF = "off"
    WORSE = "worse than listed"
    MENDED = "listed, but good"

    @property
    def passes(self) -> bool:
        """Whether nothing has to be done about the case."""
        return self in (Verdict.GOOD, Verdict.KNOWN)


@dataclass(frozen=True)
class Entry:
    """A case that is known to be off, and what was found out about it.

    `refused`: the worker refuses the case. `final` and `curve`: how far off it is known to be at
    most, in per cent. `missing`: blocks or columns are known to differ.
    """

    reason: str
    refused: bool = False
    final: float = LARGEST_FINAL
    curve: float = LARGEST_CURVE
    missing: bool = False


def read_list(path: Path = LIST) -> dict[str, Entry]:
    """Return the known cases by name.

    Raises:
        TypeError: An entry has no reason, or a key that entries don't have.
    """
    return {name: Entry(**entry) for name, entry in tomllib.loads(path.read_text("utf-8")).items()}


def judge(outcome: Outcome, known: Mapping[str, Entry]) -> Verdict:
    """Return the verdict on a case."""
    entry = known.get(outcome.case.name)
    if not is_off(outcome.worst, LARGEST_FINAL, LARGEST_CURVE):
        return Verdict.MENDED if entry else Verdict.GOOD
    if entry is None:
        return Verdict.OFF
    if outcome.worst is None:
        return Verdict.KNOWN if entry.refused else Verdict.WORSE
    if outcome.worst.missing and not entry.missing:
        return Verdict.WORSE
    if is_off(outcome.worst, entry.final, entry.curve, missing_is_off=False):
        return Verdict.WORSE
    return Verdict.KNOWN


def is_off(
    difference: Difference | None, final: float, curve: float, *, missing_is_off: bool = True
) -> bool:
    """Return whether a difference is beyond the limits, or there was nothing to compare."""
    if difference is None or math.isnan(difference.final):
        return True
    if missing_is_off and difference.missing:
        return True
    curves = (
        difference.curve,
        difference.loads,
        difference.depth,
        difference.residual,
        difference.kinds,
    )
    stresses = (
        difference.initial_stress,
        difference.final_stress,
        difference.stresses,
        difference.preconsolidation,
    )
    return (
        difference.final > final
        or any(value > curve for value in curves)
        or any(value > LARGEST_STRESS for value in stresses)
        or difference.dissipation > LARGEST_DISSIPATION
    )


def needed(outcome: Outcome, verdict: Verdict) -> str:
    """Return what has to be done about a case whose verdict doesn't pass, as a sentence."""
    name, worst = outcome.case.name, outcome.worst
    if verdict is Verdict.MENDED:
        return f"{name} is good now: take it out of {LIST.parent.name}/{LIST.name}."
    if worst is None:
        return f"{name} is not calculated: {outcome.error}"
    off = f"final {worst.final:.3g} %, curve {worst.curve:.3g} %, loads {worst.loads:.3g} %"
    off += (
        f", depth {worst.depth:.3g} %, residual {worst.residual:.3g} %, kinds {worst.kinds:.3g} %"
    )
    off += f", stresses {max(worst.final_stress, worst.stresses):.3g} %"
    off += f", dissipation {worst.dissipation:.3g} %"
    missing = f"; {'; '.join(worst.missing)}" if worst.missing else ""
    listed = " than listed" if verdict is Verdict.WORSE else ""
    return f"{name} is {'further off' if listed else 'off'}{listed}: {off}{missing}."
