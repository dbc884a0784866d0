"""Labels in a row above a diagram, each with a short line down to its place."""

from collections.abc import Sequence

from matplotlib.axes import Axes
from matplotlib.transforms import ScaledTranslation

from sembra.local.pictures.spreading import spread
from sembra.local.pictures.style import figure_of

ROOM = 11.0
"""Height of the short lines, in points."""


def write_above(
    axes: Axes, places: Sequence[float], labels: Sequence[str], gap: float, color: str
) -> None:
    """Write labels above the upper edge so that none covers another.

    axes: the diagram.
    places: where the labels belong, as parts of its width.
    labels: as many texts.
    gap: least distance between the middles of two labels, as a part of the width.
    color: of texts and lines.
    """
    above = axes.transAxes + ScaledTranslation(0, ROOM / 72, figure_of(axes).dpi_scale_trans)
    for place, middle, label in zip(places, spread(places, gap), labels, strict=True):
        axes.annotate(
            label,
            (place, 1.0),
            xycoords="axes fraction",
            xytext=(middle, 1.0),
            textcoords=above,
            ha="center",
            va="bottom",
            color=color,
            fontsize=8.5,
            arrowprops={
                "arrowstyle": "-",
                "color": color,
                "linewidth": 0.7,
                "shrinkA": 0,
                "shrinkB": 0,
            },
        )
