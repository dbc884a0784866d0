"""Settlement against time."""

from collections.abc import Sequence
from dataclasses import dataclass
from math import log10
from pathlib import Path

import numpy as np
from matplotlib.axes import Axes
from matplotlib.ticker import FuncFormatter, NullFormatter

from .labels_above import write_above
from .settlements import LoadStep
from .spreading import spread
from .style import GRID, INK, LOAD, picture

FIRST_TIME = 1.0
"""Left end of the time axis [days]: a logarithmic axis has no day 0."""

NARROWEST_LABEL, WIDTH_OF_LETTER = 0.08, 0.0095
"""Least width of a load step's label, and that of a letter, as parts of the diagram's width."""

LINE_OF_TEXT = 0.045
"""Height of a line of text, as a part of the height of the lower diagram."""


LineStyle = str | tuple[float, tuple[float, ...]]
"""One of matplotlib's names, or where a pattern begins and the lengths of its dashes and gaps."""


@dataclass(frozen=True)
class Curve:
    """Settlements [m] against times [days], and how the curve is drawn.

    The curve gets a dot at each of the marked times. `name` is short; it stands at its end.
    """

    label: str
    times: Sequence[float]
    settlements: Sequence[float]
    color: str
    line_style: LineStyle = "-"
    line_width: float = 1.4
    marked_times: Sequence[float] = ()
    name: str = ""


def draw_settlements(
    path: Path,
    curves: Sequence[Curve],
    steps: Sequence[LoadStep],
    title: str,
    legend_title: str,
    load_label: str = "Added load",
    name_steps: bool = False,
) -> None:
    """Draw curves under a diagram of the load, and write the picture.

    path: the file to write.
    curves: at least one curve, all up to the same last time.
    steps: the load steps in the order of time.
    title: stands above the picture.
    legend_title: says what the curves are.
    load_label: says what the diagram of the load shows.
    name_steps: whether the load steps have their names above them, or numbers.
    """
    end = max(curve.times[-1] for curve in curves)
    with picture(path, 9.0, 7.0) as figure:
        upper, lower = figure.subplots(2, sharex=True, height_ratios=[1, 3.6])
        upper.set_title(title, loc="left", pad=40)
        _prepare_time_axis(lower, end)
        _draw_load(upper, steps, end, load_label)
        _draw_settlement(lower, curves, legend_title)
        _mark_steps(upper, lower, steps, end, name_steps)


def _prepare_time_axis(axes: Axes, end: float) -> None:
    axes.set_xscale("log")
    axes.set_xlim(FIRST_TIME, end)
    axes.xaxis.set_major_formatter(FuncFormatter(lambda time, _: f"{time:g}"))
    axes.xaxis.set_minor_formatter(NullFormatter())
    axes.set_xlabel("Time [days]")


def _draw_load(axes: Axes, steps: Sequence[LoadStep], end: float, label: str) -> None:
    """Draw the stress that the load steps have brought to the surface by each time."""
    times, pressures = [0.0], [0.0]
    for step in steps:
        times.append(step.time)
        pressures.append(pressures[-1] + step.pressure)
    times.append(end)
    pressures.append(pressures[-1])
    axes.fill_between(times, pressures, step="post", color=LOAD, alpha=0.15, linewidth=0)
    axes.step(times, pressures, where="post", color=LOAD, linewidth=1.4)
    axes.set_ylim(0, 1.15 * max(pressures, default=1.0) or 1.0)
    axes.set_ylabel(f"{label}\n[kPa]")
    _draw_grid(axes)


def _draw_settlement(axes: Axes, curves: Sequence[Curve], legend_title: str) -> None:
    """Draw the curves, with name and last settlement of each at its end."""
    for curve in curves:
        axes.plot(
            curve.times, curve.settlements, color=curve.color, linestyle=curve.line_style,
            linewidth=curve.line_width, label=curve.label, zorder=3,
        )  # fmt: skip
        marked = [time for time in curve.marked_times if time >= FIRST_TIME]
        dots = axes.plot(
            marked, np.interp(marked, curve.times, curve.settlements), color=curve.color,
            marker="o", markersize=4, linestyle="none", zorder=4, clip_on=False,
        )  # fmt: skip
        dots[0].set_in_layout(False)
    deepest = max(max(curve.settlements) for curve in curves)
    highest = min(min(curve.settlements) for curve in curves)
    room = 0.06 * (deepest - highest or 1.0)
    axes.set_ylim(deepest + room, highest - (room if highest < 0 else 0))
    axes.set_ylabel("Settlement [m]")
    axes.legend(
        loc="best", title=legend_title, alignment="left", frameon=True, edgecolor="none",
        handlelength=2.8,
    )  # fmt: skip
    _draw_grid(axes)
    _write_last_settlements(axes, curves)


def _write_last_settlements(axes: Axes, curves: Sequence[Curve]) -> None:
    bottom, top = axes.get_ylim()
    last = [curve.settlements[-1] for curve in curves]
    for curve, place in zip(curves, spread(last, LINE_OF_TEXT * abs(bottom - top)), strict=True):
        settlement = f"{curve.settlements[-1]:.3f} m".replace("-", "\N{MINUS SIGN}")
        axes.annotate(
            f"{curve.name}  {settlement}".lstrip(),
            (1.0, place),
            xycoords=("axes fraction", "data"),
            xytext=(6, 0),
            textcoords="offset points",
            va="center",
            color=curve.color,
        )


def _mark_steps(
    upper: Axes, lower: Axes, steps: Sequence[LoadStep], end: float, named: bool
) -> None:
    """Draw a line through both diagrams at each load step, with name or number and day above it."""
    decades = log10(end / FIRST_TIME)
    places = [log10(max(step.time, FIRST_TIME) / FIRST_TIME) / decades for step in steps]
    labels = []
    for number, step in enumerate(steps, 1):
        for axes in (upper, lower):
            axes.axvline(
                max(step.time, FIRST_TIME),
                color=LOAD,
                linewidth=0.9,
                linestyle=(0, (4, 3)),
                zorder=2,
            )
        before = "\N{BLACK LEFT-POINTING SMALL TRIANGLE} " if step.time < FIRST_TIME else ""
        labels.append(f"{step.told if named else number}\n{before}day {step.time:g}")
    longest = max((len(line) for label in labels for line in label.split("\n")), default=0)
    write_above(upper, places, labels, max(NARROWEST_LABEL, WIDTH_OF_LETTER * longest), LOAD)


def _draw_grid(axes: Axes) -> None:
    axes.grid(True, which="major", color=GRID, linewidth=0.8)
    axes.grid(True, which="minor", axis="x", color=GRID, linewidth=0.4)
    axes.tick_params(which="both", direction="in", color=INK)
    axes.set_axisbelow(True)
