"""The usage story of the one-dimensional model, run by itself."""

from itertools import pairwise

import pytest

from examples import one_dimensional as story
from tests.examples.conftest import Run


@pytest.fixture(scope="module")
def rows(run_example: Run) -> list[list[float]]:
    """The printed table: time, settlement, residual settlement."""
    heading, *lines = run_example("examples/one_dimensional.py").splitlines()
    assert heading == "Time [days]  Settlement [m]  Residual settlement [m]"
    return [[float(field) for field in line.split()] for line in lines]


def test_it_prints_a_row_per_calculation_time(rows: list[list[float]]) -> None:
    assert [time for time, _, _ in rows] == list(story.CALCULATION_TIMES)


def test_the_road_settles_further_with_time(rows: list[list[float]]) -> None:
    assert all(early[1] < late[1] for early, late in pairwise(rows))


def test_settlement_and_residual_settlement_add_up_to_the_final_one(
    rows: list[list[float]],
) -> None:
    final = rows[-1][1]
    for _, settlement, residual in rows:
        assert settlement + residual == pytest.approx(final, abs=0.0011)


def test_the_model_holds_what_the_story_tells() -> None:
    model = story.build_model()
    assert model.layers == story.LAYERS
    assert (model.top_level, model.bottom_level) == (story.SURFACE, story.BOTTOM)
    assert list(model.materials) == [material for _, material in story.LAYERS]
