"""The peak of memory while results are read, in a process of its own.

    python -m benchmarks.peak_memory FILE COPIES

Prints the peak beyond the text and the size of the result, in bytes. The verticals of the file are
taken several times over, so that the figures stand out from the grain in which memory is handed
out.
"""

import gc
import subprocess
import sys
from io import StringIO
from pathlib import Path
from typing import Any

from sembra.external.dsettlement import OutputFileParser

# Python hands out memory in multiples of this many bytes: a float of 24 bytes takes 32.
GRAIN = 16


def resident(field: str) -> int:
    """Return a figure of this process's memory in bytes: VmRSS now, VmHWM at its highest."""
    for line in Path("/proc/self/status").read_text().splitlines():
        if line.startswith(field + ":"):
            return int(line.split()[1]) * 1024
    raise RuntimeError(f"no {field} in /proc/self/status")


def size_of(value: Any, seen: set[int]) -> int:
    """Return the size of a result: all its objects, each once, in the grain of the allocator."""
    if id(value) in seen:
        return 0
    seen.add(id(value))
    size = -(-sys.getsizeof(value) // GRAIN) * GRAIN
    if isinstance(value, dict):
        size += sum(size_of(part, seen) for entry in value.items() for part in entry)
    elif isinstance(value, list):
        size += sum(size_of(part, seen) for part in value)
    return size


def repeated(path: Path, copies: int) -> str:
    """Return the results of a file with its verticals several times over."""
    text = path.read_bytes().decode("cp1252")
    first, last = text.index("[Vertical]"), text.rindex("[End of Vertical]")
    return "[Results]\n" + (text[first:last] + "[End of Vertical]\n") * copies + "[End of Results]"


def measure(path: Path, copies: int) -> tuple[int, int]:
    """Return the peak beyond the text and the size of the result, in bytes."""
    parser = OutputFileParser(StringIO(repeated(path, copies), newline=""))
    gc.collect()
    Path("/proc/self/clear_refs").write_text("5")  # starts VmHWM anew
    before = resident("VmRSS")
    result = parser.vertical_results
    peak = resident("VmHWM") - before
    return peak, size_of(result, set())


def measure_apart(path: Path, copies: int) -> tuple[int, int]:
    """Return the same, measured in a new process."""
    command = [sys.executable, "-m", "benchmarks.peak_memory", str(path), str(copies)]
    done = subprocess.run(command, check=True, capture_output=True, text=True)
    peak, size = done.stdout.split()
    return int(peak), int(size)


if __name__ == "__main__":
    print(*measure(Path(sys.argv[1]), int(sys.argv[2])))
