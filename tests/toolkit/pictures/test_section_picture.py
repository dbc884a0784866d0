"""Pictures of cross-sections that are harder than the story's."""

from collections.abc import Sequence
from dataclasses import replace
from itertools import combinations, pairwise

import numpy as np
import pytest
from sembra.core import Color

pytest.importorskip("matplotlib", reason="the pictures need matplotlib (dependency group demo)")

import matplotlib.pyplot as plt
from matplotlib.collections import LineCollection
from matplotlib.figure import Figure
from matplotlib.text import Text
from sembra.local.pictures.cross_section import (
    CrossSection,
    DrainBand,
    Embankment,
    Layer,
    Line,
)
from sembra.local.pictures.section import draw_alone
from sembra.local.pictures.style import figure_of, look

COLORS = (Color(240, 222, 140), Color(118, 138, 92), Color(128, 90, 58))


def layers(*lines: Line) -> list[Layer]:
    """Layers between lines, from bottom to top."""
    return [
        Layer(top, bottom, f"Soil {index}", COLORS[index], (15.0, 16.0))
        for index, (bottom, top) in enumerate(pairwise(lines))
    ]


CANAL = CrossSection(
    layers(
        [(-250, -20), (-150, -20)],
        [(-250, -10), (-200, -10), (-200, -14), (-150, -14)],
        [(-250, -9.95), (-200, -9.95), (-200, -13.95), (-150, -13.95)],
        [(-250, -2), (-215, -2), (-210, -6), (-190, -6), (-185, -2), (-150, -2)],
    ),
    phreatic_line=[(-250, -3), (-150, -3)],
    pl_lines={},
    verticals=[-250 + 2.5 * number for number in range(41)],
    loads=[
        Embankment("Yard", [(-250, -2), (-250, 1), (-220, 1), (-215, -2)], -1, None, (18, 20)),
        Embankment("Dam", [(-210, -6), (-200, -1), (-190, -6)], 10, 200, (18, 20)),
    ],
)
COLUMN = CrossSection(layers([(0, -20), (5, -20)], [(0, 0), (5, 0)]), [(0, -1), (5, -1)], {}, [])
LONG = CrossSection(
    layers([(0, -4), (2000, -5)], [(0, 0), (300, 0), (1500, 1), (2000, 1)]),
    phreatic_line=[(0, -1), (2000, -0.5)],
    pl_lines={f"Pl-line {number}": [(0, -number), (2000, -number)] for number in range(2, 6)},
    verticals=[0, 1000, 1010, 1020, 2000],
    loads=[
        Embankment(
            f"Raise {number}",
            [(300, 0), (400, 1.5 + number / 2), (1400, 1.5 + number / 2), (1500, 1)],
            30 * number, None, (18, 20),
        )
        for number in range(8)
    ],
    drains=DrainBand("Sand walls", 0, 2000, -3, 2.5),
)  # fmt: skip
SECTIONS = pytest.mark.parametrize(
    "section", [CANAL, COLUMN, LONG], ids=["canal", "column", "long"]
)


def figure_with(section: CrossSection) -> Figure:
    """Return the figure of a cross-section."""
    with look():
        figure = figure_of(draw_alone(section, "A section"))
        figure.draw_without_rendering()
    plt.close(figure)
    return figure


def texts(figure: Figure) -> list[Text]:
    """All texts that can be seen; ticks beyond the ends of an axis aren't drawn."""
    (axes,) = figure.axes
    hidden: set[Text] = set()
    for axis in (axes.xaxis, axes.yaxis):
        low, high = axis.get_view_interval()
        for tick in [*axis.get_major_ticks(), *axis.get_minor_ticks()]:
            if not low <= tick.get_loc() <= high:
                hidden |= {tick.label1, tick.label2}
    found: Sequence[Text] = figure.findobj(Text)
    return [
        text
        for text in found
        if text not in hidden and text.get_visible() and text.get_text().strip()
    ]


@SECTIONS
def test_no_text_covers_another_or_leaves_the_picture(
    section: CrossSection,
) -> None:
    figure = figure_with(section)
    # Of an annotation, its words without its line.
    extents = [(text.get_text(), Text.get_window_extent(text)) for text in texts(figure)]
    for text, box in extents:
        assert figure.bbox.x0 <= box.x0 < box.x1 <= figure.bbox.x1, text
        assert figure.bbox.y0 <= box.y0 < box.y1 <= figure.bbox.y1, text
    for (one, box), (other, other_box) in combinations(extents, 2):
        assert not box.overlaps(other_box), (one, other)


def drawn_drains(section: CrossSection) -> list[float]:
    """Return the x of each drain that is drawn by itself."""
    (axes,) = figure_with(section).axes
    return [
        float(np.asarray(path.vertices)[0, 0])
        for lines in axes.findobj(LineCollection)
        for path in lines.get_paths()
    ]


def test_drains_stand_where_they_are_unless_they_are_too_close() -> None:
    apart = replace(LONG, drains=DrainBand("Columns", 100, 1900, -3, 600.0))
    assert drawn_drains(apart) == [100, 700, 1300, 1900]
    assert drawn_drains(LONG) == []


@SECTIONS
def test_left_and_right_are_treated_alike(
    section: CrossSection,
) -> None:
    figure = figure_with(section)
    low, high = figure.axes[0].get_xlim()
    left, right = section.limits
    assert left - low == pytest.approx(high - right)
    assert left - low > 0


@SECTIONS
def test_the_exaggeration_that_is_told_is_that_of_the_picture(
    section: CrossSection,
) -> None:
    figure = figure_with(section)
    (axes,) = figure.axes
    (x0, y0), (x1, y1) = axes.transData.transform([(0, 0), (1, 1)])
    drawn = (y1 - y0) / (x1 - x0)
    told = "same scale" if drawn == pytest.approx(1) else f"{drawn:.4g} times"
    assert told in axes.get_xlabel()


def test_of_many_verticals_some_are_labelled_and_all_are_drawn() -> None:
    figure = figure_with(CANAL)
    labels = [text.get_text() for text in texts(figure) if "x = " in text.get_text()]
    assert labels[0] == "1\nx = \N{MINUS SIGN}250 m"
    assert 5 <= len(labels) < len(CANAL.verticals)
    drawn = [list(np.asarray(line.get_xdata())) for line in figure.axes[0].lines]
    assert all([x, x] in drawn for x in CANAL.verticals)


def test_the_legend_names_each_soil_load_and_line() -> None:
    figure = figure_with(LONG)
    told = {text.get_text() for text in texts(figure)}
    assert "Soil 0  15.0 / 16.0" in told
    assert {f"Pl-line {number}" for number in range(2, 6)} <= told
    assert {"Phreatic line", "Sand walls", "Vertical"} <= told
    assert "8: Raise 7, day 210  18.0 / 20.0" in told


def test_a_load_of_one_point_has_nothing_to_draw() -> None:
    point = Embankment("Point", [(1, 0)], 0, None, (18, 20))
    (axes,) = figure_with(replace(COLUMN, loads=[point])).axes
    (plain,) = figure_with(COLUMN).axes
    assert len(axes.patches) == len(plain.patches)
