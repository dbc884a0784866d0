"""The embankment of the two-dimensional story by other models: what is left after the opening?

Soil model and kind of consolidation are two words in the making of a model; everything else
stays. Koppejan's method adds up the creep of every load step, that of the surcharge too, which goes
on after its removal. Isotache knows one creep, which the surcharge has made slow when it goes: the
benefit of a surcharge shows there.

Run it: python -m examples.choice_of_model
"""

from typing import NamedTuple

from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    DSettlementAnalysis,
)
from sembra.local.results import ResultFile

from examples import two_dimensional as story

AXIS = list(story.VERTICALS.values()).index("axis") + 1
"""Number of the vertical that is looked at."""


class Choice(NamedTuple):
    """A soil model and a kind of consolidation, and what they are called."""

    name: str
    soil_model: CalculationModel
    consolidation: ConsolidationModel


CHOICES = (
    Choice("NEN-Koppejan, Terzaghi", CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI),
    Choice("NEN-Koppejan, Darcy", CalculationModel.NEN_KOPPEJAN, ConsolidationModel.DARCY),
    Choice("Isotache, Terzaghi", CalculationModel.ISOTACHE, ConsolidationModel.TERZAGHI),
    Choice("Isotache, Darcy", CalculationModel.ISOTACHE, ConsolidationModel.DARCY),
)


class Outcome(NamedTuple):
    """Settlement of the surface at the axis, and how much of it is still to come.

    `times` are in days, `settlements` and `residual` in metres; the two have one value per time.
    """

    times: list[float]
    settlements: list[float]
    residual: list[float]


def calculate(choice: Choice) -> Outcome:
    """Calculate the embankment with a choice of models."""
    model = story.build_project(choice.soil_model, choice.consolidation).model
    analysis = DSettlementAnalysis(model.generate_input_file())
    analysis.execute(timeout=60)
    results = ResultFile(analysis.get_sld_file())
    history = results.vertical_results[AXIS]["vertical_data"]
    times = sorted(history)
    settlements = [history[time]["Settlement"][0] for time in times]
    return Outcome(times, settlements, [settlements[-1] - now for now in settlements])


def at_opening(outcome: Outcome, values: list[float]) -> float:
    """Return a value at the opening, which is a time of every calculation."""
    return values[outcome.times.index(float(story.OPENING))]


def main() -> None:
    """Print settlement at the opening, at the end, and what lies between."""
    print(f"{'':24}{'day ' + str(story.OPENING):>12}{'in the end':>12}{'residual':>12}")
    for choice in CHOICES:
        outcome = calculate(choice)
        opened = at_opening(outcome, outcome.settlements)
        rest = at_opening(outcome, outcome.residual)
        print(f"{choice.name:24}{opened:12.3f}{outcome.settlements[-1]:12.3f}{rest:12.3f}")


if __name__ == "__main__":
    main()
