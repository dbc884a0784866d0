"""Reading materials."""

import pytest
from sembra.local.sli.input_file_error import InputFileError
from sembra.local.sli.sections import read_whole
from sembra.local.worker.failures import Problems
from sembra.local.worker.ground.material import Conductivity, Material, StorageType
from sembra.local.worker.ground.preconsolidation import PreconsolidationType, StatedPreconsolidation
from sembra.local.worker.input import read_project
from sembra.local.worker.input.soils import Materials
from sembra.local.worker.soil_models.isotache import Isotache
from sembra.local.worker.soil_models.koppejan import Koppejan

from tests.toolkit.worker.input_file import input_text, refused

STATED = {
    "SoilGamDry": 14.5,
    "SoilGamWet": 17.25,
    "SoilDrained": 0,
    "SoilCv": 2.5e-7,
    "SoilPermeabilityHorFactor": 2.0,
    "SoilStorageType": 2,
    "SoilPermeabilityVer": 3e-5,
    "SoilPermeabilityStrainModulus": 0.4,
    "SoilPreconKoppejanType": 2,
    "SoilPc": 31.0,
    "SoilOCR": 1.4,
    "SoilPOP": 7.0,
    "SoilApAsApproximationByCpCs": 0,
}


def soil(model: int = 0, **changes: float) -> Material:
    text = input_text(model={"Model": model}, soils={"Clay": STATED | changes})
    return read_project(text).columns[0].layers[0].material


def test_all_that_a_material_states() -> None:
    assert soil() == Material(
        name="Clay",
        unit_weight_dry=14.5,
        unit_weight_wet=17.25,
        drained=False,
        conductivity=Conductivity(2.5e-7, 2.0, StorageType.PERMEABILITY_BY_STRAIN, 3e-5, 0.4),
        preconsolidation=StatedPreconsolidation(PreconsolidationType.POP, 31.0, 1.4, 7.0),
        parameters={
            "cp": 50.0,
            "cp1": 12.5,
            "cs": 300.0,
            "cs1": 75.0,
            "ap": 40.0,
            "asec": 250.0,
        },
    )


def test_coefficients_of_consolidation_per_day() -> None:
    found = soil().conductivity
    assert found.vertical_coefficient == pytest.approx(0.0216)
    assert found.vertical_coefficient * found.horizontal_factor == pytest.approx(0.0432)


@pytest.mark.parametrize(("code", "kind"), [(0, "OCR"), (1, "PC"), (2, "POP")])
def test_preconsolidation_by_the_key_of_the_soil_model(code: int, kind: str) -> None:
    constants = {"SoilPriCompIndex": 0.01, "SoilSecCompIndex": 0.1, "SoilSecCompRate": 0.005}
    other = {"SoilPreconKoppejanType": (code + 1) % 3}
    by_isotaches = soil(2, **constants, **other, SoilPreconIsotacheType=code)
    assert by_isotaches.preconsolidation.kind.name == kind
    by_koppejan = soil(**{"SoilPreconKoppejanType": code, "SoilPreconIsotacheType": 9})
    assert by_koppejan.preconsolidation.kind.name == kind


@pytest.mark.parametrize("code", list(StorageType))
def test_storage_types(code: StorageType) -> None:
    assert soil(SoilStorageType=code.value).conductivity.kind is code


@pytest.mark.parametrize("kind", [StorageType.COEFFICIENT, StorageType.CONSTANT_PERMEABILITY])
def test_a_strain_modulus_that_nothing_asks_for_may_be_zero(kind: StorageType) -> None:
    found = soil(SoilStorageType=kind.value, SoilPermeabilityStrainModulus=0)
    assert found.conductivity.strain_modulus == 0


def test_horizontal_flow_may_be_none() -> None:
    assert soil(SoilPermeabilityHorFactor=0).conductivity.horizontal_factor == 0


def test_creep_may_be_none_and_compression_not() -> None:
    constants = {"SoilPriCompIndex": 0.01, "SoilSecCompIndex": 0.1, "SoilPreconIsotacheType": 0}
    assert soil(2, **constants, SoilSecCompRate=0).parameters["c"] == 0
    bad = {"Clay": STATED | constants | {"SoilSecCompRate": -0.1}}
    message = refused(input_text(model={"Model": 2}, soils=bad))
    assert "SoilSecCompRate of zero or more, and states -0.1" in message
    bad = {"Clay": STATED | constants | {"SoilSecCompRate": 0, "SoilSecCompIndex": 0.0}}
    message = refused(input_text(model={"Model": 2}, soils=bad))
    assert "SoilSecCompIndex greater than zero, and states 0" in message


