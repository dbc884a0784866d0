"""The table of all cases, on a terminal and in Markdown."""

import math
from collections.abc import Iterator, Sequence

from rich.table import Table

from verification.calculating import Outcome
from verification.comparing import MEASURES
from verification.judging import Verdict

HEADERS = (
    "final",
    "curve",
    "loads",
    "depth",
    "residual",
    "kinds",
    "stress 0",
    "stress end",
    "stresses",
    "precon.",
    "dissip.",
)
_COLORS = {
    Verdict.GOOD: "green",
    Verdict.KNOWN: "yellow",
}


def terminal_table(outcomes: Sequence[tuple[Outcome, Verdict]]) -> Table:
    """Return one row per case; differences in per cent."""
    table = Table(title="Differences from published results, in per cent", title_justify="left")
    table.add_column("case", no_wrap=True)
    table.add_column("kind", no_wrap=True)
    for header in HEADERS:
        table.add_column(header, justify="right")
    table.add_column("times")
    table.add_column("nodes")
    table.add_column("ms", justify="right", style="dim")
    table.add_column("verdict")
    for outcome, verdict in outcomes:
        color = _COLORS.get(verdict, "bold red")
        table.add_row(
            outcome.case.name,
            outcome.case.kind,
            *_cells(outcome),
            f"{1000 * outcome.seconds:.0f}",
            f"[{color}]{verdict.value}[/]",
        )
    return table


def markdown_table(outcomes: Sequence[tuple[Outcome, Verdict]]) -> Iterator[str]:
    """Return the lines of the same table in Markdown, without what differs from run to run."""
    headers = ("case", "kind", *HEADERS, "times", "nodes", "verdict")
    yield f"| {' | '.join(headers)} |"
    yield f"|---|---|{'---:|' * len(HEADERS)}---|---|---|"
    for outcome, verdict in outcomes:
        cells = (outcome.case.name, outcome.case.kind, *_cells(outcome), verdict.value)
        yield f"| {' | '.join(cells)} |"


def per_cent(value: float) -> str:
    """Return a difference as it stands in the tables: two digits that count, none below 0.0001."""
    if math.isnan(value):
        return ""
    if value < 0.00005:
        return "0"
    return f"{value:.1f}" if value >= 10 else f"{value:.2g}" if value >= 0.001 else f"{value:.4f}"


def _cells(outcome: Outcome) -> list[str]:
    worst = outcome.worst
    if worst is None:
        return [""] * (len(HEADERS) + 2)
    return [
        *(per_cent(getattr(worst, measure)) for measure in MEASURES),
        "same" if worst.same_times else "differ",
        "same" if worst.same_nodes else "differ",
    ]
