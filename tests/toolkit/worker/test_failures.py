"""Gathering what stands in the way of a calculation."""

import pytest
from sembra.local.worker.failures import (
    LackError,
    LocalError,
    NotCoveredError,
    Problems,
    WorkerError,
)


def message(*errors: WorkerError, gaps: tuple[str, ...] = ()) -> str:
    """What is told of several errors."""
    problems = Problems(gaps)
    for error in errors:
        with problems.collecting():
            raise error
    with pytest.raises(WorkerError) as caught:
        problems.check()
    return str(caught.value)


def test_nothing_stands_in_the_way() -> None:
    problems = Problems()
    with problems.collecting():
        pass
    problems.check()


def test_all_is_told_and_nothing_twice() -> None:
    assert message(WorkerError("This."), WorkerError("That."), WorkerError("This.")) == (
        "This. That."
    )


def test_what_is_not_covered_is_one_sentence() -> None:
    assert message(NotCoveredError("tank loads"), gaps=("fit factors",)) == (
        "The worker does not cover fit factors and tank loads."
    )
    assert message(WorkerError("This."), gaps=("fit factors",)) == (
        "The worker does not cover fit factors. This."
    )


def test_materials_that_lack_the_same_are_told_together() -> None:
    what = "a permeability"
    assert message(LackError(["Clay"], what), LackError(["Clay", "Peat"], what)) == (
        "The materials Clay and Peat need a permeability."
    )
    assert message(LackError(["Clay"], what), LackError(["Clay"], "a weight")) == (
        "The material Clay needs a permeability. The material Clay needs a weight."
    )


def test_of_one_cause_the_worst_place_is_told() -> None:
    found = [LocalError("Water", depth, f"Water lifts {depth:g} m.") for depth in (1.0, 3.0, 2.0)]
    assert message(*found, LocalError("Load", 0.0, "A load lifts.")) == (
        "Water lifts 3 m. A load lifts."
    )


def test_other_errors_are_not_gathered() -> None:
    problems = Problems()
    with pytest.raises(LookupError), problems.collecting():
        raise LookupError
