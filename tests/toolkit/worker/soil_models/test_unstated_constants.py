"""Remarks on strain by constants that nobody has stated."""

import numpy as np
import pytest
from sembra.local.worker.remark import sentences
from sembra.local.worker.soil_models.isotache import Isotache
from sembra.local.worker.soil_models.koppejan import Koppejan
from sembra.local.worker.soil_models.soil_model import Elements

from tests.toolkit.worker.input_file import calculated, input_text
from tests.toolkit.worker.made_material import material
from tests.toolkit.worker.made_options import options
from tests.toolkit.worker.soil_models.made_elements import elements

STATED = {"cp": 50.0, "cp1": 12.5, "cs": 300.0, "cs1": 75.0, "ap": 40.0, "asec": 250.0}
UP, OFF = [60.0, 60.0], [30.0, 30.0]
LOADED = (
    "The material {name} settles far too much when loaded: the constants {constants} are both 1, "
    "their value where none is stated. State them."
)
UNLOADED = (
    "The material {name} heaves far too much when unloaded: the constants Ap and Asec are both 1, "
    "their value where none is stated. State them, or have them follow Cp and Cs."
)


def in_plural(sentence: str) -> str:
    """A sentence on both materials."""
    return sentence.replace("material {name}", "materials Peat and Clay").replace("s far", " far")


def remarks(*stresses: list[float], peat: dict[str, float], clay: dict[str, float]) -> list[str]:
    """Remarks on a column of an element of peat upon one of clay, both at 40 kPa at first."""
    soils = [
        material(name, parameters=STATED | constants)
        for name, constants in (("Peat", peat), ("Clay", clay))
    ]
    found = Elements(soils, np.array([40.0, 40.0]), np.array([50.0, 50.0]))
    return sentences(Koppejan(found, options()).remarks([np.array(one) for one in stresses]))


@pytest.mark.parametrize(
    ("unstated", "constants"),
    [({"cp": 1.0, "cp1": 1.0}, "Cp and Cp'"), ({"cs": 1.0, "cs1": 1.0}, "Cs and Cs'")],
)
def test_loading(unstated: dict[str, float], constants: str) -> None:
    assert remarks(UP, peat={}, clay=unstated) == [LOADED.format(name="Clay", constants=constants)]
    assert remarks(OFF, peat={}, clay=unstated) == []


def test_unloading() -> None:
    unstated = {"ap": 1.0, "asec": 1.0}
    assert remarks(UP, OFF, peat=unstated, clay={}) == [UNLOADED.format(name="Peat")]
    assert remarks(UP, UP, peat=unstated, clay=unstated) == []


def test_all_that_is_unstated_is_remarked_on_once() -> None:
    none = dict.fromkeys(STATED, 1.0)
    found = remarks(UP, OFF, UP, peat=none, clay=none)
    loaded, unloaded = (in_plural(sentence) for sentence in (LOADED, UNLOADED))
    assert found == [
        loaded.format(constants="Cp and Cp'"), loaded.format(constants="Cs and Cs'"), unloaded,
    ]  # fmt: skip


def test_only_the_material_that_is_loaded_counts() -> None:
    none = dict.fromkeys(STATED, 1.0)
    assert remarks([40.0, 60.0], peat=none, clay={}) == []
    assert remarks([40.0, 30.0], peat=none, clay={}) == []


@pytest.mark.parametrize("name", list(STATED))
def test_one_stated_constant_is_a_choice(name: str) -> None:
    pair = next(pair for pair in (("cp", "cp1"), ("cs", "cs1"), ("ap", "asec")) if name in pair)
    assert len(remarks(UP, OFF, peat={}, clay=dict.fromkeys(pair, 1.0))) == 1
    assert remarks(UP, OFF, peat={}, clay={name: 1.0}) == []


def test_rounding_is_no_load() -> None:
    none = dict.fromkeys(STATED, 1.0)
    assert remarks([40.00001, 39.99999], peat=none, clay=none) == []


def test_models_with_other_constants_have_no_remarks() -> None:
    soil = elements({"a": 1.0, "b": 1.0, "c": 1.0}, [40.0], [50.0])
    assert Isotache(soil, options()).remarks([np.array([60.0])]) == []


def test_the_calculation_goes_on() -> None:
    unstated = {"Clay": {"SoilCp": 1.0, "SoilCp1": 1.0, "SoilAp": 1.0, "SoilAsec": 1.0}}
    assert "[End of Results]" in calculated(input_text(soils=unstated))
