"""How much sand does a yard on soft clay need, and how long must it lie before the yard opens?

Every height of sand is a model of its own. One calculation gives the residual settlement for all
opening days: it is what is still to come after that day, up to day 10000.

Run it: python examples/parametric_study.py
"""

from typing import NamedTuple

from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    DSettlementAnalysis,
    Model1D,
    OutputFileParser,
)

SURFACE = 0.0
HEIGHTS = (0.5, 1.0, 1.5, 2.0, 2.5)
OPENINGS = (180, 365, 730)
END = 10000


class Outcome(NamedTuple):
    """What a height of sand [m] comes to: all in metres, residual settlements per opening."""

    height: float
    final: float
    residual: list[float]

    @property
    def rise(self) -> float:
        """How far the surface stands above the old one in the end."""
        return self.height - self.final


def build_model(height: float) -> Model1D:
    """Build a column of clay and peat under sand of a height [m]."""
    model = Model1D(
        CalculationModel.NEN_KOPPEJAN,
        ConsolidationModel.TERZAGHI,
        create_default_materials=False,
        end_of_settlement_calculation=END,
    )
    model.create_material(
        "Clay", 15.0, 15.0, cp=36, cp1=12, cs=300, cs1=100, cv=1.5e-7,
        precon_koppejan_type=2, pop=12.0,
    )  # fmt: skip
    model.create_material(
        "Peat", 10.5, 10.5, cp=24, cp1=7, cs=120, cs1=34, cv=1.5e-7,
        precon_koppejan_type=2, pop=8.0,
    )  # fmt: skip
    model.update_geometry(-4.0, [(SURFACE, "Clay"), (-2.5, "Peat")], phreatic_level=-0.8)
    model.create_uniform_load("Sand", 0, 18.0, height, SURFACE)
    model.set_calculation_times(*OPENINGS, END)
    return model


def calculate(height: float) -> Outcome:
    """Calculate one height of sand [m]."""
    analysis = DSettlementAnalysis(build_model(height).generate_input_file())
    analysis.execute(timeout=60)
    result = OutputFileParser(analysis.get_sld_file()).residual_times[1]
    *residual, _ = result["Residual settlement"]
    return Outcome(height, result["Settlement"][-1], residual)


def main() -> None:
    """Print one row per height of sand."""
    print("Residual settlement [m] by height of sand and day of opening")
    print("Sand [m]  Final [m]  Rise [m]" + "".join(f"   Day {day:>4}" for day in OPENINGS))
    for outcome in map(calculate, HEIGHTS):
        residual = "".join(f"{settlement:11.3f}" for settlement in outcome.residual)
        print(f"{outcome.height:8.1f}{outcome.final:11.3f}{outcome.rise:10.3f}{residual}")


if __name__ == "__main__":
    main()
