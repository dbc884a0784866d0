"""The picture of a parametric study: what a drain spacing comes to, and how sure that is."""

# matplotlib says nothing of the types of its keyword arguments.
# pyright: reportUnknownMemberType=false

from collections.abc import Sequence
from pathlib import Path

from matplotlib.axes import Axes
from sembra.local.pictures.style import LOAD, curve_style, draw_grid, look, new_figure, save
from sembra.local.study import Row

from examples import parametric_study as study

MOST_BANDS = 4


def draw_spread(path: Path, rows: Sequence[Row[study.Variant]]) -> None:
    """Draw settlement and residual settlement at the opening against the spacing of the drains.

    path: the file to write.
    rows: the rows of the study; those that failed are left out.
    """
    with look():
        figure = new_figure(10.0, 4.6)
        settlement, residual = figure.subplots(1, 2, sharex=True)
        _draw_bands(settlement, rows, study.COLUMNS[1])
        settlement.set_title(f"Settlement on day {study.OPENING}", loc="left", pad=12)
        settlement.set_ylabel("Settlement [m]")
        settlement.invert_yaxis()
        _draw_bands(residual, rows, study.COLUMNS[2])
        residual.set_title("Residual settlement after the opening", loc="left", pad=12)
        residual.set_ylabel("Residual settlement [m]")
        residual.set_ylim(bottom=0.0)
        residual.axhline(study.ALLOWED, color=LOAD, linewidth=1.2, linestyle="--")
        residual.annotate(
            f"allowed: {study.ALLOWED:.2f} m", (0.01, study.ALLOWED), color=LOAD,
            xycoords=residual.get_yaxis_transform(), ha="left", va="bottom",
        )  # fmt: skip
        settlement.legend(
            title="Sand; bands: all stiffnesses,\nlines: their middle", loc="lower right", ncols=2
        )
        save(settlement, path)


def _draw_bands(axes: Axes, rows: Sequence[Row[study.Variant]], column: str) -> None:
    """Draw a band from the least to the greatest value per height, and a line in its middle."""
    spreads = study.spreads(rows, column)
    heights = sorted({height for height, _ in spreads})
    # Of many heights some are drawn, the least and the greatest among them.
    step = max(1, -(-(len(heights) - 1) // (MOST_BANDS - 1)))
    shown = [*heights[:-1:step], heights[-1]] if heights else []
    for index, height in enumerate(shown):
        color, line = curve_style(index)
        spacings = sorted(at for of, at in spreads if of == height)
        bands = [spreads[height, at] for at in spacings]
        axes.fill_between(
            spacings,
            [band.least for band in bands],
            [band.greatest for band in bands],
            color=color,
            alpha=0.18,
            linewidth=0,
        )
        axes.plot(
            spacings,
            [band.middle for band in bands],
            color=color,
            linestyle=line,
            marker="o",
            markersize=3,
            label=f"{height:.1f} m",
        )
    axes.set_xlabel("Spacing of the drains [m]")
    draw_grid(axes)
