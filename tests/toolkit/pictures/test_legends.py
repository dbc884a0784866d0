"""Where legends stand."""

from collections.abc import Iterator

import matplotlib.pyplot as plt
import pytest
from matplotlib.axes import Axes
from matplotlib.transforms import Bbox
from sembra.local.pictures.style import figure_of, new_figure, write_legend


@pytest.fixture(autouse=True)
def _close_figures() -> Iterator[None]:
    plt.switch_backend("agg")
    yield
    plt.close("all")


def axes_with(*curves: list[float]) -> Axes:
    """Axes with curves from the left to the right, each with a long name."""
    axes = new_figure(6.0, 4.0).add_subplot()
    for number, curve in enumerate(curves):
        axes.plot(curve, label=f"A curve with a long name, which is number {number}")
    return axes


def extents(axes: Axes) -> tuple[Bbox, Bbox]:
    """Where the legend and the diagram stand at last."""
    figure_of(axes).draw_without_rendering()
    legend = axes.get_legend()
    assert legend is not None
    return legend.get_window_extent(), axes.get_window_extent()


def test_a_legend_stands_among_the_curves_where_it_hides_none() -> None:
    axes = axes_with([0.0, 0.1], [0.1, 0.2])
    axes.set_ylim(0.0, 1.0)
    write_legend(axes)
    legend, diagram = extents(axes)
    assert diagram.x0 < legend.x0
    assert legend.x1 < diagram.x1


def test_a_legend_without_room_among_the_curves_stands_beside_them_and_their_labels() -> None:
    axes = axes_with(*([float(level)] * 2 for level in range(12)))
    label = axes.annotate(
        "0.123 m", (1.0, 1.0), xycoords="axes fraction", xytext=(6, 0), textcoords="offset points"
    )
    write_legend(axes, "Levels")
    legend, diagram = extents(axes)
    assert label.get_window_extent().x1 < legend.x0
    assert diagram.x1 < legend.x0
    assert legend.x1 <= figure_of(axes).bbox.x1
    found = axes.get_legend()
    assert found is not None
    assert found.get_title().get_text() == "Levels"
    assert len(found.get_texts()) == 12


def test_a_line_that_the_legend_does_not_name_may_be_behind_it() -> None:
    axes = axes_with([0.0, 0.1])
    axes.set_ylim(0.0, 1.0)
    for place in range(101):
        axes.axvline(place / 100)
    write_legend(axes)
    legend, diagram = extents(axes)
    assert legend.x1 < diagram.x1
