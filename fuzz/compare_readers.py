"""Compare the native reader of result files with the plain one on any number of texts.

    python -m fuzz.compare_readers --texts 2000000        # on all cores, seed printed
    python -m fuzz.compare_readers --replay fuzz-findings/difference-….json

A text on which the readers differ is saved as a file that `--replay` reads back, and so is one that
brings a process down or takes longer than `--limit` seconds. The command then ends with status 1.
"""

import argparse
import faulthandler
import hashlib
import json
import os
import secrets
import sys
import tempfile
import time
from concurrent.futures import ProcessPoolExecutor, as_completed
from concurrent.futures.process import BrokenProcessPool
from pathlib import Path

from fuzz.current_text import CurrentText, read_current_text
from tests.output.agreement import difference
from tests.output.result_texts import ResultTexts

FINDINGS = Path("fuzz-findings")
BATCH = 2000
LIMIT = 30.0

Finding = tuple[str, str]


def compare(text: str) -> str | None:
    """Describe the first difference on a text, or a failure to compare at all."""
    try:
        return difference(text)
    except Exception as error:
        return f"the comparison failed: {error!r}"


class Worker:
    """A process that compares the readers, and writes down each text before it does."""

    def __init__(self, folder: Path, limit: float) -> None:
        faulthandler.enable()
        self._current = CurrentText(folder / str(os.getpid()))
        self._limit = limit

    def compare(self, seed: str, count: int) -> list[Finding]:
        """Return the texts of one batch on which the readers differ, with what differs."""
        texts = ResultTexts(seed)
        findings = []
        for _ in range(count):
            text = texts.next()
            self._current.set(text)
            # Shows where it hangs and ends the process; the text is left behind.
            faulthandler.dump_traceback_later(self._limit, exit=True)
            found = compare(text)
            faulthandler.cancel_dump_traceback_later()
            if found is not None:
                findings.append((text, found))
        self._current.clear()
        return findings


_worker: Worker | None = None


def start_worker(folder: Path, limit: float) -> None:
    """Make this process a worker."""
    global _worker
    _worker = Worker(folder, limit)


def compare_batch(seed: str, count: int) -> list[Finding]:
    """Let this process's worker compare one batch."""
    assert _worker is not None
    return _worker.compare(seed, count)


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
    found = compare(json.loads(path.read_text())["text"])
    print(found or "no difference")
    return 1 if found else 0


def left_behind(folder: Path) -> list[Finding]:
    """Return what the processes were at work on when the first of them died.

    Which of them that was can't be told from the others, which were ended for it.
    """
    texts = [read_current_text(path) for path in sorted(folder.iterdir())]
    found = "a process died, or took too long, on this text or on another saved with it"
    return [(text, found) for text in texts if text is not None]


def run(count: int, jobs: int, seed: str, limit: float) -> int:
    """Compare the readers on `count` texts."""
    print(f"seed {seed}: {count} texts on {jobs} processes", flush=True)
    start = time.monotonic()
    sizes = [min(BATCH, count - first) for first in range(0, count, BATCH)]
    done, findings, broken = 0, 0, ""
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        try:
            with ProcessPoolExecutor(
                jobs, initializer=start_worker, initargs=(folder, limit)
            ) as pool:
                batches = {
                    pool.submit(compare_batch, f"{seed}-{number}", size): size
                    for number, size in enumerate(sizes)
                }
                for number, batch in enumerate(as_completed(batches), start=1):
                    for finding in batch.result():
                        findings += 1
                        print(f"difference saved as {save(finding)}", flush=True)
                    done += batches[batch]
                    if number % 50 == 0:
                        print(f"{done} texts, {time.monotonic() - start:.0f} s", flush=True)
        except BrokenProcessPool:
            broken = "; broken off: a process died or took too long"
            for finding in left_behind(folder):
                findings += 1
                print(f"text saved as {save(finding)}", flush=True)
        except KeyboardInterrupt:
            broken = "; broken off by the user"
    seconds = time.monotonic() - start
    print(f"seed {seed}: {done} texts compared in {seconds:.0f} s, {findings} findings{broken}")
    return 1 if findings or broken else 0


def main() -> int:
    """Read the command line and run."""
    parser = argparse.ArgumentParser(description="Compare the two readers of result files.")
    parser.add_argument("--texts", type=int, default=20_000, help="number of texts to compare")
    parser.add_argument("--jobs", type=int, default=os.cpu_count() or 1, help="processes")
    parser.add_argument("--seed", default="", help="seed of the texts; empty for a new one")
    parser.add_argument("--limit", type=float, default=LIMIT, help="seconds for one text")
    parser.add_argument("--replay", type=Path, help="compare on a saved text instead")
    options = parser.parse_args()
    if options.replay is not None:
        faulthandler.enable()
        faulthandler.dump_traceback_later(options.limit, exit=True)
        return replay(options.replay)
    return run(options.texts, options.jobs, options.seed or secrets.token_hex(4), options.limit)


if __name__ == "__main__":
    sys.exit(main())
