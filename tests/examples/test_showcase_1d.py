"""What the showcase tells of the one-dimensional story."""

import pytest

from examples import one_dimensional as story
from tests.examples.showcase_run import Showcase, Story

STEPS = [load for load in story.LOADS if load.time >= 0]


@pytest.fixture
def told(showcase: Showcase) -> Story:
    return showcase.story("one_dimensional")


@pytest.fixture
def table(told: Story) -> list[list[str]]:
    return told.rows(told.output, 3 + len(STEPS))


def test_the_input_file_holds_the_loads_of_the_story(told: Story) -> None:
    lines = (told.folder / "one_dimensional.sli").read_text(encoding="utf-8").splitlines()
    assert {load.name for load in story.LOADS} <= set(lines)


def test_the_table_has_the_settlements_of_the_result_file(
    told: Story, table: list[list[str]]
) -> None:
    by_time = {time: row for time, *row in told.numbers("Time-Settlement per Load")}
    assert [int(time) for time, *_ in table] == list(story.CALCULATION_TIMES)
    for time, *fields in table:
        for step, field, settlement in zip(STEPS, fields, by_time[float(time)], strict=False):
            assert field == (f"{settlement:.3f}" if int(time) > step.time else "-")


def test_the_table_has_the_residual_settlements_of_the_result_file(
    told: Story, table: list[list[str]]
) -> None:
    residual = told.numbers("RESIDUAL SETTLEMENT DATA")
    assert [(row[0], *row[-2:]) for row in table] == [
        (f"{time:g}", f"{part:.1f}", f"{rest:.3f}") for _, time, _, part, rest in residual
    ]


def test_final_and_residual_settlement_are_told_in_words(told: Story) -> None:
    residual = {time: rest for _, time, _, _, rest in told.numbers("RESIDUAL SETTLEMENT DATA")}
    final = told.numbers("RESIDUAL SETTLEMENT DATA")[-1][2]
    assert f"Final settlement: {final:.3f} m" in told.output
    assert f"day {story.OPENING}: {residual[story.OPENING]:.3f} m" in told.output
