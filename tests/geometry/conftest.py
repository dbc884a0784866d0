"""Two-dimensional models that the tests of the geometry share."""

from collections.abc import Callable, Sequence
from typing import Any

import pytest
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    DrainType,
    Model2D,
    VerticalDrain,
)

Factory = Callable[..., Any]
Pairs = Sequence[tuple[float, float]]


@pytest.fixture
def new_model_2d() -> Factory:
    """Make a two-dimensional model of the class `cls` with a flat bottom; options by keyword."""

    def make(cls: Any = Model2D, **options: Any) -> Any:
        options = {
            "calculation_model": CalculationModel.NEN_KOPPEJAN,
            "consolidation_model": ConsolidationModel.TERZAGHI,
            "boundary_bottom": [(0.0, 0.0), (100.0, 0.0)],
        } | options
        return cls(**options)

    return make


@pytest.fixture
def points_of() -> Factory:
    """Create the points of a list of pairs in a model."""

    def make(model: Any, *pairs: tuple[float, float]) -> list[Any]:
        return [model.create_point(x, y) for x, y in pairs]

    return make


@pytest.fixture
def level(points_of: Factory) -> Factory:
    """Create the two points of a horizontal line in a model."""

    def make(model: Any, y: float) -> list[Any]:
        return list(points_of(model, (0.0, y), (100.0, y)))

    return make


@pytest.fixture
def sand_wall() -> VerticalDrain:
    """Vertical drains that fit the story."""
    return VerticalDrain(
        DrainType.SAND_WALL,
        5.0,
        90.0,
        0.0,
        2.0,
        4.0,
        start_of_drainage=2.0,
        phreatic_level_in_drain=4.0,
    )


@pytest.fixture
def build_story_2d(new_model_2d: Factory, points_of: Factory, sand_wall: VerticalDrain) -> Factory:
    """Make the two-dimensional model of the usage story."""

    def make(cls: Any = Model2D, **options: Any) -> Any:
        model = new_model_2d(cls, **{"vertical_drain": sand_wall} | options)
        boundaries = [
            points_of(model, (0.0, 5.0), (50.0, 5.0), (100.0, 2.5)),
            points_of(model, (0.0, 5.0), (50.0, 5.0), (100.0, 7.5)),
            points_of(model, (0.0, 10.0), (25, 10.0), (75, 10.0), (100.0, 10.0)),
        ]
        phreatic = points_of(model, (0.0, 4.0), (100.0, 4.0))
        second = points_of(model, (0.0, 6.0), (100.0, 6.0))
        pl_1 = model.create_pl_line(phreatic, is_phreatic=True)
        pl_2 = model.create_pl_line(second)
        model.create_layer(boundaries[0], "Sand", pl_line_top=99, pl_line_bottom=pl_2)
        model.create_layer(boundaries[1], "Soft Clay", pl_line_top=99, pl_line_bottom=99)
        model.create_layer(boundaries[2], "Loam", pl_line_top=pl_1, pl_line_bottom=99)
        for x in (45.0, 50.0, 55.0):
            model.create_vertical(x)
        model.create_non_uniform_load("load1", [(25, 10.0), (50.0, 12.0), (75, 10.0)])
        model.set_calculation_times(1, 4, 2, 5)
        return model

    return make
