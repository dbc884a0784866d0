"""Damaged input files: every one gives results of finite numbers or an error in plain words."""

import random
import re

import pytest
from sembra.local.worker.job import run_job

from tests.toolkit.worker.drain_section import with_drains
from tests.toolkit.worker.embankments import with_embankment
from tests.toolkit.worker.ground.test_imaginary_surface import with_imaginary_surface
from tests.toolkit.worker.input_file import input_text, job
from tests.toolkit.worker.input_section import two_dimensional
from tests.toolkit.worker.loads.test_pressure_loads import with_load
from tests.toolkit.worker.loads.test_water_loads import with_water_load

LOADS = [("weight", -1, 5.0, 1.0, 0.0), ("on", 0, 20.0, 1.0, 0.0), ("off", 3, -10.0, 1.0, 0.0)]
DEWATERED = ("0 : Flow type = Off", "1 : Flow type = Simple input")
TEXTS = [
    input_text(loads=LOADS, times=[0, 10]),
    with_embankment(two_dimensional(), 1, 200),
    with_load(two_dimensional(), "trapeziform"),
    with_load(two_dimensional(), "circular"),
    with_load(two_dimensional(), "rectangular"),
    with_water_load(with_imaginary_surface(1), time=10),
    with_drains(input_text(soils={"Clay": {"SoilDrained": 0}}, phreatic_level=0.0), DEWATERED),
]
VALUES = ["0", "-1", "1", "1e308", "-1e308", "1e-320", "nan", "", "x", "99", "1000000000", "3.7"]
NUMBER = re.compile(r"[-+]?\d+(\.\d*)?([eE][-+]?\d+)?")
INPUT_DATA = 9


def damage(lines: list[str], chance: random.Random) -> None:
    """Take a line out, double one, empty one, or put something else in the place of a number."""
    at = chance.randrange(INPUT_DATA, len(lines))
    match chance.randrange(6):
        case 0:
            del lines[at]
        case 1:
            lines.insert(at, chance.choice(lines))
        case 2:
            lines[at] = ""
        case _:
            numbers = list(NUMBER.finditer(lines[at]))
            if numbers:
                start, end = chance.choice(numbers).span()
                lines[at] = lines[at][:start] + chance.choice(VALUES) + lines[at][end:]


@pytest.mark.parametrize("seed", range(300))
def test_results_or_a_reason(seed: int) -> None:
    chance = random.Random(seed)
    lines = chance.choice(TEXTS).split("\n")
    for _ in range(chance.choice((1, 1, 2, 4))):
        damage(lines, chance)
    result = run_job(job("\n".join(lines)))
    if result["error"] is None:
        assert list(result["files"]) == [".sld"]
    else:
        assert list(result["files"]) == [".err"]
        assert "an error of its own" not in result["error"]
        assert result["error"].endswith(".")
