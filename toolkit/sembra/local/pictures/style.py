"""How the pictures look, and what they are drawn on."""

from collections.abc import Generator
from contextlib import contextmanager
from os import PathLike
from pathlib import Path
from typing import Any

import matplotlib.pyplot as plt
from matplotlib.axes import Axes
from matplotlib.figure import Figure
from matplotlib.legend import Legend
from matplotlib.ticker import FuncFormatter, NullFormatter
from matplotlib.transforms import ScaledTranslation

from sembra.core import Color

RESOLUTION = 150
"""Dots per inch of a saved picture."""

INK = "#222222"
WATER = "#1f5fa8"
LOAD = "#8c2d19"
GRID = "#d9d9d9"

LineStyle = str | tuple[float, tuple[float, ...]]
"""One of matplotlib's names, or where a pattern begins and the lengths of its dashes and gaps."""

CURVES: tuple[tuple[str, LineStyle], ...] = (
    ("#12345b", "-"), ("#3f7fbf", "--"), ("#2f8f5b", "-."), ("#7a7a7a", ":"),
    ("#9a6a00", (0, (8, 2, 1, 2, 1, 2))), ("#7a1f6b", (0, (10, 3))), ("#0a8f8f", (0, (3, 1))),
    ("#5a3fa8", (0, (4, 1, 1, 1, 1, 1))),
)  # fmt: skip
"""Colours and lines of the curves of a diagram, which differ in black and white too."""

_SETTINGS: Any = {
    "font.family": "DejaVu Sans",
    "font.size": 9.0,
    "axes.edgecolor": INK,
    "axes.labelcolor": INK,
    "axes.titlesize": 11.0,
    "axes.titleweight": "bold",
    "axes.linewidth": 0.8,
    "text.color": INK,
    "xtick.color": INK,
    "ytick.color": INK,
    "legend.frameon": False,
    "savefig.dpi": RESOLUTION,
}


@contextmanager
def look() -> Generator[None]:
    """Let what is drawn within look like the other pictures."""
    with plt.rc_context(_SETTINGS):
        yield


def new_figure(width: float, height: float) -> Figure:
    """Return an empty figure of a size in inches, one that a notebook shows."""
    figure = plt.figure(figsize=(width, height), layout="constrained")
    figure.set_dpi(100)
    return figure


def figure_of(axes: Axes) -> Figure:
    """Return the figure that axes stand on."""
    figure = axes.get_figure(root=True)
    if figure is None:
        raise ValueError("the axes stand on no figure")
    return figure


def save(axes: Axes, path: str | PathLike[str], *, resolution: float = RESOLUTION) -> Path:
    """Write the picture that axes belong to, and put it away.

    Args:
        axes: What a function of this package has returned.
        path: The file; its extension says which kind of picture it is: .png, .svg, .pdf.
        resolution: Dots per inch.

    Returns:
        Where it was written.

    Raises:
        OSError: The file can't be written.
        ValueError: Matplotlib knows no such kind of picture.
    """
    figure = figure_of(axes)
    path = Path(path)
    # The same picture gives the same bytes, whatever the version of matplotlib.
    metadata = {"Software": None} if path.suffix == ".png" else None
    figure.savefig(path, dpi=resolution, metadata=metadata)
    plt.close(figure)
    return path


def curve_style(index: int) -> tuple[str, LineStyle]:
    """Return colour and line of a curve by its place among the others."""
    return CURVES[index % len(CURVES)]


def draw_grid(axes: Axes) -> None:
    """Draw a grid below what else is on the axes."""
    axes.grid(True, which="major", color=GRID, linewidth=0.8)
    axes.grid(True, which="minor", axis="x", color=GRID, linewidth=0.4)
    axes.tick_params(which="both", direction="in", color=INK)
    axes.set_axisbelow(True)


def prepare_time_axis(axes: Axes, first: float, end: float, label: str = "Time [days]") -> None:
    """Let times [days] run across from the first to the end by their logarithms, in plain numbers.

    A logarithmic axis has no day 0.
    """
    axes.set_xscale("log")
    axes.set_xlim(first, end)
    axes.xaxis.set_major_formatter(FuncFormatter(lambda time, _: f"{time:g}"))
    axes.xaxis.set_minor_formatter(NullFormatter())
    axes.set_xlabel(label)


def write_legend(axes: Axes, title: str | None = None) -> None:
    """Write the legend of finished axes where it hides no curve.

    That is the place among the curves with most room, or beside the axes where none has enough. Who
    has set `legend.loc` of matplotlib has it there.
    """
    place_set = plt.rcParams["legend.loc"]
    legend = _legend(axes, title, loc=place_set)
    if place_set != "best":
        return
    figure = figure_of(axes)
    layout = figure.get_layout_engine()
    if layout is not None:
        layout.execute(figure)
    place = legend.get_window_extent()
    named = [line for line in axes.lines if not str(line.get_label()).startswith("_")]
    curves = [line.get_path().transformed(line.get_transform()) for line in named]
    if any(curve.intersects_bbox(place, filled=False) for curve in curves):
        legend.remove()
        taken = (axes.get_tightbbox() or axes.bbox).x1 - axes.bbox.x1
        beside = ScaledTranslation(taken / figure.dpi, 0.0, figure.dpi_scale_trans)
        _legend(
            axes, title, loc="upper left", bbox_to_anchor=(1.0, 1.0),
            bbox_transform=axes.transAxes + beside,
        )  # fmt: skip


def _legend(axes: Axes, title: str | None, **place: Any) -> Legend:
    return axes.legend(
        title=title, alignment="left", frameon=True, edgecolor="none", handlelength=3.2, **place
    )


def fill_color(color: Color) -> str:
    """Return a material's colour as matplotlib writes it."""
    red, green, blue = _channels(color)
    return f"#{red:02x}{green:02x}{blue:02x}"


def text_color(color: Color) -> str:
    """Return black or white, whichever reads better on a material's colour (ITU-R BT.601)."""
    red, green, blue = _channels(color)
    return INK if 0.299 * red + 0.587 * green + 0.114 * blue > 128 else "white"


def metres(level: float, datum: str = "") -> str:
    """Return a level in metres with its sign, behind the name of its datum."""
    sign = "\N{MINUS SIGN}" if round(level, 2) < 0 else "+" if round(level, 2) > 0 else ""
    return f"{datum} {sign}{abs(level):.2f} m".lstrip()


def _channels(color: Color) -> tuple[int, int, int]:
    code = color.deltares
    return code & 0xFF, code >> 8 & 0xFF, code >> 16 & 0xFF
