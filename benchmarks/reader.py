"""Reading result files: against the plain reader, against the floor, and on hostile texts."""

import ctypes
import os
import time
from io import StringIO
from pathlib import Path

from sembra.errors import ParsingError
from sembra.external.dsettlement import OutputFileParser

from benchmarks.hostile_texts import MAKERS
from benchmarks.peak_memory import measure_apart
from benchmarks.plain.output_parser import OutputFileParser as PlainOutputFileParser
from benchmarks.side_by_side import Row, compare
from benchmarks.tight_pass import exactly

ROOT = Path(__file__).resolve().parents[1]
SAMPLES = Path(os.environ.get("SEMBRA_SAMPLES", ROOT.parent / "shared" / "samples"))
HOSTILE_SIZE = 5_000_000
COPIES = 60


class Source(StringIO):
    """Hands out a text without a copy, whose time would stand in the figures."""

    def __init__(self, text: str) -> None:
        super().__init__()
        self._text = text

    def getvalue(self) -> str:
        """Return the text."""
        return self._text


def read_hostile(source: Source) -> None:
    """Read a text in every way; a refusal is as good as a result."""
    try:
        parser = OutputFileParser(source)
    except ParsingError:
        return
    for name in ("vertical_results", "residual_times"):
        try:
            getattr(parser, name)
        except (ValueError, IndexError):
            continue


def against_plain_and_floor(path: Path) -> list[Row]:
    """Return the ratios for one real file."""
    text = path.read_bytes().decode("cp1252")
    native = OutputFileParser(StringIO(text, newline=""))
    plain = PlainOutputFileParser(StringIO(text, newline=""))
    raw = native.raw_results
    # A read that takes a fraction of a millisecond is timed in the company of others like it.
    times = max(1, 2_000_000 // len(raw))

    def read() -> None:
        for _ in range(times):
            _ = native.vertical_results

    def read_plainly() -> None:
        _ = plain.vertical_results

    def pass_tightly() -> None:
        for _ in range(times):
            exactly(raw)

    one_plain_read = compare("", read_plainly, read, rounds=5)
    against_plain = Row(
        f"{path.stem}: plain : native",
        one_plain_read.ratio * times,
        at_least=150,
        note=f"{one_plain_read.note} ({times} times)",
    )
    floor = compare(f"{path.stem}: native : tight pass", read, pass_tightly, at_most=1.5)
    return [against_plain, floor]


def memory(path: Path) -> Row:
    """Return the ratio of the peak to the result for one real file."""
    peak, size = measure_apart(path, COPIES)
    note = f"{peak / 1e6:.1f} MB : {size / 1e6:.1f} MB"
    return Row(f"{path.stem}: peak memory : result", peak / size, at_most=1.1, note=note)


def _seconds(source: Source, times: int) -> float:
    start = time.process_time()
    for _ in range(times):
        read_hostile(source)
    return time.process_time() - start


def _keep_freed_memory() -> None:
    """Let the allocator keep what is freed, for the next read.

    Otherwise the kernel hands out, and clears, new pages for each read of a large text, which takes
    longer than many of the reads, and as the machine pleases.
    """
    mmap_max, trim_threshold = -4, -1
    libc = ctypes.CDLL(None)
    libc.mallopt(mmap_max, 0)
    libc.mallopt(trim_threshold, 2**31 - 1)


def linearity(name: str) -> Row:
    """Return how much longer a hostile text of twice the size takes.

    The smaller text is read twice against the larger once, in turn, so that both spans are as long
    and meet the same disturbances; the least of each counts, since those only add.
    """
    once, twice = (Source(MAKERS[name](HOSTILE_SIZE * factor)) for factor in (1, 2))
    spans = [(_seconds(twice, 1), _seconds(once, 2) / 2) for _ in range(7)]
    longer, shorter = min(span[0] for span in spans), min(span[1] for span in spans)
    title = f"{name}: {2 * HOSTILE_SIZE / 1e6:.0f} MB : {HOSTILE_SIZE / 1e6:.0f} MB"
    note = f"{longer * 1e3:.1f} ms : {shorter * 1e3:.1f} ms"
    return Row(title, longer / shorter, at_most=2.2, note=note)


def rows() -> list[Row]:
    """Return all ratios; those on real files only where the files are."""
    report = []
    for path in sorted(SAMPLES.glob("*.sld")):
        report += [*against_plain_and_floor(path), memory(path)]
    _keep_freed_memory()
    return report + [linearity(name) for name in MAKERS]
