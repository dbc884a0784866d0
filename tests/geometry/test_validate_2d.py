"""The checks of a finished `Model2D` and the levels of its vertical drains."""

from collections.abc import Callable
from typing import Any

import pytest
from sembra.errors import ModelError
from sembra.external.dsettlement import DrainType, Model2D, VerticalDrain, _Boundary

Factory = Callable[..., Any]


def drain(bottom: float, **options: Any) -> VerticalDrain:
    return VerticalDrain(
        DrainType.SAND_WALL,
        5.0,
        90.0,
        bottom,
        2.0,
        4.0,
        start_of_drainage=2.0,
        phreatic_level_in_drain=4.0,
        **options,
    )


def test_a_finished_model_passes(build_story_2d: Factory) -> None:
    assert build_story_2d()._validate() is None


def test_a_model_needs_a_layer(new_model_2d: Factory) -> None:
    with pytest.raises(ModelError, match=r"^Model should have at least 1 layer\.$") as caught:
        new_model_2d()._validate()
    assert caught.value.__suppress_context__ is True
    assert isinstance(caught.value.__context__, IndexError)


def test_a_model_with_drains_needs_a_layer_for_their_levels(new_model_2d: Factory) -> None:
    model = new_model_2d(vertical_drain=drain(0.0))
    with pytest.raises(ModelError, match=r"^Create at least 1 layer$") as caught:
        model._validate()
    assert caught.value.__suppress_context__ is True


def test_drains_out_of_the_limits_are_reported_first(new_model_2d: Factory) -> None:
    model = new_model_2d(
        vertical_drain=drain(0.0), limits=(0, 50), boundary_bottom=[(0, 0), (50, 0)]
    )
    with pytest.raises(
        ModelError,
        match=r"^Vertical drains 'range_to' \(90\.0\) must be between model limits \(0 - 50\)$",
    ):
        model._validate()


@pytest.mark.parametrize("code", [99, 99.0])
def test_the_top_of_the_top_layer_is_not_interpolated(
    new_model_2d: Factory, level: Factory, code: float
) -> None:
    model = new_model_2d()
    model.create_layer(level(model, 1.0), "Sand", 99, 0)
    model.create_layer(level(model, 2.0), "Sand", code, 0)
    text = rf"^pl_line_top for top layer cannot have interpolation value \(99\): {code}$"
    with pytest.raises(ModelError, match=text):
        model._validate()
    model.create_pl_line(level(model, 1.0), is_phreatic=True)
    with pytest.raises(ModelError, match=text):
        model._validate()


def test_a_model_needs_a_phreatic_line(new_model_2d: Factory, level: Factory) -> None:
    model = new_model_2d()
    line = model.create_pl_line(level(model, 1.0))
    model.create_layer(level(model, 1.0), "Sand", line, line)
    with pytest.raises(ModelError, match=r"^No phreatic line is set for the model\.$"):
        model._validate()
    model.create_pl_line(level(model, 2.0), is_phreatic=True)
    model._validate()


def test_a_refused_model_can_be_mended(new_model_2d: Factory, level: Factory, post: Any) -> None:
    model = new_model_2d()
    with pytest.raises(ModelError):
        model.generate_input_file()
    assert post.calls == []
    model.create_layer(level(model, 1.0), "Sand", 0, 0)
    model.create_pl_line(level(model, 1.0), is_phreatic=True)
    model.generate_input_file()
    assert post.document["phreatic_line"] == 1


def test_drain_levels_are_the_highest_points_of_bottom_and_top(
    new_model_2d: Factory, points_of: Factory
) -> None:
    model = new_model_2d(boundary_bottom=[(0.0, -3), (40.0, -1), (100.0, -2.0)])
    model.create_layer(points_of(model, (0.0, 1.0), (100.0, 2.0)), "Sand", 0, 0)
    model.create_layer(points_of(model, (0.0, 4.0), (30.0, 9), (100.0, 3.0)), "Sand", 0, 0)
    assert model._min_vertical_drains == -1
    assert type(model._min_vertical_drains) is int
    assert model._max_vertical_drains == 9


def test_drain_levels_bound_the_drains_inclusively(
    new_model_2d: Factory, points_of: Factory, level: Factory
) -> None:
    for bottom, passes in ((2.0, True), (9, True), (1.5, False), (9.5, False)):
        model = new_model_2d(vertical_drain=drain(bottom), boundary_bottom=[(0, 1.0), (100, 2.0)])
        model.create_layer(points_of(model, (0, 9), (100.0, 8.0)), "Sand", 0, 0)
        model.create_pl_line(level(model, 1.0), is_phreatic=True)
        if passes:
            model._validate()
            continue
        with pytest.raises(
            ModelError,
            match=r"^Vertical drains 'bottom_position' \(\d\.5\) must be between top and bottom "
            r"limits \(2\.0 - 9\)$",
        ):
            model._validate()


def test_drain_levels_need_a_layer(new_model_2d: Factory) -> None:
    model = new_model_2d()
    for name in ("_min_vertical_drains", "_max_vertical_drains"):
        with pytest.raises(ModelError, match=r"^Create at least 1 layer$"):
            getattr(model, name)


def test_drain_levels_of_a_boundary_without_points(new_model_2d: Factory, level: Factory) -> None:
    class Pointless(_Boundary):
        points: Any = ()

    model = new_model_2d()
    layer: Any = model.create_layer(level(model, 5.0), "Sand", 0, 0)
    layer._boundary_top = layer._boundary_bottom = Pointless([])
    for name in ("_min_vertical_drains", "_max_vertical_drains"):
        with pytest.raises(ValueError, match=r"^max\(\) iterable argument is empty$"):
            getattr(model, name)


def test_no_other_index_error_is_put_into_words(new_model_2d: Factory) -> None:
    model = new_model_2d(limits=(5, 5), boundary_bottom=[(5, 0.0)])
    model._layers.append(type("Layer", (), {"boundary_bottom": model._boundaries[0]})())
    with pytest.raises(IndexError, match=r"^list index out of range$"):
        _ = model._min_vertical_drains


def test_an_overridden_check_runs(new_model_2d: Factory, post: Any) -> None:
    class Careless(Model2D):
        def _validate(self) -> None:
            return None

    new_model_2d(Careless).generate_input_file()
    assert post.document["layers"] == []
