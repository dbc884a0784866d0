"""The story of the parametric study, with some of its variants."""

from pathlib import Path

from rich.table import Table

from examples import parametric_study as study
from examples.showcase.spread_picture import draw_spread
from examples.showcase.terminal import Terminal

NAME = "parametric_study"


def tell(terminal: Terminal, folder: Path) -> None:
    """Tell the story, and write its table and picture to a folder that is there."""
    terminal.title("A parametric study: how far apart may the drains stand?")
    path, image = folder / f"{NAME}.csv", folder / f"{NAME}_spread.png"
    path.unlink(missing_ok=True)  # the demo tells it from the start
    variants = study.variants(quick=True)
    with terminal.step("Calculate the variants side by side"):
        rows = study.calculate(variants, path)
        failed = sum(row.error is not None for row in rows)
        terminal.line(
            f"{len(rows)} of the study's {len(study.variants())} variants, {failed} failed"
        )
        terminal.line(f"Table: {path}")
    with terminal.step(f"Residual settlement after the opening on day {study.OPENING}"):
        terminal.table(_table(study.spreads(rows, study.COLUMNS[2])))
        for height in sorted({variant.height for variant in variants}):
            widest = study.widest_spacing(rows, height)
            terminal.line(
                f"{height:.1f} m of sand, at most {study.ALLOWED:.2f} m: "
                + (f"drains up to {widest:.1f} m apart" if widest else "no spacing is enough")
            )
    with terminal.step("Draw the picture"):
        draw_spread(image, rows)
        terminal.line(f"Spread: {image}")


def _table(spreads: dict[tuple[float, float], study.Spread]) -> Table:
    table = Table(title="Least to greatest over the stiffnesses [m]", title_justify="left")
    table.add_column("sand [m]", justify="right")
    spacings = sorted({spacing for _, spacing in spreads})
    for spacing in spacings:
        table.add_column(f"drains {spacing:.1f} m", justify="right")
    for height in sorted({height for height, _ in spreads}):
        cells = [spreads.get((height, spacing)) for spacing in spacings]
        table.add_row(
            f"{height:.1f}",
            *(f"{cell.least:.2f} to {cell.greatest:.2f}" if cell else "" for cell in cells),
        )
    return table
