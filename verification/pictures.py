"""Published results as points, the worker's as a line over them."""

import re
from pathlib import Path
from typing import Any

import matplotlib
import numpy as np
from matplotlib.axes import Axes
from matplotlib.figure import Figure
from matplotlib.patches import PathPatch
from matplotlib.path import Path as DrawnPath
from matplotlib.ticker import FuncFormatter, NullLocator

from verification.calculating import Outcome
from verification.reading import Floats, Vertical

TELLING = {
    "bm1-4": "NEN-Koppejan, drained: ten thin layers with secular settlement",
    "bm3-1c": "NEN-Koppejan by Terzaghi: loading, unloading and loading again",
    "bm3-2a": "Isotache by Terzaghi: loading, unloading and loading again",
    "bm3-3f": "NEN-Bjerrum by Darcy: loading, unloading and loading again",
    "bm3-8e": "Isotache by Darcy: slow consolidation below loads that come and go",
    "bm3-9b": "NEN-Koppejan by Darcy: one load, slow consolidation",
    "bm3-10c": "Isotache by Darcy: sand walls with a detailed schedule of dewatering",
    "bm3-11h": "NEN-Koppejan by Terzaghi: strips with underpressure for a time",
    "bm3-4f": "Isotache by Darcy: loads that sink below the water",
    "bm4-3e": "Isotache by Terzaghi: a profile that is maintained",
    "bm4-10e": "Isotache by Terzaghi: water loads",
    "Tutorial-1b": "NEN-Bjerrum by Darcy: four layers, and a load that is taken away",
    "Tutorial-2b": "NEN-Bjerrum by Darcy: an embankment upon drains, whose profile is maintained",
    "Tutorial-4a": "Isotache by Darcy: ground improvement and an embankment that submerges",
    "Tutorial-5c": "Isotache by Darcy: sand walls, an excavation, and an embankment in it",
}
"""Cases that have a picture, with its caption: a kind of calculation each."""

_COLORS = ("#1f5fa8", "#8c2d19", "#3a7d44", "#6b4c9a", "#b8860b", "#2f7f86", "#7f3f5f")
_INK = "#222222"
_GRID = "#e0e0e0"
# Text stays text, and names of parts don't differ from run to run.
_STYLE: dict[Any, Any] = {
    "font.family": "DejaVu Sans",
    "font.size": 8.0,
    "axes.edgecolor": _INK,
    "axes.labelcolor": _INK,
    "axes.linewidth": 0.7,
    "legend.frameon": False,
    "legend.fontsize": 7.0,
    "figure.constrained_layout.use": True,
    "svg.fonttype": "none",
    "svg.hashsalt": "verification",
}
_MOST_VERTICALS = 7
_MOST_POINTS = 40
_DOT = 4.0
_PALE = 0.4
_FIRST_TIME = 0.1
_LONG = 20.0


def draw(path: Path, outcome: Outcome) -> None:
    """Write the picture of a case: settlement against time, and in the end against depth.

    Args:
        path: The SVG file.
        outcome: A case whose results could be compared.
    """
    pairs = list(zip(outcome.published, outcome.ours, strict=True))
    step = -(-len(pairs) // _MOST_VERTICALS)
    with matplotlib.rc_context(_STYLE):
        figure = Figure(figsize=(7.2, 3.2))
        left, right = figure.subplots(1, 2, width_ratios=[1.7, 1.0])
        left.set_title(outcome.case.name, loc="left", fontweight="bold", fontsize=9.0)
        shown = [*zip(_COLORS, pairs[::step], strict=False)]
        for color, (published, ours) in shown:
            _history(left, color, published, ours)
            _profile(right, color, published, ours)
        _prepare(left, "Time [days]", "Settlement of the surface [m]")
        if outcome.published[0].times[-1] > _LONG:
            left.set_xscale("log")
            left.xaxis.set_major_formatter(FuncFormatter(lambda time, _: f"{time:g}"))
            left.xaxis.set_minor_locator(NullLocator())
        left.invert_yaxis()
        _prepare(right, "Settlement in the end [m]", "Level [m]")
        if len(shown) > 1:
            right.legend(title="Vertical", handlelength=1.2)
        figure.savefig(path, format="svg", metadata={"Date": None, "Creator": None})
    _shorten(path)


def _history(axes: Axes, color: str, published: Vertical, ours: Vertical) -> None:
    """Return the curve, and fainter the settlement by the first load steps alone."""
    if published.loads is not None and ours.loads is not None:
        for number in range(min(published.loads.shape[1], ours.loads.shape[1]) - 1):
            _curve(
                axes, color, published, published.loads[:, number], ours, ours.loads[:, number], 0.3
            )
    _curve(axes, color, published, published.curve, ours, ours.curve, 1.0)


def _curve(
    axes: Axes,
    color: str,
    published: Vertical,
    theirs: Floats,
    ours: Vertical,
    mine: Floats,
    strength: float,
) -> None:
    later = ours.times >= _FIRST_TIME
    axes.plot(ours.times[later], mine[later], color=color, linewidth=1.0, alpha=strength)
    times, values = _thinned(published.times, theirs)
    _points(axes, times, values, color, strength)


def _profile(axes: Axes, color: str, published: Vertical, ours: Vertical) -> None:
    axes.plot(
        ours.settlements[-1], ours.depths, color=color, linewidth=1.0, label=f"x = {ours.x:g} m"
    )
    _points(axes, published.settlements[-1], published.depths, color, 1.0)


def _points(axes: Axes, x: Floats, y: Floats, color: str, strength: float) -> None:
    """Return dots: lines without length and with round ends, since markers make large files."""
    points = np.column_stack([x, y]).repeat(2, axis=0)
    codes = np.tile([DrawnPath.MOVETO, DrawnPath.LINETO], len(x))
    dots = PathPatch(
        DrawnPath(points, codes),
        edgecolor=color,
        facecolor="none",
        linewidth=_DOT,
        capstyle="round",
        alpha=_PALE * strength,
    )
    axes.add_patch(dots)
    axes.autoscale_view()


def _thinned(times: Floats, values: Floats) -> tuple[Floats, Floats]:
    """Return points that don't crowd each other on the axis."""
    later = np.flatnonzero(times >= _FIRST_TIME)
    place = np.log10(times[later]) if times[-1] > _LONG else times[later]
    apart = (place[-1] - place[0]) / _MOST_POINTS
    kept: list[int] = []
    last = -np.inf
    for index, where in zip(later, place, strict=True):
        if where - last > apart or index == later[-1]:
            kept.append(int(index))
            last = where
    return times[kept], values[kept]


def _prepare(axes: Axes, x_label: str, y_label: str) -> None:
    axes.set_xlabel(x_label)
    axes.set_ylabel(y_label)
    axes.grid(color=_GRID, linewidth=0.5)
    axes.set_axisbelow(True)
    axes.spines[["top", "right"]].set_visible(False)


def _shorten(path: Path) -> None:
    """Make the file smaller: in paths, hundredths of a point are enough."""
    text = re.sub(r"^[ML\d. -]+$", _in_hundredths, path.read_text("utf-8"), flags=re.MULTILINE)
    text = re.sub(r"\s*<metadata>.*?</metadata>", "", text, flags=re.DOTALL)
    path.write_text(re.sub(r"[ \t]+$", "", text, flags=re.MULTILINE), encoding="utf-8")


def _in_hundredths(line: re.Match[str]) -> str:
    return re.sub(r"(\.\d\d)\d+", r"\1", line[0])
