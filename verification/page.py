"""The page of the documentation: table, what is known of cases that are off, and pictures."""

from collections.abc import Iterator, Mapping, Sequence
from pathlib import Path

from verification.calculating import Outcome
from verification.judging import (
    LARGEST_CURVE,
    LARGEST_DISSIPATION,
    LARGEST_FINAL,
    LARGEST_STRESS,
    Entry,
    Verdict,
)
from verification.pictures import TELLING, draw
from verification.table import markdown_table

_PICTURES = "verification"

_HEAD = f"""\
# Verification

<!-- Written by `make verify`. -->

The worker's results held against published ones of D-Settlement 23.2, vertical by vertical. All
figures are the largest differences of a case, in per cent:

- of the vertical's final settlement, or of the largest one for a vertical that settles less than
  2 % of that: the final settlement, the settlement at every time (curve), by every load step
  (loads), at every node and time (depth), at the residual times, and of each layer by the kinds of
  NEN-Koppejan (kinds);
- of the vertical's largest stress: the effective stresses at the beginning (stress 0), in the end
  (stress end) and at every time (stresses), and the preconsolidation pressure (precon.);
- of full consolidation: the degree of every layer at every time, where a file has the dissipation
  (dissip.).

A case is *good* if its final settlement is within {LARGEST_FINAL} %, every point of every curve
within {LARGEST_CURVE} %, every stress within {LARGEST_STRESS} % and every degree of consolidation
within {LARGEST_DISSIPATION} %. Cases that are *known* to be off are told about below the table.
Where times or nodes differ, the worker's results are interpolated.
"""


def write_page(
    path: Path, outcomes: Sequence[tuple[Outcome, Verdict]], known: Mapping[str, Entry]
) -> None:
    """Write the page, and its pictures into a folder beside it.

    Args:
        path: The page.
        outcomes: All cases with their verdicts.
        known: What is known of the cases that are off.
    """
    folder = path.parent / _PICTURES
    folder.mkdir(parents=True, exist_ok=True)
    for picture in folder.glob("*.svg"):
        picture.unlink()
    lines = [_HEAD, *markdown_table(outcomes), ""]
    lines += _known(outcomes, known)
    lines += _pictures(folder, outcomes)
    path.write_text("\n".join(lines).rstrip() + "\n", encoding="utf-8")


def _known(
    outcomes: Sequence[tuple[Outcome, Verdict]], known: Mapping[str, Entry]
) -> Iterator[str]:
    reasons = [
        f"| {outcome.case.name} | {known[outcome.case.name].reason} |"
        for outcome, verdict in outcomes
        if verdict in (Verdict.KNOWN, Verdict.WORSE)
    ]
    if reasons:
        yield from ("## What is off, and why", "", "| case | what was found out |", "|---|---|")
        yield from (*reasons, "")


def _pictures(folder: Path, outcomes: Sequence[tuple[Outcome, Verdict]]) -> Iterator[str]:
    calculated = {outcome.case.name: outcome for outcome, _ in outcomes if outcome.differences}
    shown = [(name, caption) for name, caption in TELLING.items() if name in calculated]
    if shown:
        yield from ("## Pictures", "")
        yield "Points are published, lines are the worker's; pale ones are without the last loads."
        yield ""
    for name, caption in shown:
        draw(folder / f"{name}.svg", calculated[name])
        yield from (f"![{caption}]({_PICTURES}/{name}.svg)", "", f"*{name}*: {caption}.", "")
