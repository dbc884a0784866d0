"""What is read of result files for the comparison."""

import numpy as np
import pytest

from tests.toolkit.worker.input_file import calculated, input_text
from verification.reading import read_verticals

CLAY = {"Clay": {"SoilDrained": 0}, "Sand": {}}
ISOTACHE = {
    "SoilPreconIsotacheType": 0,
    "SoilOCR": 1.2,
    "SoilPriCompIndex": 0.01,
    "SoilSecCompIndex": 0.1,
    "SoilSecCompRate": 0.005,
}


def test_dissipation_and_kinds_of_a_file_that_has_them() -> None:
    text = calculated(
        input_text(layers=[(0.0, "Clay"), (-2.0, "Sand")], soils=CLAY, options={"Dissipation": 1})
    )
    (vertical,) = read_verticals(text)
    assert vertical.dissipation is not None
    assert vertical.dissipation[:, 0] == pytest.approx(vertical.times)
    lowest, upper = vertical.dissipation[1:, 1], vertical.dissipation[1:, 2]
    assert np.all(lowest == 1)
    assert np.all(np.diff(upper) >= 0)
    assert vertical.kinds is not None
    assert vertical.kinds.shape == (2, 6)
    # In the end, after 10000 days or four decades of the secular settlement.
    primary, secular = vertical.kinds[:, ::2].sum(), vertical.kinds[:, 1::2].sum()
    assert vertical.final == pytest.approx(primary + np.log10(10001) * secular, rel=1e-5)


def test_files_without() -> None:
    (vertical,) = read_verticals(
        calculated(input_text(soils={"Clay": ISOTACHE}, model={"Model": 2}))
    )
    assert vertical.kinds is None
    assert vertical.dissipation is None
