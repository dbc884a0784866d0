"""What the showcase tells of the two-dimensional story."""

import pytest

from examples import two_dimensional as story
from tests.examples.showcase_run import Showcase, Story

STEP_TIMES = sorted(
    time for stage in story.STAGES for time in (stage.time, stage.removal) if time is not None
)
VERTICALS = list(enumerate(story.VERTICALS.items(), 1))


@pytest.fixture
def told(showcase: Showcase) -> Story:
    return showcase.story("two_dimensional")


def table(told: Story, number: int) -> list[list[str]]:
    """The rows of the table of a vertical."""
    text = told.output.partition(f"\nVertical {number}, ")[2].partition("\nVertical ")[0]
    return told.rows(text, 3 + len(STEP_TIMES))


def test_the_input_file_holds_the_stages_and_the_verticals(told: Story) -> None:
    lines = (told.folder / "two_dimensional.sli").read_text(encoding="utf-8").splitlines()
    assert {stage.name for stage in story.STAGES} <= set(lines)
    assert any(
        line.split() == [str(len(VERTICALS)), "=", "number", "of", "items"] for line in lines
    )


@pytest.mark.parametrize(("number", "vertical"), VERTICALS)
def test_each_vertical_has_a_table_with_its_settlements(
    told: Story, number: int, vertical: tuple[float, str]
) -> None:
    assert f"Vertical {number}, {vertical[1]}, x = {vertical[0]:g} m" in told.output
    by_time = {time: row for time, *row in told.numbers("Time-Settlement per Load", number)}
    # A load step by the weight of the soil itself goes before those of the embankment.
    assert all(len(row) == len(STEP_TIMES) + 1 for row in by_time.values())
    rows = table(told, number)
    assert [int(time) for time, *_ in rows] == list(story.CALCULATION_TIMES)
    for time, *fields in rows:
        for step, field, settlement in zip(
            STEP_TIMES, fields, by_time[float(time)][1:], strict=False
        ):
            assert field == (f"{settlement:.3f}" if int(time) > step else "-")


@pytest.mark.parametrize(("number", "vertical"), VERTICALS)
def test_each_table_has_the_residual_settlements_of_its_vertical(
    told: Story, number: int, vertical: tuple[float, str]
) -> None:
    residual = [row for row in told.numbers("RESIDUAL SETTLEMENT DATA") if row[0] == number]
    assert [(row[0], *row[-2:]) for row in table(told, number)] == [
        (f"{time:g}", f"{part:.1f}", f"{rest:.3f}") for _, time, _, part, rest in residual
    ]
    final = residual[-1][2]
    rest = next(row[4] for row in residual if row[1] == story.OPENING)
    assert f"at the {vertical[1]}: {final:.3f} m" in told.output
    assert f"day {story.OPENING}: {rest:.3f} m" in told.output
