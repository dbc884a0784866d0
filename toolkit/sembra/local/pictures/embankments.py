"""Embankments: each on the surface and on those before it."""

import numpy as np
from matplotlib.axes import Axes
from matplotlib.patches import Polygon
from matplotlib.patheffects import withStroke

from sembra.local.pictures.cross_section import CrossSection, levels
from sembra.local.pictures.section_style import load_style
from sembra.local.pictures.style import LOAD

THINNEST_LABELLED = 0.16
"""Height at which a load has room for its number, in inches."""

WIDTH_OF_NUMBER, CLEAR_OF_VERTICAL = 0.2, 0.3
"""Room for a number across, and its distance from a vertical if there is space, in inches."""

_ABOVE_WATER, _BELOW_LAYERS = 1.2, 1.8


def draw_embankments(axes: Axes, section: CrossSection, inches: tuple[float, float]) -> None:
    """Draw the loads.

    Each is drawn down to below the surface, the last one first: what lies under a load, and the
    layers, which have to be drawn over all of them, cover the rest of it.

    section: what the loads belong to.
    inches: size of a metre in the picture, across and upwards.
    """
    below = min(level for _, level in section.surface)
    count = len(section.loads)
    for index, load in enumerate(section.loads):
        if len(load.outline) < 2:
            continue
        left, right = load.outline[0][0], load.outline[-1][0]
        height = (_BELOW_LAYERS - _ABOVE_WATER) * (count - index) / count
        axes.add_patch(
            Polygon(
                [*load.outline, (right, below), (left, below)],
                zorder=_ABOVE_WATER + height,
                **load_style(section.loads, index),
            )
        )
        _write_number(axes, section, index, inches)


def _write_number(
    axes: Axes, section: CrossSection, index: int, inches: tuple[float, float]
) -> None:
    """Write a load's number where it is thick, clear of the verticals, if there is room at all."""
    outline = section.loads[index].outline
    x = np.linspace(outline[0][0], outline[-1][0], 201)
    thickness = section.thickness(index, x)
    room = np.full_like(x, np.inf)
    for vertical in section.verticals:
        room = np.minimum(room, np.abs(x - vertical) * inches[0])
    fits = (thickness * inches[1] >= THINNEST_LABELLED) & (room >= WIDTH_OF_NUMBER / 2)
    if not fits.any():
        return
    thick = fits & (thickness >= 0.95 * thickness[fits].max())
    clear = np.where(thick, np.minimum(room, CLEAR_OF_VERTICAL), -1.0)
    places = np.flatnonzero(clear == clear.max())
    place = places[np.argmin(np.abs(places - len(x) // 2))]
    middle = levels(outline, x[place]) - thickness[place] / 2
    axes.text(
        x[place], float(middle), f"{index + 1}", color=LOAD, fontsize=9,
        weight="bold", ha="center", va="center", zorder=5,
        path_effects=[withStroke(linewidth=2.5, foreground="white")],
    )  # fmt: skip
