"""Damaged files of wide models: all are read or refused in plain words, soon and without growth.

The damage is another in each run; `SEMBRA_SEED` repeats one.
"""

import random
import re
import time
from functools import cache
from pathlib import Path

import pytest
from pydantic_core import to_json
from sembra.core import Color
from sembra.errors import ModelError, ParsingError
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    DrainGrid,
    DrainType,
    Model2D,
    VerticalDrain,
    _Point,
)
from sembra.local.input_file import read_model
from sembra.local.service.document import read_document
from sembra.local.service.filling import fill
from sembra.local.worker.job import run_job

from tests.seeds import new_seed
from tests.toolkit.growth import growth
from tests.toolkit.worker.input_file import job

LIMIT = 10.0
"""Processor seconds for one file."""
GROWTH = 80_000
"""Bytes that may be kept after many files: what the interpreter and the libraries remember."""
INSIDE = re.compile(
    r"Traceback|\b[A-Z]\w+Error\b|pydantic|jinja|object at 0x|<class|an error of its own"
)
NUMBER = re.compile(r"(?<![\w.])[-+]?\d+(?:\.\d*)?(?:[eE][-+]?\d+)?")
HEADING = re.compile(r"^\[(?:END OF )?[A-Z ]+\]$")
NUMBERS = ["0", "-1", "1", "2", "63", "1e308", "-1e308", "1e-320", "nan", "inf", "", "x", "3.7"]
COUNTS = ["99999", "1000000000", "9" * 40, "-" + "9" * 20]
WORDS = [
    "\x00",
    "\ufeff",
    "\u2028",
    "é" * 2000,
    "=" * 5000,
    "[",
    "[END OF INPUT DATA]",
    "\t",
    " " * 9999,
]


@cache
def wide_text(layers: int = 12, verticals: int = 120, loads: int = 60) -> str:
    """Return the input file of an embankment in many lifts on many layers, with drains."""
    drain = VerticalDrain(
        DrainType.STRIP, 100.0, 900.0, -6.0, 1.5, 0.1, thickness=0.005, grid=DrainGrid.TRIANGULAR,
        start_of_drainage=0.0, phreatic_level_in_drain=-1.0,
    )  # fmt: skip
    model = Model2D(
        CalculationModel.NEN_KOPPEJAN,
        ConsolidationModel.TERZAGHI,
        [(0.0, -60.0), (1000.0, -60.0)],
        limits=(0.0, 1000.0),
        vertical_drain=drain,
    )

    def line(*points: tuple[float, float]) -> list[_Point]:
        return [model.create_point(x, y) for x, y in points]

    heads = [
        model.create_pl_line(line((0.0, -y), (400.0, -y - 0.5), (1000.0, -y)), y == 1.0)
        for y in (1.0, 2.0, 3.0, 4.0)
    ]
    for number in range(layers):
        depth = -5.0 * (layers - number - 1)
        bends = [(x * 25.0, depth - (0.3 if depth and x % 2 else 0.0)) for x in range(1, 40)]
        model.create_material(f"Soil {number}", 14.0, 15.0, cp=30.0, color=Color(90, 60, number))
        points = line((0.0, depth), *bends, (1000.0, depth))
        model.create_layer(points, f"Soil {number}", heads[number % 4], heads[3])
    for number in range(verticals):
        model.create_vertical(1000.0 * (number + 1) / (verticals + 1))
    for number in range(loads):
        x = 25.0 * (1 + number % 38)  # from one point of the surface to the next
        shape = [(x, 0.0), (x + 5.0, 1.5), (x + 20.0, 1.5), (x + 25.0, 0.0)]
        model.create_non_uniform_load(f"Lift {number}", shape, number, number + 9, 18.0, 20.0)
    model.set_calculation_times(*range(1, 60))
    return fill(read_document(to_json({"input": model._generate_input()})))


def sections(lines: list[str]) -> list[int]:
    """Return the lines that begin or end a section."""
    return [number for number, line in enumerate(lines) if HEADING.match(line)]


def damage(lines: list[str], chance: random.Random) -> None:
    """Change a number or a count, or take out, double or move lines, or whole sections."""
    at = chance.randrange(len(lines))
    begin, end = sorted(chance.choices(sections(lines) or [0], k=2))
    match chance.randrange(9):
        case 0:
            del lines[at : at + chance.choice((1, 1, 5, 200))]
        case 1:
            lines[at:at] = lines[at : at + chance.choice((1, 1, 5, 200))]
        case 2:
            other = chance.randrange(len(lines))
            lines[at], lines[other] = lines[other], lines[at]
        case 3:
            del lines[begin : chance.choice((end, end + 1, begin + 1))]
        case 4:
            lines[at:at] = lines[begin : min(end, begin + 2000)]
        case 5:
            del lines[at:]
        case 6:
            lines[at] = lines[at][: len(lines[at]) // 2] + chance.choice(WORDS)
        case _:
            numbers = list(NUMBER.finditer(lines[at]))
            if numbers:
                # Counts come first in their line.
                found, values = chance.choice(
                    [(numbers[0], COUNTS), (chance.choice(numbers), NUMBERS)]
                )
                lines[at] = (
                    lines[at][: found.start()] + chance.choice(values) + lines[at][found.end() :]
                )


def damaged(text: str, name: str) -> str:
    """Return a file with some damage, which the name decides on."""
    chance = random.Random(name)
    lines = text.split("\n")
    for _ in range(chance.choice((1, 1, 1, 2, 4))):
        if lines:
            damage(lines, chance)
    return "\n".join(lines)


def check_words(reason: str) -> None:
    """A reason is in plain words, and short."""
    assert reason
    assert len(reason) < 1500
    assert reason.isprintable(), reason
    assert not INSIDE.search(reason), reason


def is_read(path: Path, text: str) -> bool:
    """Return whether a model was made of a file, and not a refusal in plain words."""
    path.write_bytes(text.encode())
    begin = time.process_time()
    try:
        read_model(path)
    except (ParsingError, ModelError) as error:
        check_words(str(error))
        return False
    finally:
        assert time.process_time() - begin < LIMIT
    return True


@pytest.mark.parametrize("block", range(4))
def test_a_model_or_a_reason(block: int, tmp_path: Path) -> None:
    seed = new_seed()
    print(f"SEMBRA_SEED={seed}")
    path = tmp_path / "wide.sli"
    read = 0
    for number in range(10):
        name = f"{seed} {block} {number}"
        print(name)
        read += is_read(path, damaged(wide_text(), name))
    assert read < 10  # else there would have been no damage


def test_the_wide_file_itself_is_read(tmp_path: Path) -> None:
    assert is_read(tmp_path / "wide.sli", wide_text())


@pytest.mark.parametrize("block", range(2))
def test_results_or_a_reason(block: int) -> None:
    seed = new_seed()
    print(f"SEMBRA_SEED={seed}")
    text = wide_text(layers=3, verticals=4, loads=6)
    for number in range(10):
        name = f"{seed} {block} {number}"
        print(name)
        begin = time.process_time()
        result = run_job(job(damaged(text, name)))
        assert time.process_time() - begin < LIMIT
        if result["error"] is not None:
            check_words(result["error"])


def test_nothing_is_kept_of_damaged_files(tmp_path: Path) -> None:
    path = tmp_path / "wide.sli"
    texts = [damaged(wide_text(layers=4, verticals=30, loads=10), f"kept {n}") for n in range(8)]

    assert growth(lambda: [is_read(path, text) for text in texts]) < GROWTH
