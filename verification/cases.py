"""Published cases: an input file with the result file that D-Settlement wrote for it beside it."""

import os
import re
from collections.abc import Iterable
from dataclasses import dataclass
from functools import cached_property
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
SHARED = ROOT.parent / "shared"

_WORDS = re.compile(
    r"^\d+ : (Dimension|Calculation type|Model|Vertical drains) = (.*?)\s*$", re.MULTILINE
)
_SOIL_MODELS = {"NEN - Koppejan": "NEN-Koppejan", "NEN - Bjerrum": "NEN-Bjerrum"}


def default_folders() -> tuple[Path, Path]:
    """Return the folders of published cases, which `SEMBRA_SAMPLES` and `SEMBRA_CASES` can name."""
    return (
        Path(os.environ.get("SEMBRA_SAMPLES", SHARED / "samples")),
        Path(os.environ.get("SEMBRA_CASES", SHARED / "cases")),
    )


@dataclass(frozen=True)
class Case:
    """An input file, beside which stands its result file, with the extension `.sld`."""

    input_file: Path

    @property
    def name(self) -> str:
        """Name of the files without extension."""
        return self.input_file.stem

    @property
    def result_file(self) -> Path:
        """The published result file."""
        return self.input_file.with_suffix(".sld")

    @cached_property
    def kind(self) -> str:
        """Soil model, consolidation and dimension in words, as far as the input file has them."""
        words = dict(_WORDS.findall(read_text(self.input_file)))
        model = words.get("Model", "?")
        parts = [
            _SOIL_MODELS.get(model, model),
            words.get("Calculation type", "?"),
            words.get("Dimension", "?"),
        ]
        if words.get("Vertical drains") == "TRUE":
            parts.append("drains")
        return ", ".join(parts)


def find_cases(folders: Iterable[Path]) -> list[Case]:
    """Return the cases of some folders in the order of their names; of equal ones the first.

    Raises:
        FileNotFoundError: A folder isn't there, or there is no case in any of them.
    """
    found: dict[str, Case] = {}
    folders = list(folders)
    for folder in folders:
        if not folder.is_dir():
            raise FileNotFoundError(
                f"There is no folder {folder}. Name one with pairs of .sli and .sld files: "
                "make verify CASES=folder"
            )
        for path in folder.glob("*.sli"):
            case = Case(path)
            if case.result_file.is_file():
                found.setdefault(case.name, case)
    if not found:
        places = " or ".join(str(folder) for folder in folders)
        raise FileNotFoundError(f"There is no .sli file with its .sld file in {places}.")
    return [found[name] for name in sorted(found, key=_natural)]


def read_text(path: Path) -> str:
    """Return the text of an input or result file, with its line ends as they are."""
    return path.read_bytes().decode("latin-1")


def _natural(name: str) -> list[tuple[str, int]]:
    """Return what to sort names by so that bm3-2 comes before bm3-10."""
    parts = re.findall(r"(\D*)(\d*)", name.lower())
    return [(text, int(digits or 0)) for text, digits in parts]
