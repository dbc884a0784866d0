"""The embankment by other models."""

import pytest

from examples import choice_of_model as story
from examples.two_dimensional import OPENING
from tests.examples.showcase_run import Showcase


@pytest.fixture(scope="module")
def outcomes() -> dict[str, story.Outcome]:
    return {choice.name: story.calculate(choice) for choice in story.CHOICES}


def test_all_models_settle_alike_in_the_end(outcomes: dict[str, story.Outcome]) -> None:
    final = [outcome.settlements[-1] for outcome in outcomes.values()]
    assert 0.5 < min(final) < max(final) < 1.5 * min(final)


def test_what_is_left_comes_to_nothing(outcomes: dict[str, story.Outcome]) -> None:
    for outcome in outcomes.values():
        assert outcome.residual[0] == outcome.settlements[-1]
        assert outcome.residual[-1] == 0
        assert float(OPENING) in outcome.times


@pytest.mark.parametrize("consolidation", ["Terzaghi", "Darcy"])
def test_the_benefit_of_the_surcharge_shows_with_isotache(
    outcomes: dict[str, story.Outcome], consolidation: str
) -> None:
    koppejan, isotache = (
        story.at_opening(outcome, outcome.residual)
        for outcome in (
            outcomes[f"NEN-Koppejan, {consolidation}"],
            outcomes[f"Isotache, {consolidation}"],
        )
    )
    assert 0 < isotache < koppejan


def test_told_with_a_table_and_a_picture(
    showcase: Showcase, outcomes: dict[str, story.Outcome]
) -> None:
    for name, outcome in outcomes.items():
        assert name in showcase.output
        assert f"{story.at_opening(outcome, outcome.residual):.3f}" in showcase.output
    picture = showcase.folder / "choice_of_model_residual.png"
    assert picture.read_bytes().startswith(b"\x89PNG")