def test_keys_of_other_soil_models_may_be_missing() -> None:
    assert set(soil().parameters) == {"cp", "cp1", "cs", "cs1", "ap", "asec"}
    message = refused(input_text(model={"Model": 2}))
    assert "in section [SOIL], line " in message
    assert " is missing" in message


def test_a_name_stands_once() -> None:
    text = input_text(soils={"Clay": {}, "Sand": {}}).replace("[SOIL]\nSand", "[SOIL]\nClay")
    assert 'the material "Clay" stands twice' in refused(text)


def test_materials_that_no_layer_consists_of_are_not_read() -> None:
    text = input_text(soils={"Clay": {}, "Unused": {"SoilCp": 0.0, "SoilDrained": 5}})
    assert read_project(text).columns[0].layers[0].material.name == "Clay"
    materials = Materials(read_whole(text).section("INPUT DATA"), Koppejan, Problems())
    assert list(materials) == ["Clay", "Unused"]
    assert len(materials) == 2
    assert "Sand" not in materials


@pytest.mark.parametrize(
    ("key", "value", "problem"),
    [
        ("SoilApAsApproximationByCpCs", 3, "SoilApAsApproximationByCpCs should be 0 or 1"),
        ("SoilDrained", 0.5, "SoilDrained should be 0 or 1 and is 0.5"),
        ("SoilStorageType", 4, "SoilStorageType 4 is unknown"),
        (
            "SoilPreconKoppejanType",
            1.5,
            "SoilPreconKoppejanType should be a whole number and is 1.5",
        ),
        ("SoilCv", float("inf"), "SoilCv should be a finite number and is inf"),
    ],
)
def test_values_that_mean_nothing(key: str, value: float, problem: str) -> None:
    text = input_text(soils={"Clay": STATED | {key: value}})
    message = refused(text)
    line = text[: text.index(f"\n{key}=")].count("\n") + 2
    place = f"The input file is not readable in section [SOIL], line {line}"
    assert message.startswith(f"{place}: {problem}")


@pytest.mark.parametrize(
    ("key", "value", "wanted"),
    [
        ("SoilCp1", 0, "SoilCp1 greater than zero, and states 0."),
        ("SoilCs", -3, "SoilCs greater than zero, and states -3."),
        ("SoilAsec", 0, "SoilAsec greater than zero, and states 0."),
        ("SoilPermeabilityHorFactor", -1, "SoilPermeabilityHorFactor of zero or more, and states"),
        ("SoilPermeabilityStrainModulus", 0, "SoilPermeabilityStrainModulus greater than zero"),
    ],
)
def test_values_out_of_range_are_told_by_their_material(
    key: str, value: float, wanted: str
) -> None:
    message = refused(input_text(soils={"Clay": STATED | {key: value}}))
    assert message.startswith(f"The material Clay needs {wanted}")


def test_all_values_out_of_range_are_told_at_once() -> None:
    soils = {"Clay": STATED | {"SoilCp": 0, "SoilCs1": 0}, "Sand": STATED | {"SoilCs": -1}}
    message = refused(input_text(soils=soils, layers=[(0.0, "Clay"), (-1.0, "Sand")]))
    assert message == (
        "The material Clay needs SoilCp greater than zero, and states 0. "
        "The material Clay needs SoilCs1 greater than zero, and states 0. "
        "The material Sand needs SoilCs greater than zero, and states -1."
    )


def test_swelling_constants_that_follow_others_need_no_value() -> None:
    unstated = {"SoilApAsApproximationByCpCs": 1, "SoilAp": 0.0, "SoilAsec": 0.0}
    assert soil(0, **unstated).parameters["ap"] == 50.0


def test_a_model_reads_what_it_needs() -> None:
    whole = read_whole(input_text(soils={"Clay": {"SoilPreconIsotacheType": 0}}))
    materials = Materials(whole.section("INPUT DATA"), Isotache, Problems())
    with pytest.raises(InputFileError, match='"SoilPriCompIndex" is missing'):
        materials["Clay"]
