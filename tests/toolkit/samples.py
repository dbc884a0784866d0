"""Where the sample files stand."""

import os
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]
SHARED = ROOT.parent / "shared"
FOLDER = Path(os.environ.get("SEMBRA_SAMPLES", SHARED / "samples"))
CASES = Path(os.environ.get("SEMBRA_CASES", SHARED / "cases"))

needs_samples = pytest.mark.skipif(
    not FOLDER.is_dir(), reason=f"no sample files in {FOLDER}; SEMBRA_SAMPLES names the folder"
)
needs_cases = pytest.mark.skipif(
    not (FOLDER.is_dir() and CASES.is_dir()),
    reason=f"no published files in {FOLDER} and {CASES}; SEMBRA_SAMPLES and SEMBRA_CASES name them",
)


def input_files() -> list[Path]:
    """Return the sample input files, none if there is no such folder."""
    return sorted(FOLDER.glob("*.sli"))


def all_input_files() -> list[Path]:
    """Return the input files of samples and cases, none if there are no such folders."""
    return [*input_files(), *sorted(CASES.glob("*.sli"))]
