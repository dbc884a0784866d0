"""Calculations of D-Settlement, repeated by the worker and compared line by line."""

import re
from itertools import zip_longest

import numpy as np
import pytest

from tests.toolkit.samples import FOLDER, needs_samples
from tests.toolkit.worker.input_file import calculated

pytestmark = needs_samples

# What remains: percentages of the final settlement differ in the sixth decimal, a residual
# settlement in the seventh, and the printed final time in the eleventh, since D-Settlement adds
# its times up with rounding errors.
LARGEST_DIFFERENCE = 3e-6


def results(text: str) -> list[str]:
    """Return the lines of the results block, without the worker's warnings."""
    lines = text.splitlines()
    if "[Warnings]" in lines:
        del lines[lines.index("[Warnings]") : lines.index("[End of Warnings]") + 1]
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


def history(text: str) -> np.ndarray:
    """Return time and settlement of the surface."""
    block = re.search(r"Load step count \n(.*?)\n\[End of", text, re.DOTALL)
    assert block
    return np.array([numbers(row) for row in block[1].splitlines()])
