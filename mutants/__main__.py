"""Put small faults into the C++ code and tell which of them the tests don't notice.

    python -m mutants                      # 60 of each area, the same ones each time
    python -m mutants --count 200 --seed 7 --areas reader
    python -m mutants --list               # what there would be
    python -m mutants --resume             # without those that were tried before the last run ended

A fault that no test notices is to be killed by a new test, or explained in mutants/explained.toml.
The command ends with status 1 if there is one that is neither.
"""

import argparse
import json
import os
import random
import time
import tomllib
from collections import Counter
from pathlib import Path

from mutants import tree
from mutants.areas import AREAS, Area
from mutants.source import Mutant, mutants_of
from mutants.switches import numbered, switched
from mutants.trying import outcomes

EXPLAINED = Path(__file__).parent / "explained.toml"
REPORT = tree.TREE / "report.json"


def sample(area: Area, seed: str, count: int) -> list[Mutant]:
    """Return some mutants of an area, in an order that has nothing to do with the code's."""
    root = tree.PROJECT
    found: list[Mutant] = []
    for path in area.files(root):
        numbers = numbered(mutants_of(root, path))
        _, fitting = switched((root / path).read_text(), numbers, tree.HEADER)
        found += [numbers[number] for number in sorted(fitting)]
    return random.Random(f"{seed} {area.name}").sample(found, min(count, len(found)))


def explanations() -> dict[tuple[str, str, str], str]:
    """Return why some mutants can't be noticed, by file and by the line before and after."""
    entries = tomllib.loads(EXPLAINED.read_text())["mutant"]
    return {(entry["file"], entry["before"], entry["after"]): entry["why"] for entry in entries}


def why(mutant: Mutant, explained: dict[tuple[str, str, str], str]) -> str | None:
    """Return why a mutant can't be noticed, if that is known."""
    return explained.get((mutant.path.name, mutant.before.strip(), mutant.after.strip()))


def try_area(
    area: Area, mutants: dict[int, Mutant], jobs: int, report: list[dict[str, str]]
) -> Counter[str]:
    """Try the mutants of one area that the report doesn't have, adding to it as it goes."""
    explained = explanations()
    tried = {entry["mutant"] for entry in report}
    counts = Counter(
        entry["outcome"].split(":")[0] for entry in report if entry["area"] == area.name
    )
    mutants = {number: mutant for number, mutant in mutants.items() if str(mutant) not in tried}
    if not mutants:
        return counts
    start = time.monotonic()
    ((_, sound),) = outcomes([0], area.tests, 3600, 1)
    if sound != "survived":
        raise SystemExit(f"the tests fail without any fault: {sound}")
    limit = 20 + 5 * jobs * (time.monotonic() - start)
    for number, outcome in outcomes(mutants, area.tests, limit, jobs):
        mutant = mutants[number]
        if outcome == "survived" and why(mutant, explained):
            outcome = "explained"
        counts[outcome.split(":")[0]] += 1
        report.append({"area": area.name, "mutant": str(mutant), "outcome": outcome})
        REPORT.write_text(json.dumps(report, indent=1))
        if outcome == "survived":
            print(f"survived {mutant}", flush=True)
    return counts


def main() -> int:
    """Read the command line and run."""
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0] if __doc__ else "")
    parser.add_argument("--count", type=int, default=60, help="mutants of each area")
    parser.add_argument("--seed", default="1", help="which of them")
    parser.add_argument(
        "--areas",
        nargs="*",
        choices=[area.name for area in AREAS],
        default=[area.name for area in AREAS],
        help="; ".join(f"{area.name}: {area.what}" for area in AREAS),
    )
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 1, help="side by side")
    parser.add_argument("--list", action="store_true", help="only say which")
    parser.add_argument("--resume", action="store_true", help="go on with the last report")
    options = parser.parse_args()
    areas = [area for area in AREAS if area.name in options.areas]
    chosen = {area.name: sample(area, options.seed, options.count) for area in areas}
    if options.list:
        print("\n".join(str(mutant) for mutants in chosen.values() for mutant in mutants))
        return 0
    mutants = numbered(mutant for those in chosen.values() for mutant in those)
    placed = tree.prepare(mutants)
    print(f"{len(placed)} mutants; {len(mutants) - len(placed)} more do not compile", flush=True)
    report: list[dict[str, str]] = []
    if options.resume and REPORT.exists():
        report += json.loads(REPORT.read_text())
    total: Counter[str] = Counter()
    for area in areas:
        own = set(chosen[area.name])
        those = {n: m for n, m in mutants.items() if n in placed and m in own}
        counts = try_area(area, those, options.jobs, report)
        total += counts
        print(f"{area.name}: {dict(counts)}", flush=True)
    print(f"seed {options.seed}, all: {dict(total)}; each in {REPORT.relative_to(tree.PROJECT)}")
    return 1 if total["survived"] else 0


if __name__ == "__main__":
    raise SystemExit(main())
