"""Calculations of D-Settlement, repeated by the worker and compared line by line."""

import re
from itertools import zip_longest

import numpy as np
import pytest
from sembra.local.worker.consolidation.degrees import degrees_of_consolidation
from sembra.local.worker.input.geometry_2d import read_geometry
from sembra.local.worker.input.sections import read_whole
from sembra.local.worker.input.soils import read_materials
from sembra.local.worker.soil_models.bjerrum import Bjerrum

from tests.toolkit.samples import FOLDER, needs_samples
from tests.toolkit.worker.drained_sample import drained_columns
from tests.toolkit.worker.input_file import calculated, refused

pytestmark = needs_samples

# What remains: percentages of the final settlement differ in the sixth decimal, a residual
# settlement in the seventh, and the printed final time in the eleventh, since D-Settlement adds
# its times up with rounding errors.
LARGEST_DIFFERENCE = 3e-6


def results(text: str) -> list[str]:
    """Return the lines of the results block."""
    lines = text.splitlines()
    return lines[lines.index("[Results]") :]


def numbers(line: str) -> list[float]:
    return [float(field) for field in re.findall(r"[-+]?\d+(?:\.\d*)?", line)]


def words(line: str) -> str:
    return " ".join(re.sub(r"[-+]?\d+(?:\.\d*)?", "#", line).split())


def compare(name: str) -> tuple[int, float]:
    """Return how many lines differ in their numbers, and by how much at most."""
    found = results(calculated((FOLDER / f"{name}.sli").read_bytes()))
    expected = results((FOLDER / f"{name}.sld").read_text("ascii"))
    different, largest = 0, 0.0
    for ours, theirs in zip_longest(found, expected, fillvalue=""):
        assert words(ours) == words(theirs)
        # The blank behind this count keeps readers from finding the stresses, so ours has none.
        if ours != theirs and theirs != f"{ours} ":
            differences = np.subtract(numbers(ours), numbers(theirs))
            different += 1
            largest = max(largest, float(np.abs(differences).max()))
    return different, largest


@pytest.mark.parametrize("name", ["bm3-7a", "bm3-7e"])
def test_one_dimension_to_the_last_digit(name: str) -> None:
    assert compare(name) == (0, 0.0)


@pytest.mark.parametrize(("name", "lines"), [("bm1-4", 7), ("bm2-3", 10), ("bm3-13b", 35)])
def test_cross_sections(name: str, lines: int) -> None:
    different, largest = compare(name)
    assert different <= lines
    assert largest < LARGEST_DIFFERENCE


def dissipation(text: str) -> list[np.ndarray]:
    """Return time and degree of consolidation of each layer, the lowest first."""
    blocks = re.findall(
        r"\[Dissipation layer\]\s+\d+  =  Layer Number \n(.*?)\n\[End of", text, re.DOTALL
    )
    return [np.array([numbers(row) for row in block.splitlines()]) for block in blocks]


def test_consolidation_of_layers_of_different_cv() -> None:
    whole = read_whole((FOLDER / "Tutorial-1c.sli").read_text("ascii"))
    column = read_geometry(whole, read_materials(whole, Bjerrum)).column(50.0, 0.0)
    expected = dissipation((FOLDER / "Tutorial-1c.sld").read_text("ascii"))
    times = expected[0][:, 0]
    degrees = degrees_of_consolidation(column, times, True, True)
    assert len(expected) == len(degrees) == 4
    for ours, theirs in zip(degrees[::-1], expected, strict=True):
        assert ours[1:] == pytest.approx(theirs[1:, 1], abs=5e-7)


def history(text: str) -> np.ndarray:
    """Return time and settlement of the surface."""
    block = re.search(r"Load step count \n(.*?)\n\[End of", text, re.DOTALL)
    assert block
    return np.array([numbers(row) for row in block[1].splitlines()])


def test_consolidation_with_columns() -> None:
    ours, theirs = (
        dissipation(text)[0]
        for text in (calculated(drained_columns()), (FOLDER / "bm4-8b.sld").read_text("ascii"))
    )
    assert ours[:, 0] == pytest.approx(theirs[:, 0], abs=1e-7)
    # D-Settlement's consolidation has begun just before time 0.
    assert ours[0, 1] == 0 < theirs[0, 1] < 3e-4
    assert ours[1:, 1] == pytest.approx(theirs[1:, 1], abs=2e-7)


def test_settlement_with_columns_and_underpressure() -> None:
    ours = history(calculated(drained_columns()))
    theirs = history((FOLDER / "bm4-8b.sld").read_text("ascii"))
    # D-Settlement's water pressure falls by 51.89 kPa, ours by 51.75 kPa, beside a load of 200 kPa.
    assert ours[:, 1] == pytest.approx(theirs[:, 1], rel=6e-4, abs=7e-5)
    # Without the underpressure, a fifth of the settlement were missing.
    idle = drained_columns().replace("   10000.000 = End time", "       0.000 = End time")
    idle = idle.replace("9.000 = Phreatic level in", "0.000 = Phreatic level in")
    assert history(calculated(idle))[-1, 1] < 0.82 * theirs[-1, 1]


@pytest.mark.parametrize(
    ("name", "message"),
    [
        ("bm3-14a", "The worker calculates NEN-Koppejan with Terzaghi consolidation only."),
        ("bm4-7b", "The worker calculates NEN-Koppejan with Terzaghi consolidation only."),
        ("bm4-8b", "The worker calculates NEN-Koppejan with Terzaghi consolidation only."),
        ("bm2-5b", "The worker does not cover submerging."),
    ],
)
def test_what_is_not_covered_says_so(name: str, message: str) -> None:
    assert refused((FOLDER / f"{name}.sli").read_bytes()) == message
