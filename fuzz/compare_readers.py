"""Compare the native reader of result files with the plain one on any number of texts.

    python -m fuzz.compare_readers --texts 2000000        # on all cores, seed printed
    python -m fuzz.compare_readers --replay fuzz-findings/difference-….json

A text on which the readers differ is saved as a file that `--replay` reads back, and the command
ends with status 1.
"""

import argparse
import hashlib
import json
import os
import secrets
import sys
import time
from concurrent.futures import ProcessPoolExecutor, as_completed
from pathlib import Path

from tests.output.agreement import difference
from tests.output.result_texts import ResultTexts

FINDINGS = Path("fuzz-findings")
BATCH = 2000

Finding = tuple[str, str]


def compare_batch(seed: str, count: int) -> list[Finding]:
    """Return the texts of one batch on which the readers differ, with what differs."""
    texts = ResultTexts(seed)
    findings = []
    for _ in range(count):
        text = texts.next()
        found = difference(text)
        if found is not None:
            findings.append((text, found))
    return findings


def save(finding: Finding) -> Path:
    """Write a text to a file that replays; JSON keeps every character, lone surrogates too."""
    text, found = finding
    content = json.dumps({"difference": found, "text": text}, indent=1)
    FINDINGS.mkdir(exist_ok=True)
    path = FINDINGS / f"difference-{hashlib.sha256(content.encode()).hexdigest()[:12]}.json"
    path.write_text(content)
    return path


def replay(path: Path) -> int:
    """Compare the readers on a saved text again."""
    found = difference(json.loads(path.read_text())["text"])
    print(found or "no difference")
    return 1 if found else 0


def run(count: int, jobs: int, seed: str) -> int:
    """Compare the readers on `count` texts."""
    print(f"seed {seed}: {count} texts on {jobs} processes", flush=True)
    start = time.monotonic()
    sizes = [min(BATCH, count - first) for first in range(0, count, BATCH)]
    done, differences = 0, 0
    with ProcessPoolExecutor(jobs) as pool:
        batches = {
            pool.submit(compare_batch, f"{seed}-{number}", size): size
            for number, size in enumerate(sizes)
        }
        for number, batch in enumerate(as_completed(batches), start=1):
            done += batches[batch]
            for finding in batch.result():
                differences += 1
                print(f"difference saved as {save(finding)}", flush=True)
            if number % 50 == 0:
                print(f"{done} texts, {time.monotonic() - start:.0f} s", flush=True)
    seconds = time.monotonic() - start
    print(f"seed {seed}: {done} texts compared in {seconds:.0f} s, {differences} differences")
    return 1 if differences else 0


def main() -> int:
    """Read the command line and run."""
    parser = argparse.ArgumentParser(description="Compare the two readers of result files.")
    parser.add_argument("--texts", type=int, default=20_000, help="number of texts to compare")
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 1, help="processes")
    parser.add_argument("--seed", default=secrets.token_hex(4), help="seed of the texts")
    parser.add_argument("--replay", type=Path, help="compare on a saved text instead")
    options = parser.parse_args()
    if options.replay is not None:
        return replay(options.replay)
    return run(options.texts, options.jobs, options.seed)


if __name__ == "__main__":
    sys.exit(main())
