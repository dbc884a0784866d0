"""Names of modules: one that is told apart by its place alone sends a reader to the wrong file."""

from collections.abc import Iterator
from pathlib import Path

import pytest

ROOT = Path(__file__).parents[1]
TOPS = ("toolkit/sembra", "verification", "benchmarks", "examples", "fuzz", "mutants")


def modules(folder: Path) -> Iterator[Path]:
    """Return the modules and the packages right in a folder, without their extensions."""
    for entry in folder.iterdir():
        if entry.suffix == ".py" and not entry.stem.startswith("__"):
            yield entry.with_suffix("")
        elif entry.is_dir() and any(entry.glob("*.py")):
            yield entry


def names_above(folder: Path, taken: frozenset[str]) -> Iterator[str]:
    """Return the modules that are named as one in a folder above them, or as their own folder."""
    here = list(modules(folder))
    yield from (str(module.relative_to(ROOT)) for module in here if module.name in taken)
    names = taken.union(module.name for module in here)
    for module in here:
        if module.is_dir():
            yield from names_above(module, names)


@pytest.mark.parametrize("top", TOPS)
def test_no_module_has_the_name_of_one_above_it(top: str) -> None:
    assert list(names_above(ROOT / top, frozenset())) == []
