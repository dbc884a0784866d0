"""The soil column: layers, levels, phreatic line and loads."""

from collections.abc import Iterable, Mapping, Sequence
from dataclasses import dataclass
from typing import Any

from matplotlib.axes import Axes
from matplotlib.lines import Line2D
from matplotlib.patches import Patch, Rectangle
from sembra.external.dsettlement import Model1D

from sembra.core import Color
from sembra.local.pictures.load_step import LoadStep
from sembra.local.pictures.spreading import spread
from sembra.local.pictures.style import (
    INK,
    LOAD,
    WATER,
    figure_of,
    fill_color,
    look,
    metres,
    new_figure,
    text_color,
)
from sembra.local.pictures.symbols import draw_uniform_load, draw_water_level, told_load

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


def soil_column(
    model: Model1D, axes: Axes | None = None, *, title: str = "Soil column", datum: str = ""
) -> Axes:
    """Draw the soil column of a one-dimensional model.

    Layers with their materials, thicknesses and levels, the phreatic level, and the uniform loads
    in the order of their creation. Across, the picture has no scale.

    Args:
        model: The model, finished or not.
        axes: Where to draw; a new figure if None.
        title: Stands above the picture.
        datum: What the levels count from, such as "NAP"; stands in front of them.

    Returns:
        The axes.

    Raises:
        TypeError: The model is no Model1D.
        KeyError: A layer is of a material that the model doesn't have any more.
    """
    if not isinstance(model, Model1D):
        raise TypeError("soil_column draws a Model1D; cross_section draws a Model2D")
    with look():
        is_new = axes is None
        axes = new_figure(8.0, 7.5).add_subplot() if axes is None else axes
        draw_column(axes, column_of(model, datum), title, legend_beside=is_new)
        return axes


def column_of(model: Model1D, datum: str) -> SoilColumn:
    """Return what stands in the picture of a model."""
    tops = [top for top, _ in model.layers]
    materials = model.materials
    layers: list[Layer] = []
    for (top, name), bottom in zip(model.layers, [*tops[1:], model.bottom_level], strict=True):
        soil = materials[name]
        layers.append(Layer(top, bottom, name, soil.color, (soil.gam_dry, soil.gam_wet)))
    loads = uniform_loads(model._serialize()["other_loads"])
    return SoilColumn(layers, model.phreatic_level, loads, datum)


def uniform_loads(loads: Iterable[Mapping[str, Any]]) -> list[LoadStep]:
    """Return the uniform loads of a model's document."""
    return [
        LoadStep(load["name"], load["time"], load["unit_weight"] * load["height"]) for load in loads
    ]


def draw_column(axes: Axes, column: SoilColumn, title: str, *, legend_beside: bool) -> None:
    """Draw a soil column.

    axes: where to draw.
    column: what to draw.
    title: stands above it.
    legend_beside: whether the figure has room for the legend outside the axes.
    """
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
    legend: dict[str, Any] = {
        "handles": _legend(column),
        "ncols": 2,
        "title": "Soils, with unit weight above / below the phreatic level",
        "title_fontproperties": {"weight": "bold", "size": 9},
    }
    if legend_beside:
        figure_of(axes).legend(loc="outside lower center", **legend)
    else:
        axes.legend(loc="upper center", bbox_to_anchor=(0.5, 0.0), **legend)


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
        axes.text(
            RIGHT + 0.05, base + 0.36 * row, told_load(load), color=LOAD, ha="left", va="center"
        )


def _legend(column: SoilColumn) -> list[Patch | Line2D]:
    """Return each soil once, in the order from top to bottom, then the signs."""
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
