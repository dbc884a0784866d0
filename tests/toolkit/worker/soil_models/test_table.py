"""Soil models by their code in the input file."""

import pytest
from sembra.local.worker.input import read_project
from sembra.local.worker.soil_models.bjerrum import Bjerrum
from sembra.local.worker.soil_models.isotache import Isotache
from sembra.local.worker.soil_models.koppejan import Koppejan
from sembra.local.worker.soil_models.soil_model import SoilModel
from sembra.local.worker.soil_models.table import SOIL_MODELS

from tests.toolkit.worker.input_file import input_text

SOIL = {
    "SoilPreconIsotacheType": 0.0,
    "SoilPriCompIndex": 0.01,
    "SoilSecCompIndex": 0.1,
    "SoilSecCompRate": 0.005,
    "SoilCompRatio": 1.0,
    "SoilRRatio": 0.03,
    "SoilCRatio": 0.3,
    "SoilCa": 0.01,
}


def test_every_model_has_a_code() -> None:
    assert dict(SOIL_MODELS) == {0: Koppejan, 1: Bjerrum, 2: Isotache}


@pytest.mark.parametrize(
    ("code", "model", "parameters"),
    [
        (0, Koppejan, {"cp", "cp1", "cs", "cs1", "ap", "asec"}),
        (1, Bjerrum, {"a", "b", "c"}),
        (2, Isotache, {"a", "b", "c"}),
    ],
)
def test_a_file_is_read_for_its_model(
    code: int, model: type[SoilModel], parameters: set[str]
) -> None:
    project = read_project(input_text(model={"Model": code}, soils={"Clay": SOIL}))
    assert project.soil_model is model
    assert set(project.columns[0].layers[0].material.parameters) == parameters
