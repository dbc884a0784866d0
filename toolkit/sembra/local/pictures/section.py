"""The picture of a cross-section: layers, pl-lines, loads, drains and verticals."""

from collections.abc import Sequence
from math import ceil, floor
from typing import Any

import numpy as np
from matplotlib.axes import Axes
from matplotlib.patches import Polygon
from sembra.external.dsettlement import Model2D

from sembra.local.pictures.cross_section import CrossSection, Line, between, levels
from sembra.local.pictures.embankments import draw_embankments
from sembra.local.pictures.labels_above import write_above
from sembra.local.pictures.scale import Scale, fit
from sembra.local.pictures.section_legend import draw_legends, draw_one_legend
from sembra.local.pictures.section_of_model import section_of
from sembra.local.pictures.section_style import (
    DRAIN,
    DRAINS,
    MANY_DRAINS,
    PHREATIC,
    VERTICAL,
    pl_line_style,
)
from sembra.local.pictures.style import INK, LOAD, WATER, figure_of, fill_color, look, new_figure
from sembra.local.pictures.symbols import draw_uniform_load, draw_water_level, told_load

WIDTH = 11.5
ROOM_ACROSS, ROOM_UPWARDS = 10.2, 5.6
"""Size of the picture and room for the cross-section in it, in inches."""

TITLE_AND_AXIS = 1.6
"""What stands above and below the cross-section, without the legends, in inches."""

MARGIN_ACROSS, MARGIN_UPWARDS = 0.015, 0.05
"""Room around the geometry, the same on the left and on the right, as parts of its size."""

WATER_SIGN = 0.4
"""How far the signs of the phreatic line stand from the limits, in inches."""

CLOSEST_DRAINS = 0.05
"""How far drains must stand apart to be drawn one by one, in inches."""

WIDTH_OF_LABEL = 0.75
"""Room for the label of a vertical, in inches."""


def cross_section(
    model: Model2D,
    axes: Axes | None = None,
    *,
    title: str = "Cross-section",
    datum: str = "",
    pl_line_names: Sequence[str] = (),
) -> Axes:
    """Draw the cross-section of a two-dimensional model.

    Layers, pl-lines, loads, drains and verticals, heights as large as there is room for.

    Args:
        model: The model, with at least one layer.
        axes: Where to draw; a new figure if None. On given axes one legend stands below them.
        title: Stands above the picture.
        datum: What the levels count from, such as "NAP"; stands behind their unit.
        pl_line_names: What to call the pl-lines in the legend, in the order of their creation, the
            phreatic line left out; those without a name get their number.

    Returns:
        The axes.

    Raises:
        TypeError: The model is no Model2D.
        ValueError: The model has no layer.
    """
    if not isinstance(model, Model2D):
        raise TypeError("cross_section draws a Model2D; soil_column draws a Model1D")
    section = section_of(model, datum, pl_line_names)
    with look():
        if axes is not None:
            box = axes.get_window_extent()
            inch = figure_of(axes).dpi
            draw_section(axes, section, title, (box.width / inch, box.height / inch))
            draw_one_legend(axes, section)
            return axes
        return draw_alone(section, title)


def draw_alone(section: CrossSection, title: str) -> Axes:
    """Draw a cross-section with its legends on a figure of its own, as high as it needs."""
    scale = fit(*_size(section), ROOM_ACROSS, ROOM_UPWARDS)
    figure = new_figure(WIDTH, scale.height + TITLE_AND_AXIS)
    axes = figure.add_subplot()
    draw_section(axes, section, title, (ROOM_ACROSS, ROOM_UPWARDS))
    figure.set_figheight(scale.height + TITLE_AND_AXIS + draw_legends(figure, section))
    return axes


def draw_section(axes: Axes, section: CrossSection, title: str, room: tuple[float, float]) -> None:
    """Draw a cross-section, without its legends.

    axes: where to draw.
    section: what to draw.
    title: stands above it.
    room: for the cross-section, across and upwards, in inches.
    """
    (left, right), (low, high) = section.limits, section.extent
    across = MARGIN_ACROSS * (right - left)
    upwards = MARGIN_UPWARDS * (high - low)
    length, rise = _size(section)
    scale = fit(length, rise, *room)
    axes.set_title(title, loc="left", pad=46 if section.verticals else 12)
    axes.set_xlim(left - across, right + across)
    axes.set_ylim(low - upwards, high + upwards)
    axes.set_aspect(scale.exaggeration)
    _label_axes(axes, section, scale)
    _draw_free_water(axes, section)
    draw_embankments(axes, section, (scale.width / length, scale.height / rise))
    _draw_layers(axes, section)
    _draw_drains(axes, section, scale.width / length)
    _draw_pl_lines(axes, section)
    _draw_water_levels(axes, section, scale.width)
    _draw_verticals(axes, section, scale.width)
    _draw_uniform_loads(axes, section)


