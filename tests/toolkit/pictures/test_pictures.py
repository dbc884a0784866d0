"""What each picture shows, on axes of its own and on given ones."""

from collections.abc import Callable, Iterator
from io import StringIO
from pathlib import Path
from types import SimpleNamespace
from typing import Any, cast

import matplotlib.pyplot as plt
import numpy as np
import pytest
from matplotlib.axes import Axes
from sembra.core import Color
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    Model1D,
    Model2D,
    OutputFileParser,
)
from sembra.local import pictures
from sembra.local.pictures.style import figure_of
from sembra.local.results import ResultFile

from tests.output.blocks import at_time, results, stresses, time_dependent, vertical
from tests.output.blocks import time_settlement as time_settlement_block

HEADERS = (
    "Initial total stress",
    "Initial water stress",
    "Final pre consolidation stress",
    "Final total stress",
    "Final water stress",
)
DEPTHS = ("[Depths]", "2 = count", "0.5", "-1.0", "[End of Depths]", "")
TEXT = results(
    vertical(
        "  10.0 =  X co-ordinate",
        time_settlement_block("0 0 0", "10 0 0.1", "1000 0 0.4"),
        *DEPTHS,
        stresses(HEADERS, "1 0 20 30 0", "20 10 0 50 12", count="  2  =  Depth step count "),
        time_dependent(
            ("Settlement",),
            *(at_time(f"{time}.0", f"{time / 2000}", "0") for time in (1, 100, 1000)),
        ),
    ),
    vertical(
        "  20.0 =  X co-ordinate",
        *DEPTHS,
        time_dependent(("Settlement",), at_time("1.0", "0.05", "0"), at_time("1000.0", "0.2", "0")),
    ),
    "[Dissipation layer]\n 1  =  Layer Number \n 0.0 0.0\n 10.0 0.5\n[End of Dissipation layer]",
)
RESULTS = ResultFile(StringIO(TEXT))
STEPS = [pictures.LoadStep("Sand", 0, 18.0)]


def model_1d() -> Model1D:
    """A column of two layers under two loads."""
    model = Model1D(CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI)
    model.create_material("Ooze", 12.0, 13.0, Color(10, 200, 30))
    model.update_geometry(-6.0, [(1.0, "Ooze"), (-2.0, "Sand")], phreatic_level=0.0)
    model.create_uniform_load("Raise", 0, 20.0, 0.5, 1.0)
    model.create_uniform_load("Road", 100, 24.0, 0.25, 1.5)
    return model


def model_2d() -> Model2D:
    """A layer with a load, a uniform load and two verticals, and no phreatic line yet."""
    model = Model2D(
        CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI, [(0.0, -5.0), (100.0, -5.0)]
    )
    points = [model.create_point(x, 0.0) for x in (0.0, 20.0, 40.0, 100.0)]
    model.create_layer(points, "Peat", 0, 0)
    model.create_non_uniform_load(
        "Dam", [(20.0, 0.0), (30.0, 3.0), (40.0, 0.0)], gamma_dry=18.0, gamma_wet=20.0
    )
    model.create_uniform_load("Yard", 30, 18.0, 1.0, 0.0)
    for x in (30.0, 60.0):
        model.create_vertical(x)
    return model


PICTURES: dict[str, Callable[..., Axes]] = {
    "soil_column": lambda **options: pictures.soil_column(model_1d(), **options),
    "cross_section": lambda **options: pictures.cross_section(model_2d(), **options),
    "per_load": lambda **options: pictures.settlement_per_load(RESULTS, steps=STEPS, **options),
    "per_vertical": lambda **options: pictures.settlement_per_vertical(RESULTS, **options),
    "stresses": lambda **options: pictures.stresses(RESULTS, **options),
    "along_depth": lambda **options: pictures.settlement_along_depth(RESULTS, **options),
    "dissipation": lambda **options: pictures.dissipation(RESULTS, **options),
}
EACH = pytest.mark.parametrize("draw", PICTURES.values(), ids=PICTURES)


@pytest.fixture(autouse=True)
def _close_figures() -> Iterator[None]:
    plt.switch_backend("agg")
    yield
    plt.close("all")


def points_of(line: Any) -> list[tuple[float, float]]:
    """Return the points of a line."""
    x, y = (np.asarray(data, dtype=float).tolist() for data in (line.get_xdata(), line.get_ydata()))
    return list(zip(x, y, strict=True))


def curves(axes: Axes) -> dict[str, list[tuple[float, float]]]:
    """Return the points of the curves by their labels."""
    return {
        str(line.get_label()): points_of(line)
        for line in axes.lines
        if not str(line.get_label()).startswith("_")
    }


