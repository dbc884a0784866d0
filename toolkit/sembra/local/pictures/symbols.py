"""The symbols of geotechnical drawings."""

from matplotlib.axes import Axes
from matplotlib.path import Path
from matplotlib.transforms import ScaledTranslation

from sembra.local.pictures.load_step import LoadStep
from sembra.local.pictures.style import LOAD, WATER, figure_of

TRIANGLE = Path([(0, 0), (-0.6, 1), (0.6, 1), (0, 0)], closed=True)


def draw_water_level(axes: Axes, x: float, level: float) -> None:
    """Draw the sign of a water level: a triangle that stands on it, and short lines below it.

    x, level: where the point of the triangle touches the water, in data coordinates.
    """
    axes.plot(
        [x], [level], marker=TRIANGLE, markersize=20, markerfacecolor="white",
        markeredgecolor=WATER, markeredgewidth=1.2, linestyle="none", zorder=6,
    )  # fmt: skip
    inch = figure_of(axes).dpi_scale_trans
    for below, width in ((3.0, 9.0), (5.5, 6.0), (8.0, 3.0)):
        axes.plot(
            [x], [level], marker="_", markersize=width, markeredgecolor=WATER,
            markeredgewidth=1.2, linestyle="none", zorder=6,
            transform=axes.transData + ScaledTranslation(0, -below / 72, inch),
        )  # fmt: skip


def draw_uniform_load(
    axes: Axes, left: float, right: float, bottom: float, height: float, count: int = 9
) -> None:
    """Draw a uniform load: arrows that end on a level, under a line.

    left, right: extent of the load.
    bottom: level at which the arrows end.
    height: length of the arrows; all in data coordinates.
    count: number of arrows.
    """
    axes.plot([left, right], [bottom + height] * 2, color=LOAD, linewidth=1.4, zorder=5)
    for number in range(count):
        x = left + (right - left) * number / (count - 1)
        axes.annotate(
            "",
            xy=(x, bottom),
            xytext=(x, bottom + height),
            arrowprops={
                "arrowstyle": "-|>,head_width=0.18,head_length=0.36",
                "color": LOAD,
                "linewidth": 1.0,
                "shrinkA": 0,
                "shrinkB": 0,
            },
        )


def told_load(load: LoadStep) -> str:
    """Return name, pressure and time of a load in words."""
    when = "initial load" if load.time < 0 else f"day {load.time:g}"
    return f"{load.name}: {load.pressure:.1f} kPa, {when}"
