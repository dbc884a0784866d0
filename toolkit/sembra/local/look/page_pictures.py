"""Which pictures a page has."""

from collections.abc import Callable, Iterator

import matplotlib.pyplot as plt
from matplotlib.axes import Axes
from sembra.external.dsettlement import Model1D, Model2D

from sembra.local import pictures
from sembra.local.look.drawing import Drawing, svg
from sembra.local.pictures.settlements import settlements_of
from sembra.local.pictures.style import figure_of
from sembra.local.results import ResultFile

NARROW = 4.6
"""Width of a picture that can be read on a phone, in inches."""

Draw = Callable[[Axes], Axes]


def picture_of_model(model: Model1D | Model2D) -> Drawing:
    """Return the soil column or the cross-section of a model."""
    if isinstance(model, Model1D):
        told = "Layers, phreatic level and uniform loads of the soil column"
        wide = pictures.soil_column(model, title="")
        narrow = pictures.soil_column(model, _axes(NARROW, 5.6), title="")
    else:
        told = "Layers, pl-lines, loads, drains and verticals of the cross-section"
        wide = pictures.cross_section(model, title="")
        narrow = pictures.cross_section(model, _axes(NARROW, 3.8), title="")
        narrow.set_xlabel(narrow.get_xlabel().replace("  (", "\n("))
    _put_legend_below(narrow)
    return Drawing(
        told, svg(figure_of(wide), "ground", told), svg(figure_of(narrow), "ground-narrow", told)
    )


def pictures_of_results(results: ResultFile) -> Iterator[Drawing]:
    """Yield pictures of settlements, stresses and dissipation, as far as the results have them."""
    try:
        found = settlements_of(results)
    except ValueError:
        return

    if len(found) > 1:
        yield _drawn(
            "verticals", "Settlement of the surface at each vertical",
            lambda axes: pictures.settlement_per_vertical(results, axes),
        )  # fmt: skip
    most = max(found, key=lambda number: abs(found[number].total[-1]))
    at = f" at vertical {most}" if len(found) > 1 else ""
    yield _drawn(
        "loads", f"Settlement by the load steps, each with those before it{at}",
        lambda axes: pictures.settlement_per_load(results, axes, vertical=most),
    )  # fmt: skip
    vertical = results.vertical_results[most]
    if vertical["stresses"]:
        yield _drawn(
            "stresses", f"Stresses along depth{at}",
            lambda axes: pictures.stresses(results, axes, vertical=most),
        )  # fmt: skip
    if vertical["vertical_data"]:
        yield _drawn(
            "depth", f"Settlement along depth{at}",
            lambda axes: pictures.settlement_along_depth(results, axes, vertical=most),
        )  # fmt: skip
    if results.dissipation:
        yield _drawn(
            "dissipation", "Degree of consolidation of each layer, counted from the lowest",
            lambda axes: pictures.dissipation(results, axes),
        )  # fmt: skip


def _drawn(name: str, told: str, draw: Draw) -> Drawing:
    # Where there is most room for the legend takes long to find, and doesn't matter here.
    with plt.rc_context({"legend.loc": "upper left"}):
        axes = draw(_axes(NARROW, 4.4))
    _put_legend_below(axes, most_columns=3)
    return Drawing(told, svg(figure_of(axes), name, told))


def _axes(width: float, height: float) -> Axes:
    """Return axes on a figure of their own, of a size in inches."""
    return plt.figure(figsize=(width, height), layout="constrained").add_subplot()


def _put_legend_below(axes: Axes, most_columns: int = 1) -> None:
    """Put the entries of a legend below the figure, which is as high as it needs to be then.

    They stand in as many columns as the figure is wide enough for.
    """
    legend = axes.get_legend()
    if legend is None:
        return
    title = legend.get_title().get_text()
    texts = [text.get_text() for text in legend.get_texts()]
    handles = [handle for handle in legend.legend_handles if handle is not None]
    legend.remove()
    figure = figure_of(axes)
    for columns in range(most_columns, 0, -1):
        below = figure.legend(
            handles, texts, title=title, alignment="left", loc="upper left",
            bbox_to_anchor=(0.0, 0.0), ncols=columns, frameon=False, fontsize=9, handlelength=3.0,
        )  # fmt: skip
        if columns == 1 or below.get_window_extent().width <= figure.bbox.width:
            break
        below.remove()
