"""A sample with drains, for a worker that calculates NEN-Koppejan."""

import math

from tests.toolkit.samples import FOLDER


def drained_columns() -> str:
    """Return a sample with columns and an underpressure, with NEN-Koppejan instead of NEN-Bjerrum.

    Its soil has no secular settlement and is normally consolidated, so that both models give the
    strain CR log10(s1 / s0).
    """
    text = (FOLDER / "bm4-8b.sli").read_text("ascii")
    constant = f"{math.log(10) / 0.7000001:.9f}"
    for old, new in (
        ("1 : Model = NEN - Bjerrum", "0 : Model = NEN - Koppejan"),
        ("SoilCp=1.00E+00", f"SoilCp={constant}"),
        ("SoilCp1=1.00E+00", f"SoilCp1={constant}"),
    ):
        assert text.count(old) == 1
        text = text.replace(old, new)
    return text