def words(axes: Axes) -> str:
    """Return all that is written on the figure of axes."""
    figure = axes.get_figure(root=True)
    assert figure is not None
    found: list[Any] = figure.findobj(lambda artist: hasattr(artist, "get_text"))
    return "\n".join(text.get_text() for text in found)


@EACH
def test_a_picture_of_its_own_is_shown_by_a_notebook(draw: Callable[..., Axes]) -> None:
    axes = draw(title="My own title")
    assert isinstance(axes, Axes)
    # A notebook shows the figures that pyplot knows at the end of a cell.
    assert plt.get_fignums() == [axes.get_figure(root=True).number]  # type: ignore[union-attr]
    assert "My own title" in words(axes)


@EACH
def test_given_axes_are_drawn_on_and_returned(draw: Callable[..., Axes]) -> None:
    figure, (left, right) = plt.subplots(1, 2, figsize=(16, 7))
    assert draw(axes=left) is left
    assert plt.get_fignums() == [figure.number]
    assert left.has_data() or left.patches
    assert not right.has_data()


@EACH
def test_settings_of_the_user_stay(draw: Callable[..., Axes]) -> None:
    before = dict(plt.rcParams)
    draw()
    assert dict(plt.rcParams) == before


@pytest.mark.parametrize("extension", ["png", "svg", "pdf"])
def test_a_picture_is_saved_and_put_away(tmp_path: Path, extension: str) -> None:
    path = pictures.save(pictures.stresses(RESULTS), tmp_path / f"stresses.{extension}")
    assert path.stat().st_size > 1000
    assert plt.get_fignums() == []


@pytest.mark.parametrize(
    ("draw", "model"),
    [(pictures.soil_column, model_2d), (pictures.cross_section, model_1d)],
    ids=["column", "section"],
)
def test_the_other_kind_of_model_is_told_its_picture(draw: Any, model: Any) -> None:
    with pytest.raises(TypeError, match=r"draws a Model[12]D; \w+ draws a Model[12]D"):
        draw(model())


def test_the_column_tells_layers_levels_and_loads() -> None:
    told = words(pictures.soil_column(model_1d(), datum="NAP"))
    for text in ("Ooze", "3.00 m", "NAP +1.00 m", f"NAP {chr(0x2212)}6.00 m", "12.0 / 13.0 kN/m³"):
        assert text in told
    assert "Raise: 10.0 kPa, day 0" in told
    assert "Road: 6.0 kPa, day 100" in told


def test_a_column_may_be_dry() -> None:
    model = model_1d()
    model.update_geometry(-6.0, [(1.0, "Ooze")])
    assert "Phreatic line" in words(pictures.soil_column(model_1d()))
    assert "Phreatic line" not in words(pictures.soil_column(model))


def test_the_name_of_a_layer_stands_where_the_water_leaves_room() -> None:
    for level, middle in ((-0.5, -2.25), (-3.5, -1.75)):
        model = Model1D(CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI)
        model.update_geometry(-4.0, [(0.0, "Sand")], phreatic_level=level)
        axes = pictures.soil_column(model)
        (name,) = (text for text in axes.texts if text.get_text().startswith("Sand"))
        assert name.get_position()[1] == middle


def test_a_layer_that_is_too_thin_for_its_name_has_none() -> None:
    model = Model1D(CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI)
    model.update_geometry(-9.0, [(0.0, "Sand"), (-4.0, "Peat"), (-4.05, "Sand")])
    told = words(pictures.soil_column(model))
    assert "4.95 m" in told
    assert "0.05 m" not in told


def test_axes_without_a_figure_are_told() -> None:
    axes = plt.figure().add_subplot()
    axes.remove()
    with pytest.raises(ValueError, match="the axes stand on no figure"):
        figure_of(axes)


def test_a_section_without_a_phreatic_line_is_drawn() -> None:
    axes = pictures.cross_section(model_2d())
    told = words(axes)
    assert "Phreatic line" not in told
    for text in ("Peat", "1: Dam, day 0  18.0 / 20.0", "Yard: 18.0 kPa, day 30", "x = 60 m"):
        assert text in told


def test_a_section_needs_a_layer() -> None:
    model = Model2D(
        CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI, [(0.0, -5.0), (100.0, -5.0)]
    )
    with pytest.raises(ValueError, match="no layer to draw"):
        pictures.cross_section(model)
    assert plt.get_fignums() == []


def test_settlement_per_load_names_the_last_steps() -> None:
    assert curves(pictures.settlement_per_load(RESULTS)).keys() == {"Load step 1", "Load step 2"}
    named = curves(pictures.settlement_per_load(RESULTS, steps=STEPS))
    assert named == {"1: Sand, 18.0 kPa": [(0.0, 0.0), (10.0, 0.1), (1000.0, 0.4)]}


