"""Creating materials, against the plain Python way."""

from sembra.core import Color
from sembra.external.dsettlement import CalculationModel, ConsolidationModel, Model1D

from benchmarks.plain import materials as plain
from benchmarks.side_by_side import Row, compare

MODELS = 20
NAMES = [f"material {index}" for index in range(100)]


def create(model: Model1D | plain.Model, color: Color) -> None:
    for name in NAMES:
        model.create_material(name, 17.0, 19.0, color, cp=25.0, cs=320.0, cv=1e-7)


def rows() -> list[Row]:
    color = Color(1, 2, 3)

    def native() -> None:
        for _ in range(MODELS):
            model = Model1D(
                CalculationModel.NEN_KOPPEJAN,
                ConsolidationModel.TERZAGHI,
                create_default_materials=False,
            )
            create(model, color)

    def baseline() -> None:
        for _ in range(MODELS):
            create(plain.Model(), color)

    return [compare("create_material with three keywords", baseline, native, at_least=5.0)]
