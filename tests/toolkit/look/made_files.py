"""Files made here for the tests of the pages: a column, and an embankment beside a ditch."""

from pathlib import Path

from sembra.core import Color
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    DrainGrid,
    DrainType,
    Metadata,
    Model1D,
    Model2D,
    VerticalDrain,
)

from tests.toolkit.worker.input_file import calculated

CLAY = {"cp": 30.0, "cp1": 10.0, "cs": 300.0, "cs1": 100.0, "cv": 1e-7, "color": Color(90, 60, 30)}


def column() -> Model1D:
    """Return a column of two layers under a load."""
    model = Model1D(CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI)
    model.create_material("<Clay & silt>", 14.0, 15.0, **CLAY)  # type: ignore[arg-type]
    model.create_material("Sand layer", 18.0, 20.0, cp=500, cp1=200, cs=5000, cs1=2000, drained=1)
    model.update_geometry(-6.0, [(0.0, "<Clay & silt>"), (-4.0, "Sand layer")], phreatic_level=-1.0)
    model.create_uniform_load("Fill", 0, 18.0, 1.5, 0.0)
    model.set_calculation_times(10, 100, 1000)
    return model


def cross_section() -> Model2D:
    """Return an embankment with drains, in two stages."""
    drain = VerticalDrain(
        DrainType.STRIP, 20.0, 80.0, -6.0, 1.5, 0.1, thickness=0.005, grid=DrainGrid.TRIANGULAR,
        start_of_drainage=0.0, phreatic_level_in_drain=-1.0,
    )  # fmt: skip
    model = Model2D(
        CalculationModel.NEN_KOPPEJAN,
        ConsolidationModel.TERZAGHI,
        [(0.0, -8.0), (100.0, -8.0)],
        vertical_drain=drain,
    )
    model.create_material("Soft", 14.0, 15.0, **CLAY)  # type: ignore[arg-type]
    points = [model.create_point(x, -1.0) for x in (0.0, 100.0)]
    water = model.create_pl_line(points, is_phreatic=True)
    surface = [(0.0, 0.0), (20.0, 0.0), (80.0, 0.0), (100.0, 0.0)]
    model.create_layer([model.create_point(x, y) for x, y in surface], "Soft", water, water)
    for x in (10.0, 50.0):
        model.create_vertical(x)
    model.create_non_uniform_load(
        "First lift", [(20.0, 0.0), (30.0, 2.0), (70.0, 2.0), (80.0, 0.0)], 0, 0, 18.0, 20.0
    )
    model.create_non_uniform_load(
        "Second lift", [(30.0, 2.0), (35.0, 3.0), (65.0, 3.0), (70.0, 2.0)], 50, 50, 18.0, 20.0
    )
    model.set_calculation_times(100, 1000)
    return model


def write_pair(folder: Path, model: Model1D | Model2D) -> tuple[Path, Path]:
    """Write the input file and the result file of a model.

    Returns:
        Where they stand.
    """
    metadata = Metadata(file_name="made.sli", company="Soil & Sons", title_1="A <made> file")
    dissipation = model.verticals[0]
    data = model.generate_input_file(metadata, dissipation_calculation=dissipation).getvalue()
    paths = folder / "made.sli", folder / "made.sld"
    paths[0].write_bytes(data)
    paths[1].write_text(calculated(data), "utf-8")
    return paths
