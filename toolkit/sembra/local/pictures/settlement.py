"""Settlement against time."""

from collections.abc import Sequence
from dataclasses import dataclass
from math import log10

import numpy as np
from matplotlib.axes import Axes
from sembra.external.dsettlement import OutputFileParser

from sembra.local.pictures.labels_above import write_above
from sembra.local.pictures.load_step import LoadStep
from sembra.local.pictures.settlements import settlements_at, settlements_of
from sembra.local.pictures.spreading import spread
from sembra.local.pictures.style import (
    LOAD,
    LineStyle,
    curve_style,
    draw_grid,
    look,
    new_figure,
    prepare_time_axis,
    write_legend,
)

FIRST_TIME = 1.0
"""Left end of the time axis [days]: a logarithmic axis has no day 0."""

NARROWEST_LABEL, WIDTH_OF_LETTER = 0.08, 0.0095
"""Least width of a load step's label, and that of a letter, as parts of the diagram's width."""

LINE_OF_TEXT = 0.045
"""Height of a line of text, as a part of the height of the lower diagram."""

ROOM_FOR_LABELS = 40
"""Between the title and a diagram with labels above it, in points."""


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


def settlement_per_load(
    results: OutputFileParser,
    axes: Axes | None = None,
    *,
    vertical: int = 1,
    steps: Sequence[LoadStep] = (),
    marked_times: Sequence[float] = (),
    title: str = "Settlement by the loads",
    load_label: str = "Added load",
) -> Axes:
    """Draw the settlement of the surface against time, by the first load, the first two, and so on.

    Args:
        results: What to draw.
        axes: Where to draw; a new figure if None, with a diagram of the load above if there are
            steps.
        vertical: The number of the vertical.
        steps: The load steps in the order of time, which name the last curves; those before them,
            as by the weight of the ground, are left out. Without steps all are drawn, by number.
        marked_times: Times [days] at which the settlement by all loads gets a dot.
        title: Stands above the picture.
        load_label: Says what the diagram of the load shows.

    Returns:
        The axes of the settlement. Its time axis is logarithmic, from day 1.

    Raises:
        KeyError: There is no such vertical, or it has no settlement.
        ValueError: The results have no settlement, or fewer load steps than were given.
    """
    settlements = settlements_at(results, vertical)
    if len(steps) > len(settlements.by_load):
        raise ValueError(
            f"{len(steps)} load steps were given, and the results have {len(settlements.by_load)}"
        )
    shown = settlements.by_load[-len(steps) :] if steps else settlements.by_load
    labels = (
        _labels_of_steps(steps) if steps else [f"Load step {i}" for i, _ in enumerate(shown, 1)]
    )
    curves: list[Curve] = []
    for number, (label, by_load) in enumerate(zip(labels, shown, strict=True), 1):
        is_last = number == len(shown)
        # The last, which holds all of it, looks the same however many there are.
        color, line_style = curve_style(0 if is_last else number)
        curves.append(
            Curve(
                label, settlements.times, by_load, color, line_style,
                line_width=2.2 if is_last else 1.4, marked_times=marked_times if is_last else (),
            )
        )  # fmt: skip
    return draw_settlements(axes, curves, steps, title, "Settlement by the loads", load_label)


def settlement_per_vertical(
    results: OutputFileParser,
    axes: Axes | None = None,
    *,
    names: Sequence[str] = (),
    steps: Sequence[LoadStep] = (),
    marked_times: Sequence[float] = (),
    title: str = "Settlement of the surface",
    load_label: str = "Load",
) -> Axes:
    """Draw the settlement of the surface against time at all verticals.

    Args:
        results: What to draw.
        axes: Where to draw; a new figure if None, with a diagram of the load above if there are
            steps.
        names: What to call the verticals, in their order; those without a name have their x.
        steps: The load steps in the order of time, whose names stand above the diagram.
        marked_times: Times [days] at which the curves get a dot.
        title: Stands above the picture.
        load_label: Says what the diagram of the load shows.

    Returns:
        The axes of the settlement. Its time axis is logarithmic, from day 1.

    Raises:
        ValueError: The results have no settlement.
    """
    verticals = results.vertical_results
    curves: list[Curve] = []
    for place, (number, settlements) in enumerate(settlements_of(results).items()):
        coordinates = verticals[number]["coordinates"]
        words = [names[place]] if place < len(names) else []
        words += [f"x = {coordinates['x']:g} m"] if "x" in coordinates else []
        color, line_style = curve_style(place)
        curves.append(
            Curve(
                f"{number}: {', '.join(words)}", settlements.times, settlements.total, color,
                line_style, marked_times=marked_times, name=f"{number}",
            )
        )  # fmt: skip
    return draw_settlements(axes, curves, steps, title, "Vertical", load_label, name_steps=True)


def draw_settlements(
    axes: Axes | None,
    curves: Sequence[Curve],
    steps: Sequence[LoadStep],
    title: str,
    legend_title: str,
    load_label: str,
    name_steps: bool = False,
) -> Axes:
    """Draw curves, on a new figure under a diagram of the load.

    axes: where to draw, or None.
    curves: at least one curve.
    steps: the load steps in the order of time.
    title: stands above the picture.
    legend_title: says what the curves are.
    load_label: says what the diagram of the load shows.
    name_steps: whether the load steps have their names above them, or numbers.

    Returns the axes of the curves.
    """
    end = max(curve.times[-1] for curve in curves)
    with look():
        upper = axes
        if axes is None and steps:
            upper, axes = new_figure(9.0, 7.0).subplots(2, sharex=True, height_ratios=[1, 3.6])
            _draw_load(upper, steps, end, load_label)
        elif axes is None:
            upper = axes = new_figure(9.0, 5.5).add_subplot()
        assert axes is not None
        assert upper is not None
        upper.set_title(title, loc="left", pad=ROOM_FOR_LABELS if steps else 12)
        prepare_time_axis(axes, FIRST_TIME, end)
        _draw_settlement(axes, curves, legend_title)
        _mark_steps(upper, axes, steps, end, name_steps)
        return axes


def _labels_of_steps(steps: Sequence[LoadStep]) -> list[str]:
    labels: list[str] = []
    for number, step in enumerate(steps, 1):
        numbers = " + ".join(str(earlier) for earlier in range(1, number + 1))
        adds = f"{'with ' if number > 1 else ''}{step.told}, {step.pressure:.1f} kPa"
        labels.append(f"{numbers}: {adds}")
    return labels


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
    draw_grid(axes)


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
    draw_grid(axes)
    _write_last_settlements(axes, curves)
    write_legend(axes, legend_title)


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
    labels: list[str] = []
    for number, step in enumerate(steps, 1):
        for axes in dict.fromkeys((upper, lower)):
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
