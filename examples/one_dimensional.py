"""An old road in the polder is raised with sand, in stages: how far does the soft ground settle?

The ground is a crust of silty clay, peat and organic clay on Pleistocene sand. The sand of the
first stage is placed on day 0, that of the second on day 150, and the pavement on day 730, when
the road opens. What settles after that day is the residual settlement that the road has to bear.

Levels are in m NAP (the Dutch datum), times in days. Run it: python examples/one_dimensional.py
"""

from io import BytesIO
from typing import NamedTuple

from sembra.core import Color
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    DSettlementAnalysis,
    Metadata,
    Model1D,
    OutputFileParser,
)

SURFACE = -1.40
PHREATIC_LEVEL = -1.90
BOTTOM = -9.00
LAYERS = [(SURFACE, "Clay, silty"), (-2.30, "Peat"), (-4.10, "Clay, organic"), (-6.20, "Sand")]

INITIAL = -1
"""The time of a load that has been there for so long that the ground has settled under it."""

OPENING = 730
CALCULATION_TIMES = (1, 10, 30, 100, 150, 365, OPENING, 1000, 2000, 5000, 10000)

MARGIN_ABOVE_PRESENT_STRESS = 2
"""Koppejan's preconsolidation pressure is the present effective stress plus `pop`."""


class Load(NamedTuple):
    """A load on the whole surface: time [days], unit weight [kN/m³] and height [m]."""

    name: str
    time: int
    unit_weight: float
    height: float

    @property
    def pressure(self) -> float:
        """Stress that the load brings to the surface [kPa]."""
        return self.unit_weight * self.height


LOADS = (
    Load("Existing road", INITIAL, 19.0, 0.25),
    Load("Sand, first stage", 0, 18.0, 1.00),
    Load("Sand, second stage", 150, 18.0, 0.70),
    Load("Pavement", OPENING, 22.0, 0.30),
)


def create_model() -> Model1D:
    """Make a model without the default materials: all soil here comes from the site."""
    return Model1D(
        CalculationModel.NEN_KOPPEJAN,
        ConsolidationModel.TERZAGHI,
        create_default_materials=False,
        verticals_z_coordinate=SURFACE,
        end_of_settlement_calculation=10000,
    )


def create_materials(model: Model1D) -> None:
    """Create the four soils.

    Below the preconsolidation pressure a soil is stiffer (cp, cs) than above it (cp1, cs1), and it
    swells (ap, asec) as it is compressed there. The sand lets its water go at once.
    """
    model.create_material(
        "Clay, silty", 16.5, 16.5, Color(176, 190, 122),
        cp=45, cp1=15, cs=480, cs1=160, ap=45, asec=480, cv=2.0e-7,
        precon_koppejan_type=MARGIN_ABOVE_PRESENT_STRESS, pop=15.0,
    )  # fmt: skip
    model.create_material(
        "Peat", 10.8, 10.8, Color(128, 90, 58),
        cp=25, cp1=7, cs=125, cs1=35, ap=25, asec=125, cv=1.5e-7,
        precon_koppejan_type=MARGIN_ABOVE_PRESENT_STRESS, pop=8.0,
    )  # fmt: skip
    model.create_material(
        "Clay, organic", 14.2, 14.2, Color(118, 138, 92),
        cp=32, cp1=10, cs=190, cs1=60, ap=32, asec=190, cv=1.0e-7,
        precon_koppejan_type=MARGIN_ABOVE_PRESENT_STRESS, pop=10.0,
    )  # fmt: skip
    model.create_material(
        "Sand", 18.0, 20.0, Color(240, 222, 140),
        cp=1500, cp1=600, cs=1e5, cs1=1e5, ap=1500, asec=1e5, cv=1.0e-3, drained=1,
    )  # fmt: skip


def create_ground(model: Model1D) -> None:
    """Put the layers under the road, from top to bottom."""
    model.update_geometry(BOTTOM, LAYERS, phreatic_level=PHREATIC_LEVEL)


def create_loads(model: Model1D) -> None:
    """Put the loads on the surface, and say when settlements are wanted."""
    for load in LOADS:
        model.create_uniform_load(load.name, load.time, load.unit_weight, load.height, SURFACE)
    model.set_calculation_times(*CALCULATION_TIMES)


def build_model() -> Model1D:
    """Build the whole model."""
    model = create_model()
    create_materials(model)
    create_ground(model)
    create_loads(model)
    return model


def generate_input_file(model: Model1D) -> BytesIO:
    """Have the input file filled in."""
    return model.generate_input_file(
        Metadata(
            file_name="one_dimensional.sli",
            company="Polder Roads",
            title_1="Raising of an old polder road",
            title_2="One-dimensional, NEN-Koppejan with Terzaghi",
        )
    )


def main() -> None:
    """Print settlement and residual settlement at each calculation time."""
    analysis = DSettlementAnalysis(generate_input_file(build_model()))
    analysis.execute(timeout=60)
    residual = OutputFileParser(analysis.get_sld_file()).residual_times[1]
    print("Time [days]  Settlement [m]  Residual settlement [m]")
    for time, settlement, rest in zip(
        residual["Time"], residual["Settlement"], residual["Residual settlement"], strict=True
    ):
        print(f"{time:11.0f}  {settlement:14.3f}  {rest:23.3f}")


if __name__ == "__main__":
    main()
