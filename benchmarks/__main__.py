"""Runs the benchmarks side by side with their baselines, prints a table and writes it as JSON.

    python -m benchmarks [--json build/benchmarks.json] [materials reader ...]

The exit status is 1 if a ratio misses its bound.
"""

import argparse
import json
import sys
from collections.abc import Iterable
from dataclasses import asdict
from importlib import import_module
from pathlib import Path

from rich.console import Console
from rich.table import Table

from benchmarks.side_by_side import Row

SUBJECTS = ("imports", "materials", "reader", "geometry", "posting", "variants")


def bound(row: Row) -> str:
    if row.at_least is not None:
        return f"≥ {row.at_least:.3g}"
    return "" if row.at_most is None else f"≤ {row.at_most:.3g}"


def show(rows: Iterable[Row]) -> None:
    table = Table(title="Ratios measured side by side in one run", title_justify="left")
    table.add_column("what")
    table.add_column("ratio", justify="right")
    table.add_column("bound", justify="right")
    table.add_column("")
    table.add_column("medians", style="dim")
    for row in rows:
        bounded = row.at_least is not None or row.at_most is not None
        verdict = ("holds" if row.holds else "[bold red]missed[/]") if bounded else ""
        table.add_row(row.name, f"{row.ratio:.2f}", bound(row), verdict, row.note)
    Console(width=140).print(table)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0] if __doc__ else None)
    parser.add_argument("subjects", nargs="*", choices=[[], *SUBJECTS], metavar="subject")
    parser.add_argument("--json", type=Path, default=Path("build/benchmarks.json"))
    options = parser.parse_args()

    rows: list[Row] = []
    for subject in options.subjects or SUBJECTS:
        print(f"measuring {subject} ...", flush=True)
        rows += import_module(f"benchmarks.subjects.{subject}").rows()
    show(rows)
    options.json.parent.mkdir(parents=True, exist_ok=True)
    report = [{**asdict(row), "holds": row.holds} for row in rows]
    options.json.write_text(json.dumps(report, indent=1) + "\n", encoding="utf-8")
    print(f"written to {options.json}")
    return 0 if all(row.holds for row in rows) else 1


if __name__ == "__main__":
    sys.exit(main())
