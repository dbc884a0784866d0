"""The picture of a cross-section: layers, pl-lines, loads, drains and verticals."""

from math import ceil
from pathlib import Path
from typing import Any

from matplotlib.axes import Axes
from matplotlib.patches import Polygon

from .cross_section import CrossSection, Line, between, levels
from .embankment_drawing import draw_embankments
from .labels_above import write_above
from .scale import Scale, fit
from .section_legend import draw_legends
from .section_style import DRAINS, PHREATIC, VERTICAL, pl_line_style
from .style import INK, WATER, fill_color, picture
from .symbols import draw_water_level

WIDTH = 11.5
ROOM_ACROSS, ROOM_UPWARDS = 10.2, 5.6
"""Size of the picture and room for the cross-section in it, in inches."""

TITLE_AND_AXIS = 1.6
"""What stands above and below the cross-section, without the legends, in inches."""

MARGIN_ACROSS, MARGIN_UPWARDS = 0.015, 0.05
"""Room around the geometry, the same on the left and on the right, as parts of its size."""

WATER_SIGN = 0.4
"""How far the signs of the phreatic line stand from the limits, in inches."""

WIDTH_OF_LABEL = 0.75
"""Room for the label of a vertical, in inches."""


def draw_section(path: Path, section: CrossSection, title: str) -> None:
    """Draw a cross-section and write the picture.

    path: the file to write.
    section: what to draw.
    title: stands above the picture.
    """
    (left, right), (low, high) = section.limits, section.extent
    across = MARGIN_ACROSS * (right - left)
    upwards = MARGIN_UPWARDS * (high - low)
    length, rise = right - left + 2 * across, high - low + 2 * upwards
    scale = fit(length, rise, ROOM_ACROSS, ROOM_UPWARDS)
    with picture(path, WIDTH, scale.height + TITLE_AND_AXIS) as figure:
        axes = figure.add_subplot()
        axes.set_title(title, loc="left", pad=46 if section.verticals else 12)
        axes.set_xlim(left - across, right + across)
        axes.set_ylim(low - upwards, high + upwards)
        axes.set_aspect(scale.exaggeration)
        _label_axes(axes, section, scale)
        _draw_free_water(axes, section)
        draw_embankments(axes, section, (scale.width / length, scale.height / rise))
        _draw_layers(axes, section)
        _draw_drains(axes, section)
        _draw_pl_lines(axes, section)
        _draw_water_levels(axes, section, scale.width)
        _draw_verticals(axes, section, scale.width)
        figure.set_figheight(scale.height + TITLE_AND_AXIS + draw_legends(figure, section))


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


def _draw_drains(axes: Axes, section: CrossSection) -> None:
    drains = section.drains
    if drains is not None:
        top = between(section.surface, drains.left, drains.right)
        corners = [*top, (drains.right, drains.bottom), (drains.left, drains.bottom)]
        axes.add_patch(Polygon(corners, zorder=3, **DRAINS))


def _draw_pl_lines(axes: Axes, section: CrossSection) -> None:
    for index, line in enumerate(section.pl_lines.values()):
        _draw_line(axes, line, **pl_line_style(index))
    _draw_line(axes, section.phreatic_line, **PHREATIC)


def _draw_water_levels(axes: Axes, section: CrossSection, width: float) -> None:
    """Draw the sign of the phreatic line near both limits."""
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
