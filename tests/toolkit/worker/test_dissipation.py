"""Dissipation that can't be told stands in nobody's way."""

from dataclasses import replace
from typing import Any, cast

import numpy as np
import pytest
from sembra.local.worker.arrays import Floats
from sembra.local.worker.dissipation import dissipation
from sembra.local.worker.failures import OUT_OF_RANGE
from sembra.local.worker.input import read_project

from tests.toolkit.worker.input_file import input_text


class Broken:
    """Consolidation of numbers that nobody can calculate with."""

    def __init__(self, outcome: Floats | ArithmeticError) -> None:
        self._outcome = outcome

    def dissipation(self, *_: object, **__: object) -> Floats:
        """Raise or return what was given."""
        if isinstance(self._outcome, ArithmeticError):
            raise self._outcome
        return self._outcome


@pytest.mark.parametrize(
    "outcome", [FloatingPointError("overflow"), np.array([[0.0, np.nan]]), np.array([[np.inf]])]
)
def test_degrees_that_are_no_finite_numbers_are_left_away(
    outcome: Floats | ArithmeticError,
) -> None:
    project = read_project(input_text(options={"Dissipation": 1}))
    broken = replace(project, consolidation=cast("Any", Broken(outcome)))
    found, remarks = dissipation(broken, project.columns[0], sinking=False)
    assert found is None
    assert remarks == (f"The dissipation is left away. {OUT_OF_RANGE}",)