def test_settlement_per_vertical_takes_the_surface_where_there_are_no_loads() -> None:
    drawn = curves(pictures.settlement_per_vertical(RESULTS, names=["toe"]))
    assert drawn == {
        "1: toe, x = 10 m": [(0.0, 0.0), (10.0, 0.1), (1000.0, 0.4)],
        "2: x = 20 m": [(1.0, 0.05), (1000.0, 0.2)],
    }


def test_stresses_are_drawn_with_the_effective_ones() -> None:
    drawn = curves(pictures.stresses(RESULTS))
    assert drawn["Final effective stress"] == [(30.0, 0.5), (38.0, -1.0)]
    assert drawn["Initial total stress"] == [(1.0, 0.5), (20.0, -1.0)]
    (known, _), (unknown, _) = drawn["Final pre consolidation stress"]
    assert known == 20.0
    assert np.isnan(unknown)


def test_stresses_without_those_of_the_water_are_drawn_alone() -> None:
    total = stresses(HEADERS[:1], "1", "20", count="  2  =  Depth step count ")
    drawn = curves(pictures.stresses(ResultFile(StringIO(results(vertical("x", *DEPTHS, total))))))
    assert drawn == {HEADERS[0]: [(1.0, 0.5), (20.0, -1.0)]}


def test_settlement_along_depth_is_drawn_at_the_nearest_times() -> None:
    drawn = curves(pictures.settlement_along_depth(RESULTS, times=[120, 90, 5000]))
    assert drawn == {"day 1000": [(0.5, 0.5), (0.0, -1.0)], "day 100": [(0.05, 0.5), (0.0, -1.0)]}
    assert curves(pictures.settlement_along_depth(RESULTS)).keys() == {
        "day 1000",
        "day 100",
        "day 1",
    }


@pytest.mark.parametrize(
    ("asked", "drawn"),
    [
        ([1.0, 1000.0], {"day 1", "day 1000"}),
        ([1.0], {"day 1", "day 1000"}),
        ([1.0, 2.0, 3.0, 4.0, 5.0, 100.0, 1000.0], {"day 1", "day 100", "day 1000"}),
        (None, {"day 1", "day 100", "day 1000"}),
        (ValueError("no rows"), {"day 1", "day 100", "day 1000"}),
    ],
)
def test_settlement_along_depth_is_drawn_at_times_that_were_asked_for(
    asked: list[float] | ValueError | None, drawn: set[str], monkeypatch: pytest.MonkeyPatch
) -> None:
    def residual_times(_: ResultFile) -> dict[int, dict[str, list[float]]]:
        if isinstance(asked, ValueError):
            raise asked
        return {1: {"Time": asked}} if asked else {}

    monkeypatch.setattr(ResultFile, "residual_times", property(residual_times))
    assert curves(pictures.settlement_along_depth(RESULTS)).keys() == drawn


def test_dissipation_is_drawn_by_layer() -> None:
    assert curves(pictures.dissipation(RESULTS, names=["Peat"])) == {
        "1, Peat": [(0.0, 0.0), (10.0, 0.5)]
    }


def test_a_degree_beyond_1_is_in_the_picture() -> None:
    beyond = SimpleNamespace(dissipation={1: {"time": [0.0, 10.0], "degree": [0.0, 1.3]}})
    lower, upper = pictures.dissipation(cast("ResultFile", beyond)).get_ylim()
    assert (lower, upper) == pytest.approx((1.32, -0.02))


@pytest.mark.parametrize(
    "draw",
    [pictures.settlement_per_load, pictures.stresses, pictures.settlement_along_depth],
    ids=lambda draw: draw.__name__,
)
def test_a_vertical_that_is_not_there_is_told(draw: Callable[..., Axes]) -> None:
    with pytest.raises(KeyError, match=r"vertical 7; there are \[1, 2\]"):
        draw(RESULTS, vertical=7)
    assert plt.get_fignums() == []


def test_results_without_what_is_wanted_are_told() -> None:
    empty = ResultFile(StringIO(results("")))
    for draw in (pictures.settlement_per_load, pictures.settlement_per_vertical):
        with pytest.raises(ValueError, match="the results have no settlements"):
            draw(empty)
    with pytest.raises(ValueError, match="dissipation_calculation"):
        pictures.dissipation(empty)
    with pytest.raises(ValueError, match=r"sembra\.local\.results\.ResultFile"):
        pictures.stresses(OutputFileParser(StringIO(TEXT)))
    with pytest.raises(ValueError, match="vertical 1 has no settlement along depth"):
        pictures.settlement_along_depth(ResultFile(StringIO(results(vertical("nothing")))))
    with pytest.raises(ValueError, match="2 load steps were given, and the results have 1"):
        pictures.settlement_per_load(RESULTS, vertical=2, steps=STEPS * 2)
    assert plt.get_fignums() == []