def _size(section: CrossSection) -> tuple[float, float]:
    """Return the length and rise with their margins [m]."""
    (left, right), (low, high) = section.limits, section.extent
    return (right - left) * (1 + 2 * MARGIN_ACROSS), (high - low) * (1 + 2 * MARGIN_UPWARDS)


def _draw_uniform_loads(axes: Axes, section: CrossSection) -> None:
    """Draw the loads on the whole surface above all else, the first lowest."""
    low, high = section.limits
    height = section.row
    for number, load in enumerate(section.uniform_loads):
        base = section.top + height * (number + 0.3)
        draw_uniform_load(axes, low, high, base, 0.6 * height, count=25)
        axes.text(
            (low + high) / 2, base + 0.3 * height, told_load(load), color=LOAD, ha="center",
            va="center", zorder=6, bbox={"facecolor": "white", "edgecolor": "none", "pad": 1.5},
        )  # fmt: skip


def _label_axes(axes: Axes, section: CrossSection, scale: Scale) -> None:
    told = (
        "heights and lengths to the same scale"
        if scale.exaggeration == 1
        else f"heights drawn {scale.exaggeration:g} times as large as lengths"
    )
    axes.set_xlabel(f"x [m]  ({told})")
    axes.set_ylabel(f"Level [m {section.datum}".rstrip() + "]")
    axes.tick_params(direction="out", right=True, labelright=True)


def _draw_free_water(axes: Axes, section: CrossSection) -> None:
    """Fill all below the phreatic line; layers and loads, drawn later, leave what is free."""
    if not section.phreatic_line:
        return
    axes.add_patch(
        Polygon(
            [*section.phreatic_line, *reversed(section.layers[0].bottom)],
            facecolor=WATER, alpha=0.2, linewidth=0, zorder=1,
        )
    )  # fmt: skip


def _draw_layers(axes: Axes, section: CrossSection) -> None:
    for layer in section.layers:
        axes.add_patch(
            Polygon(
                [*layer.top, *reversed(layer.bottom)],
                facecolor=fill_color(layer.color), edgecolor=INK, linewidth=0.9, zorder=2,
            )
        )  # fmt: skip


def _draw_drains(axes: Axes, section: CrossSection, inches: float) -> None:
    """Draw where drains stand, and each of them if there is room.

    axes: where to draw.
    section: what they belong to.
    inches: length of a metre in the picture.
    """
    drains = section.drains
    if drains is None:
        return
    top = between(section.surface, drains.left, drains.right)
    corners = [*top, (drains.right, drains.bottom), (drains.left, drains.bottom)]
    apart = drains.spacing * inches >= CLOSEST_DRAINS
    axes.add_patch(Polygon(corners, zorder=3, **(DRAINS if apart else MANY_DRAINS)))
    if apart:
        # A part of a millionth keeps the last drain at the right end.
        last = floor((drains.right - drains.left) / drains.spacing + 1e-6)
        along = drains.left + drains.spacing * np.arange(last + 1)
        axes.vlines(along, drains.bottom, levels(section.surface, along), zorder=3, **DRAIN)


def _draw_pl_lines(axes: Axes, section: CrossSection) -> None:
    for index, line in enumerate(section.pl_lines.values()):
        _draw_line(axes, line, **pl_line_style(index))
    if section.phreatic_line:
        _draw_line(axes, section.phreatic_line, **PHREATIC)


def _draw_water_levels(axes: Axes, section: CrossSection, width: float) -> None:
    """Draw the sign of the phreatic line near both limits."""
    if not section.phreatic_line:
        return
    left, right = section.limits
    aside = (right - left) * min(WATER_SIGN / width, 0.5)
    for x in (left + aside, right - aside):
        draw_water_level(axes, x, float(levels(section.phreatic_line, x)))


def _draw_line(axes: Axes, line: Line, **style: Any) -> None:
    axes.plot([x for x, _ in line], [level for _, level in line], zorder=4, **style)


def _draw_verticals(axes: Axes, section: CrossSection, width: float) -> None:
    """Draw verticals from the upper edge to the bottom, and label as many as there is room for."""
    if not section.verticals:
        return
    bottom = section.layers[0].bottom
    low, high = axes.get_xlim()
    for x in section.verticals:
        axes.plot([x, x], [float(levels(bottom, x)), axes.get_ylim()[1]], zorder=3.5, **VERTICAL)
    every = ceil(len(section.verticals) * WIDTH_OF_LABEL / width)
    labelled = list(enumerate(section.verticals, 1))[::every]
    write_above(
        axes,
        [(x - low) / (high - low) for _, x in labelled],
        [f"{number}\nx = {x:g} m".replace("-", "\N{MINUS SIGN}") for number, x in labelled],
        WIDTH_OF_LABEL / width,
        VERTICAL["color"],
    )
