"""Result files of the real tool, where there are any."""

import os
from pathlib import Path
from typing import Any

import pytest

SAMPLES = Path(
    os.environ.get("SEMBRA_SAMPLES", Path(__file__).resolve().parents[4] / "shared" / "samples")
)
FOUND = sorted([*SAMPLES.glob("*.sld"), *SAMPLES.parent.glob("cases/*.sld")])
FILES: list[Any] = FOUND or [
    pytest.param(
        SAMPLES,
        marks=pytest.mark.skip(f"no result files in {SAMPLES}; set SEMBRA_SAMPLES to their folder"),
    )
]
