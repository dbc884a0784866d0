"""Operations that call each other without end are stopped as functions written in Python are."""

from typing import Any

import pytest
from sembra.external.dsettlement import CalculationModel, ConsolidationModel, Model1D


class Circular(Model1D):
    """A model whose bottom level asks for the bottom level."""

    bottom_level = property(vars(Model1D)["_min_vertical_drains"].fget)


def test_a_property_that_asks_for_itself_is_stopped() -> None:
    model = Circular(CalculationModel.NEN_KOPPEJAN, ConsolidationModel.DARCY)
    with pytest.raises(RecursionError):
        _ = model._min_vertical_drains


def test_a_model_that_is_its_own_geometry_is_stopped(new_model_1d: Any) -> None:
    model = new_model_1d()
    model._geometry = model
    with pytest.raises(RecursionError):
        _ = model.top_level


def test_a_model_that_is_its_own_drain_is_stopped(new_model_1d: Any) -> None:
    model = new_model_1d()
    model._vertical_drain = model
    with pytest.raises(RecursionError):
        model._serialize()
    del model._vertical_drain
