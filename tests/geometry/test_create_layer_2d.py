"""`Model2D.create_layer`."""

from collections.abc import Callable
from typing import Any

import pytest
from sembra.errors import ModelError
from sembra.external.dsettlement import Model2D

Factory = Callable[..., Any]

TOP = r"^'pl_line_top' must be 0 or 99 or of type _PlLine created with 'create_pl_line'$"
BOTTOM = r"^'pl_line_bottom' must be 0 or 99 or of type _PlLine created with 'create_pl_line'$"
INTERPOLATED = (
    r"^Interpolation value for pl-line \(99\) cannot be assigned to bottom of geometry\.$"
)
SIMILAR = r"^Boundary top is similar to boundary bottom\.$"


def test_layers_are_stacked_on_each_other(new_model_2d: Factory, level: Factory) -> None:
    model = new_model_2d()
    line = model.create_pl_line(level(model, 1.0))
    first = model.create_layer(level(model, 1.0), "Sand", 99, line)
    second = model.create_layer(
        level(model, 2.0), material="Loam", pl_line_top=0, pl_line_bottom=99
    )
    assert model._layers == [first, second]
    assert first.boundary_bottom is model._boundaries[0]
    assert second.boundary_bottom is first.boundary_top is model._boundaries[1]
    assert second.boundary_top is model._boundaries[2]
    assert (first.material, first.pl_line_top) == ("Sand", 99)
    assert first.pl_line_bottom is line


def test_the_material_is_checked_before_all_else(new_model_2d: Factory) -> None:
    model = new_model_2d()
    with pytest.raises(ModelError, match=r"^Material with name 'Snow' does not exist$"):
        model.create_layer([], "Snow", 1, 99)


@pytest.mark.parametrize("code", [1, -1, 98, True, 10**30])
def test_other_integers_than_the_two_codes_are_refused(
    new_model_2d: Factory, level: Factory, code: int
) -> None:
    model = new_model_2d()
    points = level(model, 1.0)
    with pytest.raises(ModelError, match=TOP):
        model.create_layer(points, "Sand", code, code)
    with pytest.raises(ModelError, match=BOTTOM):
        model.create_layer(points, "Sand", 0, code)
    assert len(model._boundaries) == 1
    assert model._layers == []


@pytest.mark.parametrize("value", [False, 1.0, None, "99", 0.0])
def test_what_is_no_integer_but_zero_or_99_passes_unexamined(
    new_model_2d: Factory, level: Factory, value: Any
) -> None:
    model = new_model_2d()
    layer = model.create_layer(level(model, 1.0), "Sand", value, value)
    assert layer.pl_line_top is value
    assert layer.pl_line_bottom is value
    assert model._serialize_layers()[0]["pl_bottom"] is value


@pytest.mark.parametrize("code", [99, 99.0])
def test_the_bottom_of_the_first_layer_is_not_interpolated(
    new_model_2d: Factory, level: Factory, code: float
) -> None:
    model = new_model_2d()
    with pytest.raises(ModelError, match=INTERPOLATED):
        model.create_layer([], "Sand", 0, code)
    model.create_layer(level(model, 1.0), "Sand", 99, 0)
    assert model.create_layer(level(model, 2.0), "Sand", 0, code).pl_line_bottom == 99


def test_the_points_are_checked_last(new_model_2d: Factory, points_of: Factory) -> None:
    model = new_model_2d()
    with pytest.raises(IndexError):
        model.create_layer([], "Sand", 0, 0)
    backwards = points_of(model, (0, 1), (60, 1), (40, 1), (100, 1))
    with pytest.raises(
        ModelError, match=r"^Points of the boundary must be ascending in X-direction$"
    ):
        model.create_layer(backwards, "Sand", 0, 0)
    assert model._layers == []
    assert len(model._boundaries) == 1


def test_a_layer_needs_a_thickness(new_model_2d: Factory, level: Factory) -> None:
    model = new_model_2d()
    with pytest.raises(ModelError, match=SIMILAR):
        model.create_layer(level(model, 0.0), "Sand", 0, 0)
    model.create_layer(level(model, 1.0), "Sand", 0, 0)
    with pytest.raises(ModelError, match=SIMILAR):
        model.create_layer(level(model, 1.0), "Sand", 0, 0)
    assert len(model._layers) == 1


def test_a_first_top_below_the_bottom_is_refused_and_stays_as_the_lowest_boundary(
    new_model_2d: Factory, level: Factory
) -> None:
    model = new_model_2d()
    with pytest.raises(ModelError, match=SIMILAR):
        model.create_layer(level(model, -1.0), "Sand", 0, 0)
    assert [b.points[0].y for b in model._boundaries] == [-1.0, 0.0]
    layer = model.create_layer(level(model, 2.0), "Sand", 0, 0)
    assert layer.boundary_bottom is model._boundaries[0]


def test_a_layer_may_lie_below_the_one_before_it(new_model_2d: Factory, level: Factory) -> None:
    model = new_model_2d()
    first = model.create_layer(level(model, 2.0), "Sand", 0, 0)
    second = model.create_layer(level(model, 1.0), "Sand", 0, 0)
    assert second.boundary_bottom is first.boundary_top
    assert [layer["boundary_top"] for layer in model._serialize_layers()] == [2, 1]


def test_the_boundary_is_made_through_the_model(new_model_2d: Factory, level: Factory) -> None:
    class Doubled(Model2D):
        def _create_boundary(self, points: Any) -> Any:
            return super()._create_boundary([self.create_point(p.x, 2 * p.y) for p in points])

    model = new_model_2d(Doubled)
    assert model.create_layer(level(model, 1.0), "Sand", 0, 0).boundary_top.points[0].y == 2.0
