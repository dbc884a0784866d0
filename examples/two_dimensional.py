"""A road is built on soft ground with strip drains: how far does the surface settle, and where?

Below the meadow lie a crust of silty clay, peat and organic clay, on Pleistocene sand in which the
water stands higher than in the meadow. The sand is placed in two stages; a surcharge on top of them
brings settlement forward, and is taken off when the road opens. The surface settles most at the
axis, less at the toes, and hardly any more in the meadow.

Koppejan's method superposes load steps: the creep of the surcharge goes on after its removal, less
the swelling. So it shows less of the benefit of a surcharge than other models would.

Levels are in m NAP (the Dutch datum), times in days. Run it: python examples/two_dimensional.py
"""

from collections.abc import Iterable
from io import BytesIO
from typing import TYPE_CHECKING, Final, NamedTuple

from sembra.core import Color
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    DrainGrid,
    DrainType,
    DSettlementAnalysis,
    Metadata,
    Model2D,
    OutputFileParser,
    VerticalDrain,
)

if TYPE_CHECKING:
    from sembra.external.dsettlement import (
        Layer,
        NonUniformLoad,
        PlLine,
        Point,
        PorePressure,
        Vertical,
    )

Line = list[tuple[float, float]]
"""A line through points of x and level, from left to right."""

LIMITS = (0.0, 80.0)
BOTTOM: Line = [(0.0, -13.0), (80.0, -13.0)]
TOP_OF_SAND: Line = [(0.0, -6.9), (22.0, -7.6), (48.0, -8.6), (80.0, -7.8)]
TOP_OF_ORGANIC_CLAY: Line = [(0.0, -3.3), (35.0, -3.6), (60.0, -4.3), (80.0, -4.1)]
TOP_OF_PEAT: Line = [(0.0, -2.1), (40.0, -2.2), (80.0, -2.5)]
SURFACE: Line = [(0.0, -1.1), (24.0, -1.2), (56.0, -1.3), (80.0, -1.4)]

PHREATIC_LINE: Line = [(0.0, -1.7), (80.0, -1.9)]
HEAD_IN_SAND: Line = [(0.0, -0.7), (80.0, -0.9)]
INTERPOLATED: Final = 99
"""In place of a pl-line: the pore pressure lies between those of the nearest pl-lines."""

VERTICALS = {18.0: "meadow", 24.0: "left toe", 32.0: "left crest", 40.0: "axis", 56.0: "right toe"}

OPENING = 540
CALCULATION_TIMES = (10, 30, 90, 180, 365, OPENING, 1000, 3000, 10000)

MARGIN_ABOVE_PRESENT_STRESS = 2
"""Koppejan's preconsolidation pressure is the present effective stress plus `pop`."""

DRAIN_LEFT, DRAIN_RIGHT, DRAIN_BOTTOM = 25.0, 55.0, -6.6
DRAIN_DISTANCE = 1.2


class Stage(NamedTuple):
    """A part of the embankment: when it comes and, if ever, goes [days], and where its top lies."""

    name: str
    time: int
    removal: int | None
    outline: Line


UNIT_WEIGHT_OF_SAND = (18.0, 20.0)
"""Above and below the phreatic line [kN/m³]."""

STAGES = (
    Stage("Sand, first stage", 0, None, [(24.0, -1.2), (28.0, 0.1), (52.0, 0.1), (56.0, -1.3)]),
    Stage("Sand, second stage", 90, None, [(28.0, 0.1), (32.0, 1.3), (48.0, 1.3), (52.0, 0.1)]),
    Stage("Surcharge", 180, OPENING, [(32.0, 1.3), (34.0, 2.1), (46.0, 2.1), (48.0, 1.3)]),
)
"""Each rests on the surface or on what was placed before it, at points of theirs."""


class Ground(NamedTuple):
    """The lines and layers of the cross-section, the layers from bottom to top."""

    phreatic_line: "PlLine"
    head_in_sand: "PlLine"
    layers: "list[Layer]"


class Project(NamedTuple):
    """The whole model, and what was created in it."""

    model: Model2D
    ground: Ground
    verticals: "list[Vertical]"
    loads: "list[NonUniformLoad]"


def create_model(
    soil_model: CalculationModel = CalculationModel.NEN_KOPPEJAN,
    consolidation: ConsolidationModel = ConsolidationModel.TERZAGHI,
) -> Model2D:
    """Make a model with strip drains under the embankment, which end above the sand."""
    return Model2D(
        soil_model,
        consolidation,
        BOTTOM,
        create_default_materials=False,
        limits=LIMITS,
        verticals_z_coordinate=SURFACE[0][1],
        end_of_settlement_calculation=10000,
        vertical_drain=VerticalDrain(
            DrainType.STRIP, DRAIN_LEFT, DRAIN_RIGHT, DRAIN_BOTTOM, DRAIN_DISTANCE, 0.1,
            thickness=0.003,
            grid=DrainGrid.TRIANGULAR,
            start_of_drainage=0.0,
            phreatic_level_in_drain=-1.8,
        ),
    )  # fmt: skip


