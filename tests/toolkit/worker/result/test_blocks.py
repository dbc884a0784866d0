"""The blocks of published result files, written again from their numbers."""

import re
from pathlib import Path

import numpy as np
import pytest
from sembra.local.worker.result.vertical import vertical_block

from tests.toolkit.worker.published_results import published_results
from verification.cases import default_folders

FILES = sorted(path for folder in default_folders() for path in folder.glob("*.sld"))
VERTICAL = re.compile(r"\[Vertical\]\n.*?\[End of Vertical\]\n", re.DOTALL)
HORIZONTAL = re.compile(r"\[ELASTICITY\]\n.*?\[END OF HORIZONTAL DISPLACEMENTS\]\n", re.DOTALL)
NUMBER = re.compile(r" *-?\d+(?:\.\d*)?")

# Settlements at round times are interpolated, here between numbers of seven decimals.
LAST_DIGIT = 2.1e-7

pytestmark = pytest.mark.skipif(not FILES, reason="no published result files")


def form(line: str) -> str:
    """Return a line with its numbers' places instead of their digits."""
    return NUMBER.sub(lambda number: f"<{len(number[0])}>", line)


def differ(ours: str, theirs: str) -> bool:
    # The blank behind this count keeps readers from finding the stresses, so ours has none.
    if ours == theirs or theirs == f"{ours} ":
        return False
    if form(ours) != form(theirs):
        return True
    differences = np.subtract(numbers(ours), numbers(theirs))
    return bool(np.abs(differences).max() > LAST_DIGIT)


def numbers(line: str) -> list[float]:
    return [float(field) for field in NUMBER.findall(line)]


@pytest.mark.parametrize("path", FILES, ids=lambda path: path.stem)
def test_vertical(path: Path) -> None:
    text = path.read_bytes().decode("latin-1").replace("\r\n", "\n")
    blocks = VERTICAL.findall(HORIZONTAL.sub("", text))
    for number, (block, result) in enumerate(zip(blocks, published_results(text), strict=True), 1):
        ours = "\n".join(vertical_block(number, result)).split("\n")
        theirs = block.splitlines()
        assert len(ours) == len(theirs)
        different = [pair for pair in zip(ours, theirs, strict=True) if differ(*pair)]
        assert not different
