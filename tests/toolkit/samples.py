"""Where the sample files stand."""

import os
from pathlib import Path

import pytest

ROOT = Path(__file__).resolve().parents[2]
FOLDER = Path(os.environ.get("SEMBRA_SAMPLES", ROOT.parent / "shared" / "samples"))

needs_samples = pytest.mark.skipif(
    not FOLDER.is_dir(), reason=f"no sample files in {FOLDER}; SEMBRA_SAMPLES names the folder"
)


def input_files() -> list[Path]:
    """Return the sample input files, none if there is no such folder."""
    return sorted(FOLDER.glob("*.sli"))
