"""The section SOIL COLLECTION: materials by name."""

from collections.abc import Iterable, Iterator, Mapping

from sembra.local.sli.errors import InputFileError
from sembra.local.sli.sections import Line, Section, parse_number
from sembra.local.worker.ground.material import Conductivity, Material, StorageType
from sembra.local.worker.ground.preconsolidation import (
    PreconsolidationType,
    StatedPreconsolidation,
)
from sembra.local.worker.soil_models.soil_model import SoilModel


class SoilValues:
    """The `SoilX=value` lines of one material."""

    def __init__(self, section: Section) -> None:
        self._section = section
        self._values = section.values()

    def number(self, key: str) -> float:
        """Value of a key, as a number."""
        line = self._line(key)
        return parse_number(self._section, line.number, key, line.text)

    def positive(self, key: str) -> float:
        """Value of a key that something is divided by."""
        value = self.number(key)
        if value <= 0:
            raise self.error(key, f"{key} should be greater than zero and is {value:g}")
        return value

    def not_negative(self, key: str) -> float:
        """Value of a key that can't be below zero."""
        value = self.number(key)
        if value < 0:
            raise self.error(key, f"{key} should not be negative and is {value:g}")
        return value

    def flag(self, key: str) -> bool:
        """Value of a switch, 0 or 1."""
        value = self.number(key)
        if value not in (0, 1):
            raise self.error(key, f"{key} should be 0 or 1 and is {value:g}")
        return value == 1

    def code(self, key: str, known: Iterable[int]) -> int:
        """Value of a key that is one of some known codes."""
        value = self.number(key)
        for code in known:
            if code == value:
                return code
        raise self.error(key, f"{key} {value:g} is unknown")

    def error(self, key: str, problem: str) -> InputFileError:
        """An error at the line of a key."""
        return self._section.error(problem, self._line(key).number)

    def _line(self, key: str) -> Line:
        try:
            return self._values[key]
        except KeyError:
            raise self._section.error(f"{key} is missing") from None


class Materials(Mapping[str, Material]):
    """The materials of a file by name, each read when it is asked for.

    A file may hold materials that no layer consists of, with parameters of other soil models alone.

    Args:
        whole: the whole file.
        soil_model: the soil model of the file, which says what parameters it needs.

    Raises:
        InputFileError: a name stands twice; when a material is asked for: a value is missing, no
            number or out of range.
    """

    def __init__(self, whole: Section, soil_model: type[SoilModel]) -> None:
        self._soil_model = soil_model
        self._sections: dict[str, Section] = {}
        self._read: dict[str, Material] = {}
        for section in whole.section("SOIL COLLECTION").sections("SOIL"):
            name = section.cursor().name("the name of the material")
            if name in self._sections:
                raise section.error(f'the material "{name}" stands twice')
            self._sections[name] = section

    def __getitem__(self, name: str) -> Material:
        if name not in self._read:
            self._read[name] = _read_material(name, self._sections[name], self._soil_model)
        return self._read[name]

    def __contains__(self, name: object) -> bool:
        return name in self._sections

    def __iter__(self) -> Iterator[str]:
        return iter(self._sections)

    def __len__(self) -> int:
        return len(self._sections)


def _read_material(name: str, section: Section, soil_model: type[SoilModel]) -> Material:
    values = SoilValues(section)
    return Material(
        name=name,
        unit_weight_dry=values.number("SoilGamDry"),
        unit_weight_wet=values.number("SoilGamWet"),
        drained=values.flag("SoilDrained"),
        conductivity=_read_conductivity(values),
        preconsolidation=_read_preconsolidation(values, soil_model.preconsolidation_key),
        parameters=soil_model.read(values),
    )


def _read_conductivity(values: SoilValues) -> Conductivity:
    kind = StorageType(values.code("SoilStorageType", StorageType))
    modulus = values.positive if kind is StorageType.PERMEABILITY_BY_STRAIN else values.number
    return Conductivity(
        cv=values.number("SoilCv"),
        horizontal_factor=values.not_negative("SoilPermeabilityHorFactor"),
        kind=kind,
        vertical=values.number("SoilPermeabilityVer"),
        strain_modulus=modulus("SoilPermeabilityStrainModulus"),
    )


def _read_preconsolidation(values: SoilValues, key: str) -> StatedPreconsolidation:
    return StatedPreconsolidation(
        kind=PreconsolidationType(values.code(key, PreconsolidationType)),
        pc=values.number("SoilPc"),
        ocr=values.number("SoilOCR"),
        pop=values.number("SoilPOP"),
    )
