"""The soil column: layers, levels, phreatic line and loads."""

from collections.abc import Sequence
from dataclasses import dataclass
from pathlib import Path

from matplotlib.axes import Axes
from matplotlib.lines import Line2D
from matplotlib.patches import Patch, Rectangle
from sembra.core import Color

from .settlements import LoadStep
from .spreading import spread
from .style import INK, LOAD, WATER, fill_color, metres, picture, text_color
from .symbols import draw_uniform_load, draw_water_level

LEFT, RIGHT = 0.0, 1.0
LABEL_LEFT, WATER_RIGHT, PICTURE_RIGHT = -0.10, 1.22, 1.95
"""Where things stand across; the column is one wide. Across, the picture has no scale."""

LINE_OF_TEXT = 0.033
"""Height of a line of text, as a part of the height of the picture."""


@dataclass(frozen=True)
class Layer:
    """A layer between two levels [m], and its soil with unit weights dry and wet [kN/m³]."""

    top: float
    bottom: float
    material: str
    color: Color
    unit_weights: tuple[float, float]


@dataclass(frozen=True)
class SoilColumn:
    """What stands in the picture. Loads of a time below zero are initial loads."""

    layers: Sequence[Layer]
    phreatic_level: float | None
    loads: Sequence[LoadStep]
    datum: str = ""

    @property
    def surface(self) -> float:
        """Level of the top of the highest layer."""
        return self.layers[0].top

    @property
    def bottom(self) -> float:
        """Level of the bottom of the lowest layer."""
        return self.layers[-1].bottom


def draw_column(path: Path, column: SoilColumn, title: str) -> None:
    """Draw a soil column and write the picture."""
    with picture(path, 8.0, 7.5) as figure:
        axes = figure.add_subplot()
        axes.set_axis_off()
        axes.set_title(title, loc="left", pad=12)
        depth = column.surface - column.bottom
        row = 0.085 * depth
        water = column.surface if column.phreatic_level is None else column.phreatic_level
        # Above free water there is room for the sign and its words.
        loads_bottom = max(column.surface, water + 0.6 * row)
        top = loads_bottom + row * (len(column.loads) + 0.2)
        bottom = min(column.bottom, water)
        bottom -= 0.03 * (top - bottom)
        axes.set_ylim(bottom, top)
        axes.set_xlim(-0.55, PICTURE_RIGHT)
        line = LINE_OF_TEXT * (top - bottom)
        _draw_layers(axes, column)
        for layer in column.layers:
            _write_layer(axes, layer, column.phreatic_level, line)
        _draw_levels(axes, column, 1.15 * line)
        _draw_loads(axes, column.loads, loads_bottom, row)
        _draw_phreatic_line(axes, column)
        figure.legend(
            handles=_legend(column),
            loc="outside lower center",
            ncols=2,
            title="Soils, with unit weight above / below the phreatic level",
            title_fontproperties={"weight": "bold", "size": 9},
        )


def _draw_layers(axes: Axes, column: SoilColumn) -> None:
    for layer in column.layers:
        axes.add_patch(
            Rectangle(
                (LEFT, layer.bottom), RIGHT - LEFT, layer.top - layer.bottom,
                facecolor=fill_color(layer.color), edgecolor=INK, linewidth=0.9,
            )
        )  # fmt: skip


def _write_layer(axes: Axes, layer: Layer, phreatic_level: float | None, line: float) -> None:
    """Write material and thickness into a layer, on as many lines as it has room for, if any."""
    top, bottom = layer.top, layer.bottom
    if phreatic_level is not None and bottom < phreatic_level < top:
        # The larger part is free of the phreatic line.
        if top - phreatic_level >= phreatic_level - bottom:
            bottom = phreatic_level
        else:
            top = phreatic_level
    thickness = f"{layer.top - layer.bottom:.2f} m"
    room = (top - bottom) / line
    words = f"{layer.material}\n{thickness}" if room > 2.6 else f"{layer.material} ({thickness})"
    if room > 1.2:
        axes.text(
            (LEFT + RIGHT) / 2, (top + bottom) / 2, words,
            color=text_color(layer.color), ha="center", va="center", linespacing=1.4,
        )  # fmt: skip


def _draw_levels(axes: Axes, column: SoilColumn, gap: float) -> None:
    """Write the levels of surface, borders of layers and bottom to the left of the column."""
    levels = [*(layer.top for layer in column.layers), column.bottom]
    for level, place in zip(levels, spread(levels, gap), strict=True):
        axes.plot(
            [LEFT, LEFT - 0.03, LABEL_LEFT + 0.01], [level, level, place], color=INK, linewidth=0.8
        )
        axes.text(LABEL_LEFT, place, metres(level, column.datum), ha="right", va="center")


def _draw_phreatic_line(axes: Axes, column: SoilColumn) -> None:
    """Draw the phreatic line with its sign and level, and the free water above the surface."""
    level = column.phreatic_level
    if level is None:
        return
    if level > column.surface:
        axes.add_patch(
            Rectangle(
                (LEFT, column.surface), RIGHT - LEFT, level - column.surface, facecolor=WATER,
                alpha=0.2, linewidth=0,
            )
        )  # fmt: skip
    axes.plot(
        [LEFT, WATER_RIGHT], [level, level], color=WATER, linewidth=1.4, linestyle=(0, (7, 3)),
        zorder=5,
    )  # fmt: skip
    draw_water_level(axes, (RIGHT + WATER_RIGHT) / 2, level)
    axes.text(
        WATER_RIGHT + 0.03, level, f"phreatic level\n{metres(level, column.datum)}", color=WATER,
        ha="left", va="center",
    )  # fmt: skip


def _draw_loads(axes: Axes, loads: Sequence[LoadStep], bottom: float, row: float) -> None:
    """Draw the loads from a level upwards, one row each, the first lowest."""
    for number, load in enumerate(loads):
        base = bottom + row * number
        draw_uniform_load(axes, LEFT, RIGHT, base, 0.72 * row)
        when = "initial load" if load.time < 0 else f"day {load.time:g}"
        axes.text(
            RIGHT + 0.05, base + 0.36 * row, f"{load.name}: {load.pressure:.1f} kPa, {when}",
            color=LOAD, ha="left", va="center",
        )  # fmt: skip


def _legend(column: SoilColumn) -> list[Patch | Line2D]:
    """Each soil once, in the order from top to bottom, then the signs."""
    soils = {layer.material: layer for layer in column.layers}
    entries: list[Patch | Line2D] = [
        Patch(
            facecolor=fill_color(layer.color), edgecolor=INK, linewidth=0.8,
            label=f"{name}  {layer.unit_weights[0]:.1f} / {layer.unit_weights[1]:.1f} kN/m³",
        )
        for name, layer in soils.items()
    ]  # fmt: skip
    if column.phreatic_level is not None:
        entries.append(
            Line2D([], [], color=WATER, linewidth=1.4, linestyle=(0, (7, 3)), label="Phreatic line")
        )
    if column.loads:
        entries.append(
            Line2D([], [], color=LOAD, linestyle="none", marker=r"$\downarrow$", markersize=9,
                   label="Uniform load")
        )  # fmt: skip
    return entries