def create_materials(model: Model2D) -> None:
    """Create the four soils.

    Below the preconsolidation pressure a soil is stiffer (cp, cs) than above it (cp1, cs1), and it
    swells (ap, asec) as it is compressed there. The sand lets its water go at once. For Isotache
    the same soils have an index of reloading (pri_comp_index), one of virgin compression
    (sec_comp_index) and a rate of creep (sec_comp_rate), of which a doubling of the stress gives
    about the primary and, over four decades of time, the secular strain of Koppejan's constants.
    """
    model.create_material(
        "Clay, silty", 16.5, 16.5, Color(176, 190, 122),
        cp=45, cp1=15, cs=480, cs1=160, ap=45, asec=480, cv=2.0e-7,
        pri_comp_index=0.022, sec_comp_index=0.075, sec_comp_rate=0.0027,
        precon_isotache_type=MARGIN_ABOVE_PRESENT_STRESS,
        precon_koppejan_type=MARGIN_ABOVE_PRESENT_STRESS, pop=15.0,
    )  # fmt: skip
    model.create_material(
        "Peat", 10.8, 10.8, Color(128, 90, 58),
        cp=28, cp1=9, cs=150, cs1=50, ap=28, asec=150, cv=1.0e-7,
        pri_comp_index=0.036, sec_comp_index=0.13, sec_comp_rate=0.0087,
        precon_isotache_type=MARGIN_ABOVE_PRESENT_STRESS,
        precon_koppejan_type=MARGIN_ABOVE_PRESENT_STRESS, pop=8.0,
    )  # fmt: skip
    model.create_material(
        "Clay, organic", 14.2, 14.2, Color(118, 138, 92),
        cp=40, cp1=14, cs=300, cs1=105, ap=40, asec=300, cv=5.0e-8,
        pri_comp_index=0.025, sec_comp_index=0.085, sec_comp_rate=0.0041,
        precon_isotache_type=MARGIN_ABOVE_PRESENT_STRESS,
        precon_koppejan_type=MARGIN_ABOVE_PRESENT_STRESS, pop=10.0,
    )  # fmt: skip
    model.create_material(
        "Sand", 18.0, 20.0, Color(240, 222, 140),
        cp=1500, cp1=600, cs=1e5, cs1=1e5, ap=1500, asec=1e5, cv=1.0e-3, drained=1,
        pri_comp_index=0.0007, sec_comp_index=0.0017, sec_comp_rate=0.0,
    )  # fmt: skip


def create_ground(model: Model2D) -> Ground:
    """Draw the pl-lines, and stack the layers from bottom to top.

    The pore pressure follows the head in the sand up to its top, and the phreatic line down to the
    top of the peat; in between it is interpolated.
    """
    phreatic_line = model.create_pl_line(_points(model, PHREATIC_LINE), is_phreatic=True)
    head_in_sand = model.create_pl_line(_points(model, HEAD_IN_SAND))
    rows: list[tuple[Line, str, PorePressure, PorePressure]] = [
        (TOP_OF_SAND, "Sand", head_in_sand, head_in_sand),
        (TOP_OF_ORGANIC_CLAY, "Clay, organic", INTERPOLATED, head_in_sand),
        (TOP_OF_PEAT, "Peat", phreatic_line, INTERPOLATED),
        (SURFACE, "Clay, silty", phreatic_line, phreatic_line),
    ]
    layers = [
        model.create_layer(_points(model, top), material, head_top, head_bottom)
        for top, material, head_top, head_bottom in rows
    ]
    return Ground(phreatic_line, head_in_sand, layers)


def create_verticals(model: Model2D) -> "list[Vertical]":
    """Say where settlements are wanted, and when."""
    model.set_calculation_times(*CALCULATION_TIMES)
    return [model.create_vertical(x) for x in VERTICALS]


def create_loads(model: Model2D) -> "list[NonUniformLoad]":
    """Build the embankment on the surface, one stage on the other."""
    above, below = UNIT_WEIGHT_OF_SAND
    return [
        model.create_non_uniform_load(
            stage.name,
            stage.outline,
            stage.time,
            end_time=stage.time if stage.removal is None else stage.removal,
            gamma_dry=above,
            gamma_wet=below,
            temporary=stage.removal is not None,
        )
        for stage in STAGES
    ]


def build_project(
    soil_model: CalculationModel = CalculationModel.NEN_KOPPEJAN,
    consolidation: ConsolidationModel = ConsolidationModel.TERZAGHI,
) -> Project:
    """Build the whole model."""
    model = create_model(soil_model, consolidation)
    create_materials(model)
    ground = create_ground(model)
    return Project(model, ground, create_verticals(model), create_loads(model))


def generate_input_file(model: Model2D) -> BytesIO:
    """Have the input file filled in."""
    return model.generate_input_file(
        Metadata(
            file_name="two_dimensional.sli",
            company="Polder Roads",
            title_1="Road embankment with surcharge and strip drains",
            title_2="Two-dimensional, NEN-Koppejan with Terzaghi",
        )
    )


def main() -> None:
    """Print the settlement at each calculation time, one column per vertical."""
    analysis = DSettlementAnalysis(generate_input_file(build_project().model))
    analysis.execute(timeout=60)
    residual = OutputFileParser(analysis.get_sld_file()).residual_times
    print("Settlement [m]")
    print("Time [days]" + "".join(f"{name:>12}" for name in VERTICALS.values()))
    times = residual[1]["Time"]
    for index, time in enumerate(times):
        settlements = (residual[number]["Settlement"][index] for number in sorted(residual))
        print(f"{time:11.0f}" + "".join(f"{settlement:12.3f}" for settlement in settlements))


def _points(model: Model2D, line: Iterable[tuple[float, float]]) -> "list[Point]":
    return [model.create_point(x, level) for x, level in line]


if __name__ == "__main__":
    main()
