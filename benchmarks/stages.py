"""How much of a read the first stage takes: what releasing the interpreter lock in it could gain.

    python -m benchmarks.stages

Prints one line per real file, whose verticals are taken several times over to make a text of four
million characters.
"""

from sembra.external.dsettlement import OutputFileParser

from benchmarks.marking import mark_verticals
from benchmarks.peak_memory import repeated
from benchmarks.side_by_side import seconds
from benchmarks.subjects.reader import SAMPLES

SIZE = 4_000_000
ROUNDS = 15


def main() -> None:
    """Measure both; the least of each counts, since disturbances only add."""
    for path in sorted(SAMPLES.glob("*.sld")):
        text = repeated(path, -(-SIZE // path.stat().st_size))

        def read(text: str = text) -> object:
            return OutputFileParser._parse_verticals(text)

        def mark(text: str = text) -> object:
            return mark_verticals(text)

        marking = min(seconds(mark) for _ in range(ROUNDS)) * 1e3
        reading = min(seconds(read) for _ in range(ROUNDS)) * 1e3
        print(f"{path.stem:14} {marking / reading:6.1%}   {marking:.2f} ms of {reading:.1f} ms")


if __name__ == "__main__":
    main()
