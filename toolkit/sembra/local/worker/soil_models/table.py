"""The soil models, by their code in the input file."""

from collections.abc import Mapping

from sembra.local.worker.soil_models.bjerrum import Bjerrum
from sembra.local.worker.soil_models.isotache import Isotache
from sembra.local.worker.soil_models.koppejan import Koppejan
from sembra.local.worker.soil_models.soil_model import SoilModel

SOIL_MODELS: Mapping[int, type[SoilModel]] = {0: Koppejan, 1: Bjerrum, 2: Isotache}
