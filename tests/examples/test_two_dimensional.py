"""The usage story of the two-dimensional model, run by itself."""

from itertools import pairwise

import pytest

from examples import two_dimensional as story
from tests.examples.conftest import Run


@pytest.fixture(scope="module")
def settlements(run_example: Run) -> dict[str, dict[float, float]]:
    """The printed settlements [m] by vertical and time."""
    title, heading, *lines = run_example("examples/two_dimensional.py").splitlines()
    assert title == "Settlement [m]"
    assert heading == "Time [days]" + "".join(f"{name:>12}" for name in story.VERTICALS.values())
    rows = [[float(field) for field in line.split()] for line in lines]
    return {
        name: {row[0]: row[number] for row in rows}
        for number, name in enumerate(story.VERTICALS.values(), 1)
    }


def test_it_prints_a_row_per_calculation_time(settlements: dict[str, dict[float, float]]) -> None:
    for column in settlements.values():
        assert tuple(column) == story.CALCULATION_TIMES


def test_the_surface_settles_further_with_time(
    settlements: dict[str, dict[float, float]],
) -> None:
    for column in settlements.values():
        loaded = [value for time, value in column.items() if time <= story.OPENING]
        unloaded = [value for time, value in column.items() if time > story.OPENING]
        assert all(early <= late for early, late in pairwise(loaded))
        assert all(early <= late for early, late in pairwise(unloaded))
        # It swells a little where the surcharge is taken off.
        assert unloaded[0] > loaded[-1] - 0.02


def test_it_settles_most_at_the_axis_and_hardly_in_the_meadow(
    settlements: dict[str, dict[float, float]],
) -> None:
    final = {name: column[story.CALCULATION_TIMES[-1]] for name, column in settlements.items()}
    assert final["meadow"] < 0.01 < final["left toe"] < 0.2
    assert final["left toe"] < final["right toe"] < final["left crest"] < final["axis"]
    assert 0.8 < final["axis"] < 1.5


def test_drains_let_the_ground_settle_sooner_than_beside_them(
    settlements: dict[str, dict[float, float]],
) -> None:
    last = story.CALCULATION_TIMES[-1]
    part = {name: column[90] / column[last] for name, column in settlements.items()}
    opening = {name: column[story.OPENING] / column[last] for name, column in settlements.items()}
    assert opening["axis"] > 0.9 > 0.75 > opening["left toe"]
    assert part["axis"] > 0.3


def test_the_model_holds_what_the_story_tells() -> None:
    project = story.build_project()
    layers = [layer.material for layer in project.ground.layers]
    assert layers == ["Sand", "Clay, organic", "Peat", "Clay, silty"]
    surface = project.ground.layers[-1].boundary_top.points
    assert [(point.x, point.y) for point in surface] == story.SURFACE
    assert [vertical.x for vertical in project.verticals] == list(story.VERTICALS)
    assert [load.points for load in project.loads] == [stage.outline for stage in story.STAGES]


def test_only_the_surcharge_is_taken_off() -> None:
    document = story.build_project().model._serialize()
    assert [
        (load["name"], load["time"], load["end_time"], load["temporary"])
        for load in document["non_uniform_loads"]
    ] == [
        ("Sand, first stage", 0, 0, False),
        ("Sand, second stage", 90, 90, False),
        ("Surcharge", 180, story.OPENING, True),
    ]
