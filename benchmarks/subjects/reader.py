"""Reading result files: against the plain reader, against the floor, and on hostile texts."""

import ctypes
import math
import os
import time
from collections.abc import Sequence
from io import StringIO
from pathlib import Path

from sembra.errors import ParsingError
from sembra.external.dsettlement import OutputFileParser
from sembra.local.results import ResultFile

from benchmarks.hostile_texts import MAKERS
from benchmarks.peak_memory import measure_apart
from benchmarks.plain.output_parser import OutputFileParser as PlainOutputFileParser
from benchmarks.side_by_side import Row, compare
from benchmarks.tight_pass import exactly

ROOT = Path(__file__).resolve().parents[2]
SAMPLES = Path(os.environ.get("SEMBRA_SAMPLES", ROOT.parent / "shared" / "samples"))
# Where the caches end, or the allocator takes to asking the kernel, a doubling costs more than
# twice, once. What isn't linear shows at the next doubling as well, and at four instead of two.
HOSTILE_SIZES = (1_000_000, 10_000_000)
MOST_GROWTH = 2.2
SPAN = 0.2  # seconds: shorter ones waver with whatever else the machine does
ROUNDS = 4
COPIES = 60

# A character that makes Python take two or four bytes for each of a text, and some of the hostile
# texts to read in these widths.
WIDENING = {2: "\u0101", 4: "\U0001f4a7"}
WIDENED = (
    "bare CR",
    "unclosed depths",
    "one line of equals signs",
    "equal headers, equal times",
    "residuals in turn",
)


class Source(StringIO):
    """Hands out a text without a copy, whose time would stand in the figures."""

    def __init__(self, text: str) -> None:
        super().__init__()
        self._text = text

    def getvalue(self) -> str:
        """Return the text."""
        return self._text


def parser_of(source: Source) -> OutputFileParser | None:
    """Return a parser of a text, or None for a text that is refused."""
    try:
        return OutputFileParser(source)
    except ParsingError:
        return None


def read(parser: OutputFileParser | None, name: str) -> object:
    """Read one property; a refusal is as good as a result."""
    try:
        return getattr(parser, name, None)
    except (ValueError, IndexError):
        return None


def read_all(sources: Sequence[Source]) -> None:
    """Read all texts in every way, each way for one text after the other, and then drop it all.

    So several texts take their way through as much memory as one of their total size.
    """
    parsers = [parser_of(source) for source in sources]
    for name in ("vertical_results", "residual_times"):
        _results = [read(parser, name) for parser in parsers]


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


def against_parent(path: Path) -> Row:
    """Return how much longer a class takes that has a stress pattern of its own, and reads more."""
    derived = ResultFile.read(path)
    parent = OutputFileParser(Source(path.read_bytes().decode("cp1252")))
    times = max(1, 2_000_000 // len(parent.raw_results))

    def read_derived() -> None:
        for _ in range(times):
            _ = derived.vertical_results

    def read_parent() -> None:
        for _ in range(times):
            _ = parent.vertical_results

    return compare(
        f"{path.stem}: other stress pattern : native", read_derived, read_parent, at_most=1.5
    )


def memory(path: Path) -> Row:
    """Return the ratio of the peak to the result for one real file."""
    peak, size = measure_apart(path, COPIES)
    note = f"{peak / 1e6:.1f} MB : {size / 1e6:.1f} MB"
    return Row(f"{path.stem}: peak memory : result", peak / size, at_most=1.1, note=note)


def _seconds(sources: Sequence[Source], times: int) -> float:
    start = time.process_time()
    for _ in range(times):
        read_all(sources)
    return (time.process_time() - start) / times


def _keep_freed_memory() -> None:
    """Let the allocator keep what is freed, for the next read.

    Otherwise the kernel hands out, and clears, new pages for each read of a large text, which takes
    longer than many of the reads, and as the machine pleases.
    """
    mmap_max, trim_threshold = -4, -1
    libc = ctypes.CDLL(None)
    libc.mallopt(mmap_max, 0)
    libc.mallopt(trim_threshold, 2**31 - 1)


def widened(text: str, width: int) -> str:
    """Return a text in characters of so many bytes, the widening one inside the results."""
    return text.replace("[Results]", f"[Results]\n{WIDENING[width]}", 1) if width > 1 else text


def growth(name: str, width: int, size: int) -> Row:
    """Return how much longer a hostile text of twice the size takes.

    Two texts of the smaller size are read against one of the larger, in turn, so that both spans
    are as long, sweep through as much memory (one smaller text might fit into a cache), and meet
    the same disturbances; the least of each counts, since those only add.
    """
    one, other, large = (
        Source(widened(MAKERS[name](size * factor), width)) for factor in (1, 1, 2)
    )
    times = math.ceil(SPAN / max(_seconds([large], 1), 1e-4))
    spans = [(_seconds([large], times), _seconds([one, other], times) / 2) for _ in range(ROUNDS)]
    longer, shorter = min(span[0] for span in spans), min(span[1] for span in spans)
    characters = f", {width} bytes each" if width > 1 else ""
    title = f"{name}{characters}: {2 * size / 1e6:.0f} M characters : {size / 1e6:.0f} M"
    note = f"{longer * 1e3:.2f} ms : {shorter * 1e3:.2f} ms"
    return Row(title, longer / shorter, at_most=MOST_GROWTH, note=note)


def linearity(name: str, width: int = 1) -> Row:
    """Return the growth at the first size at which it is linear, or else at the last."""
    for size in HOSTILE_SIZES:
        row = growth(name, width, size)
        if row.holds:
            break
    return row


def rows() -> list[Row]:
    """Return all ratios; those on real files only where the files are."""
    report = []
    for path in sorted(SAMPLES.glob("*.sld")):
        report += [*against_plain_and_floor(path), against_parent(path), memory(path)]
    _keep_freed_memory()
    report += [linearity(name) for name in MAKERS]
    return report + [linearity(name, width) for name in WIDENED for width in WIDENING]
