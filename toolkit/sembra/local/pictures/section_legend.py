"""The legends below a cross-section: soils, loads, and lines."""

from typing import Literal

from matplotlib.artist import Artist
from matplotlib.axes import Axes
from matplotlib.figure import Figure
from matplotlib.lines import Line2D
from matplotlib.patches import Patch

from sembra.local.pictures.cross_section import CrossSection, Embankment
from sembra.local.pictures.section_style import (
    MANY_DRAINS,
    PHREATIC,
    VERTICAL,
    load_style,
    pl_line_style,
)
from sembra.local.pictures.style import INK, fill_color

Place = Literal["outside lower left", "outside lower center", "outside lower right"]

LINE_OF_LEGEND = 0.19
"""Height of an entry, in inches."""

LENGTH_OF_HANDLE = 3.6
"""Length of a line in front of its entry, in heights of letters: two of its longest dashes."""


def draw_legends(figure: Figure, section: CrossSection) -> float:
    """Draw the legends side by side along the lower edge.

    Returns the height that they need, in inches.
    """
    weights = "unit weight above / below water [kN/m³]"
    legends: tuple[tuple[Place, str, list[Artist]], ...] = (
        ("outside lower left", f"Soils, {weights}", _soils(section)),
        ("outside lower center", f"Loads, {weights}", _loads(section)),
        ("outside lower right", _title_of_lines(section), _lines(section)),
    )
    longest = max(len(entries) for _, _, entries in legends)
    for place, title, entries in legends:
        if entries:
            blank = [Line2D([], [], linestyle="none", label=" ")] * (longest - len(entries))
            figure.legend(
                handles=[*entries, *blank],
                loc=place,
                title=title,
                alignment="left",
                handlelength=LENGTH_OF_HANDLE,
                fontsize=8.5,
                title_fontproperties={"weight": "bold", "size": 8.5},
            )
    return LINE_OF_LEGEND * (2 + longest)


def draw_one_legend(axes: Axes, section: CrossSection) -> None:
    """Draw a legend of everything below axes that others own."""
    entries = [*_soils(section), *_loads(section), *_lines(section)]
    axes.legend(
        handles=entries, loc="upper center", bbox_to_anchor=(0.5, -0.14), ncols=3,
        handlelength=LENGTH_OF_HANDLE, fontsize=8.5,
    )  # fmt: skip


def told_times(load: Embankment) -> str:
    """Return in words when a load is there."""
    start = "initial" if load.time < 0 else f"day {load.time:g}"
    return start if load.removal is None else f"{start} to {load.removal:g}"


def _soils(section: CrossSection) -> list[Artist]:
    """Return each soil once, in the order from top to bottom."""
    soils = {layer.material: layer for layer in reversed(section.layers)}
    return [
        Patch(
            facecolor=fill_color(layer.color), edgecolor=INK, linewidth=0.8,
            label=f"{name}  {_weights(layer.unit_weights)}",
        )
        for name, layer in soils.items()
    ]  # fmt: skip


def _loads(section: CrossSection) -> list[Artist]:
    return [
        Patch(
            label=f"{index + 1}: {load.name}, {told_times(load)}  {_weights(load.unit_weights)}",
            **load_style(section.loads, index),
        )
        for index, load in enumerate(section.loads)
    ]


def _lines(section: CrossSection) -> list[Artist]:
    entries: list[Artist] = []
    if section.phreatic_line:
        entries.append(Line2D([], [], label="Phreatic line", **PHREATIC))
    for index, label in enumerate(section.pl_lines):
        entries.append(Line2D([], [], label=label, **pl_line_style(index)))
    if section.drains is not None:
        entries.append(Patch(label=section.drains.label, **MANY_DRAINS))
    if section.verticals:
        entries.append(Line2D([], [], label="Vertical", **VERTICAL))
    return entries


def _title_of_lines(section: CrossSection) -> str:
    drains = ["drains"] if section.drains is not None else []
    return ", ".join(["Water", *drains, *(["verticals"] if section.verticals else [])])


def _weights(weights: tuple[float, float]) -> str:
    return f"{weights[0]:.1f} / {weights[1]:.1f}"
