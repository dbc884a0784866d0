"""Degree of consolidation against time."""

from collections.abc import Sequence

from matplotlib.axes import Axes
from matplotlib.ticker import PercentFormatter

from sembra.local.pictures.style import (
    curve_style,
    draw_grid,
    look,
    new_figure,
    prepare_time_axis,
    write_legend,
)
from sembra.local.results import ResultFile

FIRST_TIME = 0.1
"""Left end of the time axis [days]."""


def dissipation(
    results: ResultFile,
    axes: Axes | None = None,
    *,
    names: Sequence[str] = (),
    title: str = "Dissipation of excess pore pressure",
) -> Axes:
    """Draw the degree of consolidation of each layer against time.

    Args:
        results: What to draw, of a model that was generated with `dissipation_calculation`.
        axes: Where to draw; a new figure if None.
        names: What to call the layers, from the lowest; those without a name have their number.
        title: Stands above the picture.

    Returns:
        The axes: time since a load comes [days] across, on a logarithmic axis, and the degree of
        consolidation downwards.

    Raises:
        ValueError: The results have no dissipation.
    """
    layers = results.dissipation
    if not layers:
        raise ValueError(
            "the results have no dissipation: generate the input file with "
            "dissipation_calculation=vertical"
        )
    with look():
        axes = new_figure(8.0, 5.0).add_subplot() if axes is None else axes
        # The legend stands in the order in which the layers lie.
        for number, layer in reversed(layers.items()):
            color, line_style = curve_style(number - 1)
            name = f", {names[number - 1]}" if number <= len(names) else ""
            axes.plot(
                layer["time"], layer["degree"], color=color, linestyle=line_style,
                label=f"{number}{name}",
            )  # fmt: skip
        axes.set_title(title, loc="left", pad=12)
        end = max(max(layer["time"]) for layer in layers.values())
        prepare_time_axis(axes, FIRST_TIME, end, "Time since loading [days]")
        degrees = [degree for layer in layers.values() for degree in layer["degree"]]
        axes.set_ylim(max([1.0, *degrees]) + 0.02, min([0.0, *degrees]) - 0.02)
        axes.yaxis.set_major_formatter(PercentFormatter(1.0))
        axes.set_ylabel("Degree of consolidation")
        draw_grid(axes)
        write_legend(axes, "Layer, from the lowest")
        return axes
