"""Reading cross-sections and calculating them."""

from base64 import b64decode

import pytest
from sembra.local.jobs.reporting import reporter
from sembra.local.worker.job import run_job

from tests.toolkit.worker.embankments import with_embankment
from tests.toolkit.worker.input_file import calculated, input_text, job, refused
from tests.toolkit.worker.input_section import two_dimensional
from tests.toolkit.worker.result_file import residuals, verticals


def test_level_ground_settles_as_one_column() -> None:
    column = verticals(calculated(input_text(phreatic_level=0.0)))[0]
    text = calculated(two_dimensional(times=(0, 100)))
    found = verticals(text)
    assert [vertical["coordinates"] for vertical in found] == [
        {"x": 10.0, "z": 0.0},
        {"x": 20.5, "z": 0.0},
        {"x": 90.0, "z": 1.0},
    ]
    assert all(vertical["stresses"] == column["stresses"] for vertical in found)
    assert list(residuals(text)) == [1, 2, 3]


def test_every_vertical_is_progress() -> None:
    fractions: list[float] = []
    token = reporter.set(fractions.append)
    result = run_job(job(two_dimensional()))
    reporter.reset(token)
    assert b64decode(result["files"][".sld"])
    assert fractions == sorted(fractions)
    assert (fractions[0], fractions[-1], len(fractions)) == (0.0, 1.0, 5)


@pytest.mark.parametrize(
    ("old", "new", "message"),
    [
        (
            "         3     4",
            "         3     9",
            "section [CURVES], line 59: point 9 does not exist",
        ),
        ("       0 - Boundarynumber", "       7 - Boundarynumber", "boundary 7 does not exist"),
        ("       Clay\n", "       Mud\n", 'the material "Mud" is unknown'),
        ("   1 - Number of the p", "   2 - Number of the p", "piezometric level line 2 does not"),
        ("         3     4", "         4     3", "a line should run from left to right"),
        ("   1 - Number of layers", "   0 - Number of layers", "there are no layers"),
    ],
)
def test_malformed_geometry(old: str, new: str, message: str) -> None:
    text = two_dimensional()
    assert old in text
    assert message in refused(text.replace(old, new))


@pytest.mark.parametrize("of", ["non-uniform loads", "trapeziform loads"])
def test_strips_of_loads_have_a_width(of: str) -> None:
    label = f"0.50 = Load column width {of}"
    text = with_embankment(two_dimensional())
    assert label in text
    message = refused(text.replace(label, label.replace("0.50", "0.00")))
    assert "in section [CALCULATION OPTIONS], line " in message
    assert "the load column width should be greater than zero" in message
