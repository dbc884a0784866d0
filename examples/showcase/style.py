"""How the pictures look, and how they are written."""

from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path

import matplotlib
from matplotlib.figure import Figure
from sembra.core import Color

RESOLUTION = 150
"""Dots per inch."""

INK = "#222222"
WATER = "#1f5fa8"
LOAD = "#8c2d19"
GRID = "#d9d9d9"


@contextmanager
def picture(path: Path, width: float, height: float) -> Iterator[Figure]:
    """Give an empty figure to draw on, and write it as PNG.

    path: the file to write.
    width, height: size in inches.
    """
    with matplotlib.rc_context(
        {
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
            "figure.constrained_layout.use": True,
        }
    ):
        figure = Figure(figsize=(width, height))
        yield figure
        figure.savefig(path, dpi=RESOLUTION, metadata={"Software": None})


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
