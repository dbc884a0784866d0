"""Stresses and settlement along depth."""

from collections.abc import Sequence
from math import nan
from typing import TYPE_CHECKING

import numpy as np
from matplotlib.axes import Axes
from sembra.external.dsettlement import OutputFileParser

from sembra.local.pictures.style import (
    INK,
    WATER,
    LineStyle,
    curve_style,
    draw_grid,
    look,
    new_figure,
    write_legend,
)

if TYPE_CHECKING:
    from sembra.external.dsettlement import VerticalResult

SHOWN_TIMES = 6
"""How many times are shown where none are asked for."""

STRESSES: dict[str, tuple[str, LineStyle]] = {
    "Initial total stress": (INK, "--"),
    "Final total stress": (INK, "-"),
    "Initial water stress": (WATER, "--"),
    "Final water stress": (WATER, "-"),
    "Final pre consolidation stress": ("#9a6a00", (0, (8, 2, 1, 2))),
}
"""The stresses of a file, and how they look; others look like curves of their own."""

EFFECTIVE = {"Initial": ("#2f8f5b", "--"), "Final": ("#2f8f5b", "-")}


def stresses(
    results: OutputFileParser,
    axes: Axes | None = None,
    *,
    vertical: int = 1,
    title: str | None = None,
) -> Axes:
    """Draw the stresses along depth, before the loads and at the end of the calculation.

    Total, water and effective stress, and the preconsolidation stress where the file has it.

    Args:
        results: What to draw; for a file of D-Settlement itself a `ResultFile`.
        axes: Where to draw; a new figure if None.
        vertical: The number of the vertical.
        title: Stands above the picture; None for one that names the vertical.

    Returns:
        The axes: stress [kPa] across, level [m] upwards.

    Raises:
        KeyError: There is no such vertical.
        ValueError: It has no stresses, as in files of Darcy's model.
    """
    result = _vertical(results, vertical)
    table = result["stresses"]
    if not table:
        raise ValueError(
            f"vertical {vertical} has no stresses; those that D-Settlement itself wrote are read "
            "by sembra.local.results.ResultFile, and with Darcy's model there are none"
        )
    levels = result["depths"]
    with look():
        axes = _prepared(axes, title or f"Stresses at vertical {vertical}", "Stress [kPa]")
        for place, (header, values) in enumerate(table.items()):
            color, line_style = STRESSES.get(header, curve_style(place))
            axes.plot(
                _known(header, values), levels, color=color, linestyle=line_style, label=header
            )
        for when, (color, line_style) in EFFECTIVE.items():
            total, water = (table.get(f"{when} {kind} stress") for kind in ("total", "water"))
            if total is not None and water is not None:
                axes.plot(
                    np.subtract(total, water), levels, color=color, linestyle=line_style,
                    linewidth=2.0, label=f"{when} effective stress",
                )  # fmt: skip
        axes.set_xlim(left=min(0.0, axes.get_xlim()[0]))
        write_legend(axes)
        return axes


def settlement_along_depth(
    results: OutputFileParser,
    axes: Axes | None = None,
    *,
    vertical: int = 1,
    times: Sequence[float] | None = None,
    title: str | None = None,
) -> Axes:
    """Draw how far each point of a vertical has settled at some times.

    Args:
        results: What to draw.
        axes: Where to draw; a new figure if None.
        vertical: The number of the vertical.
        times: Times [days]; each is drawn at the nearest time that the results have. None for
            up to six of the model's calculation times and the end, or of all times if it has
            none, spread between the first day and the end as on a logarithmic axis.
        title: Stands above the picture; None for one that names the vertical.

    Returns:
        The axes: settlement [m] across, level [m] upwards.

    Raises:
        KeyError: There is no such vertical.
        ValueError: It has no settlement along depth.
    """
    result = _vertical(results, vertical)
    tables = {
        time: table["Settlement"]
        for time, table in result["vertical_data"].items()
        if table.get("Settlement")
    }
    if not tables:
        raise ValueError(f"vertical {vertical} has no settlement along depth")
    if times is None:
        asked = _calculation_times(results, vertical)
        times = _spread([*asked, max(tables)] if asked else list(tables))
    shown = _nearest(list(tables), times)
    with look():
        axes = _prepared(axes, title or f"Settlement at vertical {vertical}", "Settlement [m]")
        for place, time in enumerate(reversed(shown)):
            color, line_style = curve_style(place)
            axes.plot(
                tables[time], result["depths"], color=color, linestyle=line_style,
                label=_told(time),
            )  # fmt: skip
        write_legend(axes, "Time")
        return axes


def _known(header: str, values: Sequence[float]) -> Sequence[float]:
    """Leave gaps where a preconsolidation stress isn't known, which the file says by zero."""
    return [value or nan for value in values] if "pre consolidation" in header else values


def _told(time: float) -> str:
    return f"day {time:.0f}" if time >= 10 else f"day {time:.2g}"


def _vertical(results: OutputFileParser, number: int) -> "VerticalResult":
    verticals = results.vertical_results
    if number not in verticals:
        raise KeyError(f"no vertical {number}; there are {sorted(verticals)}")
    return verticals[number]


def _calculation_times(results: OutputFileParser, vertical: int) -> Sequence[float]:
    """Return the times that were asked for."""
    try:
        residual = results.residual_times.get(vertical)
    except ValueError:  # a file of D-Settlement without any, whose block has no rows
        return ()
    return residual["Time"] if residual else ()


def _spread(times: Sequence[float]) -> Sequence[float]:
    """Return some of the times, as near as can be to equal distances of their logarithms."""
    if len(times) <= SHOWN_TIMES:
        return times
    end = max(times)
    wanted = [end] if end <= 1.0 else np.geomspace(1.0, end, SHOWN_TIMES).tolist()
    return _nearest(times, wanted)


def _nearest(times: Sequence[float], wanted: Sequence[float]) -> list[float]:
    """Return the times nearest to those that are wanted, each once, in ascending order."""
    return sorted({min(times, key=lambda time: abs(time - want)) for want in wanted})


def _prepared(axes: Axes | None, title: str, label: str) -> Axes:
    axes = new_figure(6.5, 7.0).add_subplot() if axes is None else axes
    axes.set_title(title, loc="left", pad=12)
    axes.set_xlabel(label)
    axes.set_ylabel("Level [m]")
    draw_grid(axes)
    return axes
