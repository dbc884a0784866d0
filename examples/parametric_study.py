"""How far apart may the drains below an embankment stand, so that its road can open after a year?

The answer depends on the height of the embankment, and on a ground whose stiffness nobody knows to
better than a third. So every spacing and height is calculated for a range of stiffnesses: 500
variants, each a model of its own. The one who decides sees a band, not a line.

    python -m examples.parametric_study                   # all 500, rows into study.csv
    python -m examples.parametric_study --quick           # some of them
    python -m examples.parametric_study --picture study.png

A study that was interrupted goes on where it stopped. On a Dask cluster:

    SEMBRA_EXECUTOR=dask://localhost:8786 python -m examples.parametric_study
"""

import argparse
from collections.abc import Iterable, Sequence
from itertools import product
from pathlib import Path
from typing import NamedTuple

from sembra.core import Color
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    DrainGrid,
    DrainType,
    Model1D,
    OutputFileParser,
    VerticalDrain,
)
from sembra.local.study import Row, run_study

STIFFNESSES = (0.67, 0.8, 1.0, 1.2, 1.33)
HEIGHTS = (1.5, 2.0, 2.5, 3.0, 3.5, 4.0, 4.5, 5.0, 5.5, 6.0)
SPACINGS = (0.8, 1.0, 1.2, 1.4, 1.6, 1.8, 2.0, 2.2, 2.6, 3.0)

OPENING = 365
END = 10000
ALLOWED = 0.25
"""How much the road may settle after its opening [m]."""

COLUMNS = (
    "final settlement [m]",
    "settlement at opening [m]",
    "residual settlement at opening [m]",
)


class Variant(NamedTuple):
    """A variant: factor on the stiffness of the ground, height of the sand [m], spacing [m]."""

    stiffness: float
    height: float
    spacing: float


class Spread(NamedTuple):
    """Least, middle and greatest value over the stiffnesses [m]."""

    least: float
    middle: float
    greatest: float


def variants(*, quick: bool = False) -> list[Variant]:
    """Return all variants, or some of them."""
    heights, spacings = (HEIGHTS[1::5], SPACINGS[::3]) if quick else (HEIGHTS, SPACINGS)
    return [Variant(*values) for values in product(STIFFNESSES, heights, spacings)]


def build_model(variant: Variant) -> Model1D:
    """Build a column of peat and clay with drains, under the sand of an embankment."""
    drain = VerticalDrain(
        DrainType.STRIP, 0.0, 100.0, -8.0, variant.spacing, 0.1,
        thickness=0.003, grid=DrainGrid.TRIANGULAR,
        start_of_drainage=0.0, phreatic_level_in_drain=-0.5,
    )  # fmt: skip
    model = Model1D(
        CalculationModel.NEN_KOPPEJAN,
        ConsolidationModel.TERZAGHI,
        create_default_materials=False,
        end_of_settlement_calculation=END,
        vertical_drain=drain,
    )
    factor = variant.stiffness
    model.create_material(
        "Peat", 10.5, 10.5, Color(110, 80, 50), cp=30 * factor, cp1=10 * factor,
        cs=320 * factor, cs1=90 * factor, cv=3e-8, precon_koppejan_type=2, pop=8.0,
    )  # fmt: skip
    model.create_material(
        "Clay", 15.0, 15.0, Color(120, 150, 120), cp=48 * factor, cp1=16 * factor,
        cs=800 * factor, cs1=260 * factor, cv=5e-8, precon_koppejan_type=2, pop=12.0,
    )  # fmt: skip
    model.create_material(
        "Sand", 18.0, 20.0, Color(230, 200, 120), cp=1000, cp1=500, cs=1e6, cs1=1e6, drained=1,
        precon_koppejan_type=2, pop=0.0,
    )  # fmt: skip
    model.update_geometry(
        -10.0, [(0.0, "Peat"), (-2.5, "Clay"), (-8.0, "Sand")], phreatic_level=-0.5
    )
    model.create_uniform_load("Embankment", 0, 18.0, variant.height, 0.0)
    model.set_calculation_times(OPENING, END)
    return model


def read_results(results: OutputFileParser) -> list[float]:
    """Return the values for the columns [m]."""
    residual = results.residual_times[1]
    at_opening, final = residual["Settlement"]
    return [final, at_opening, residual["Residual settlement"][0]]


def calculate(some: Iterable[Variant], table: Path) -> list[Row[Variant]]:
    """Calculate variants; write their rows to a table as they come."""
    return run_study(some, build_model, COLUMNS, read_results, table)


def spreads(rows: Sequence[Row[Variant]], column: str) -> dict[tuple[float, float], Spread]:
    """Return the spread of a column over the stiffnesses, by height and spacing."""
    index = COLUMNS.index(column)
    values: dict[tuple[float, float], list[float]] = {}
    for row in rows:
        if row.values is not None:
            place = (row.variant.height, row.variant.spacing)
            values.setdefault(place, []).append(float(row.values[index] or 0.0))
    return {
        place: Spread(min(some), sorted(some)[len(some) // 2], max(some))
        for place, some in values.items()
    }


def widest_spacing(rows: Sequence[Row[Variant]], height: float) -> float | None:
    """Return the widest spacing that keeps to what is allowed, whatever the stiffness [m]."""
    residual = spreads(rows, COLUMNS[2])
    fitting = [at for of, at in residual if of == height]
    fitting = [at for at in fitting if residual[height, at].greatest <= ALLOWED]
    return max(fitting, default=None)


def main() -> None:
    """Calculate the study, print its table, and draw its picture if asked to."""
    parser = argparse.ArgumentParser(description=(__doc__ or "").splitlines()[0])
    parser.add_argument("--quick", action="store_true", help="some of the variants only")
    parser.add_argument("--table", type=Path, default=Path("study.csv"), help="the rows, as CSV")
    parser.add_argument("--picture", type=Path, help="the spread, as PNG")
    options = parser.parse_args()
    rows = calculate(variants(quick=options.quick), options.table)
    print(f"{len(rows)} variants in {options.table}")
    for row in rows:
        if row.error is not None:
            print(f"failed: {row.variant}: {row.error}")
    print(f"Residual settlement [m] after opening on day {OPENING}, least to greatest")
    residual = spreads(rows, COLUMNS[2])
    heights = sorted({height for height, _ in residual})
    spacings = sorted({spacing for _, spacing in residual})
    print("Sand [m]" + "".join(f"  drains {at:3.1f} m" for at in spacings) + "  widest")
    for height in heights:
        cells = [residual.get((height, at)) for at in spacings]
        widest = widest_spacing(rows, height)
        print(
            f"{height:8.1f}"
            + "".join(f"    {c.least:.2f}-{c.greatest:.2f}" if c else " " * 13 for c in cells)
            + (f"  {widest:4.1f} m" if widest else "    none")
        )
    if options.picture:
        from examples.showcase.spread_picture import draw_spread

        draw_spread(options.picture, rows)
        print(f"Picture: {options.picture}")


if __name__ == "__main__":
    main()
