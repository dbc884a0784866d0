"""Runs the worker on published cases, compares, and writes the page of the documentation.

    python -m verification [folder ...]

Without folders it takes those that `SEMBRA_SAMPLES` and `SEMBRA_CASES` name, or `samples` and
`cases` in `../shared`, and writes `docs/verification.md`; for folders of your own the page is
written below `build/`. The exit status is 1 if a case is off without being listed with its reason,
or listed and no longer off, and 2 if there are no cases.
"""

import argparse
import sys
from collections.abc import Sequence
from concurrent.futures import ProcessPoolExecutor, as_completed
from pathlib import Path
from statistics import median

from rich.console import Console
from rich.progress import BarColumn, MofNCompleteColumn, Progress, TextColumn

from verification.calculating import Outcome, calculate
from verification.cases import ROOT, Case, default_folders, find_cases
from verification.judging import judge, needed, read_list
from verification.page import write_page
from verification.table import terminal_table

_PAGE = ROOT / "docs" / "verification.md"
_PAGE_ELSEWHERE = ROOT / "build" / "verification" / "verification.md"
_WIDTH = 195


def main() -> int:
    """Verify, and return the exit status."""
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("folders", nargs="*", type=Path, metavar="folder")
    folders: list[Path] = parser.parse_args().folders
    try:
        cases = find_cases(folders or default_folders())
    except FileNotFoundError as error:
        print(f"Nothing to verify with: {error}", file=sys.stderr)
        return 2

    console = Console(width=None if sys.stdout.isatty() else _WIDTH)
    known = read_list()
    outcomes = [(outcome, judge(outcome, known)) for outcome in _calculate_all(cases)]
    console.print(terminal_table(outcomes))
    seconds = [outcome.seconds for outcome, _ in outcomes]
    good = sum(verdict.passes for _, verdict in outcomes)
    console.print(
        f"{len(outcomes)} cases, {good} good or known; a calculation takes {median(seconds):.3f} s"
        f" (median), {max(seconds):.2f} s at most."
    )
    page = _PAGE_ELSEWHERE if folders else _PAGE
    write_page(page, outcomes, known)
    console.print(f"Written to {page.relative_to(ROOT)}.")
    faults = [needed(outcome, verdict) for outcome, verdict in outcomes if not verdict.passes]
    for fault in faults:
        console.print(fault, style="red", highlight=False)
    return 1 if faults else 0


def _calculate_all(cases: Sequence[Case]) -> list[Outcome]:
    """Return the outcomes of all cases in their order, calculated in a process for each core."""
    progress = Progress(
        TextColumn("{task.description}"),
        BarColumn(),
        MofNCompleteColumn(),
        console=Console(stderr=True),
        transient=True,
    )
    # Those that take longest come first, so that no core is left with one of them in the end.
    in_turn = sorted(cases, key=lambda case: -case.result_file.stat().st_size)
    with progress, ProcessPoolExecutor() as executor:
        task = progress.add_task("calculating", total=len(cases))
        jobs = {case.name: executor.submit(calculate, case) for case in in_turn}
        for _ in as_completed(jobs.values()):
            progress.advance(task)
    return [jobs[case.name].result() for case in cases]


if __name__ == "__main__":
    sys.exit(main())
