"""The section SOIL COLLECTION: materials by name."""

from collections.abc import Iterator, Mapping

from sembra.local.sli.materials import StatedMaterial, read_materials
from sembra.local.sli.sections import Section
from sembra.local.worker.failures import Problems
from sembra.local.worker.ground.material import Conductivity, Material, StorageType
from sembra.local.worker.ground.preconsolidation import (
    PreconsolidationType,
    StatedPreconsolidation,
)
from sembra.local.worker.soil_models.soil_model import SoilModel


class Materials(Mapping[str, Material]):
    """The materials of a file by name, each read when it is asked for.

    A file may hold materials that no layer consists of, with parameters of other soil models alone.

    Args:
        whole: The whole file.
        soil_model: The soil model of the file, which says what parameters it needs.
        problems: Gathers the values of the materials that are asked for and that can't be
            calculated with; such a material has another value in its place.

    Raises:
        InputFileError: A name stands twice; when a material is asked for: a value is missing, no
            number or an unknown code.
    """

    def __init__(self, whole: Section, soil_model: type[SoilModel], problems: Problems) -> None:
        self._soil_model = soil_model
        self._problems = problems
        self._stated = read_materials(whole)
        self._read: dict[str, Material] = {}

    def __getitem__(self, name: str) -> Material:
        if name not in self._read:
            values = _Values(self._stated[name], self._problems)
            self._read[name] = _read_material(name, values, self._soil_model)
        return self._read[name]

    def __contains__(self, name: object) -> bool:
        return name in self._stated

    def __iter__(self) -> Iterator[str]:
        return iter(self._stated)

    def __len__(self) -> int:
        return len(self._stated)


class _Values:
    """The values that a file states for one material.

    Args:
        stated: The values.
        problems: Gathers those that can't be calculated with.
    """

    def __init__(self, stated: StatedMaterial, problems: Problems) -> None:
        self._stated = stated
        self._problems = problems
        self.number = stated.number
        self.switch = stated.switch
        self.one_of = stated.one_of

    def positive(self, key: str) -> float:
        """Return the value of a key that something is divided by."""
        value = self.number(key)
        return value if value > 0 else self._refused(key, "greater than zero", value)

    def not_negative(self, key: str) -> float:
        """Return the value of a key that can't be below zero."""
        value = self.number(key)
        return value if value >= 0 else self._refused(key, "of zero or more", value)

    def _refused(self, key: str, wanted: str, value: float) -> float:
        self._problems.add(
            f"The material {self._stated.name} needs {key} {wanted}, and states {value:g}."
        )
        return 1.0


def _read_material(name: str, values: _Values, soil_model: type[SoilModel]) -> Material:
    return Material(
        name=name,
        unit_weight_dry=values.number("SoilGamDry"),
        unit_weight_wet=values.number("SoilGamWet"),
        drained=values.switch("SoilDrained"),
        conductivity=_read_conductivity(values),
        preconsolidation=_read_preconsolidation(values, soil_model.preconsolidation_key),
        parameters=soil_model.read(values),
    )


def _read_conductivity(values: _Values) -> Conductivity:
    kind = values.one_of("SoilStorageType", StorageType)
    modulus = values.positive if kind is StorageType.PERMEABILITY_BY_STRAIN else values.number
    return Conductivity(
        cv=values.number("SoilCv"),
        horizontal_factor=values.not_negative("SoilPermeabilityHorFactor"),
        kind=kind,
        vertical=values.number("SoilPermeabilityVer"),
        strain_modulus=modulus("SoilPermeabilityStrainModulus"),
    )


def _read_preconsolidation(values: _Values, key: str) -> StatedPreconsolidation:
    return StatedPreconsolidation(
        kind=values.one_of(key, PreconsolidationType),
        pc=values.number("SoilPc"),
        ocr=values.number("SoilOCR"),
        pop=values.number("SoilPOP"),
    )
