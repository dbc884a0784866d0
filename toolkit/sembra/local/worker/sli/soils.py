"""The section SOIL COLLECTION: materials by name."""

from __future__ import annotations

from ..errors import InputFileError
from ..model import Material, PreconsolidationType
from ..sections import Line, Section, parse_number


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

    def flag(self, key: str) -> bool:
        """Value of a switch, 0 or 1."""
        value = self.number(key)
        if value not in (0, 1):
            raise self.error(key, f"{key} should be 0 or 1 and is {value:g}")
        return value == 1

    def error(self, key: str, problem: str) -> InputFileError:
        """An error at the line of a key."""
        return self._section.error(problem, self._line(key).number)

    def _line(self, key: str) -> Line:
        try:
            return self._values[key]
        except KeyError:
            raise self._section.error(f"{key} is missing") from None


def read_materials(whole: Section) -> dict[str, Material]:
    """The materials of the file by name.

    Raises:
        InputFileError: a value is missing, no number or out of range, or a name stands twice.
    """
    materials: dict[str, Material] = {}
    for section in whole.section("SOIL COLLECTION").sections("SOIL"):
        material = _read_material(section)
        if material.name in materials:
            raise section.error(f'the material "{material.name}" stands twice')
        materials[material.name] = material
    return materials


def _read_material(section: Section) -> Material:
    name = section.cursor().name("the name of the material")
    values = SoilValues(section)
    cp, cs = values.positive("SoilCp"), values.positive("SoilCs")
    swells_as_compressed = values.flag("SoilApAsApproximationByCpCs")
    return Material(
        name=name,
        unit_weight_dry=values.number("SoilGamDry"),
        unit_weight_wet=values.number("SoilGamWet"),
        drained=values.flag("SoilDrained"),
        cv=values.number("SoilCv"),
        preconsolidation_type=_read_preconsolidation_type(values),
        pc=values.number("SoilPc"),
        ocr=values.number("SoilOCR"),
        pop=values.number("SoilPOP"),
        cp=cp,
        cp1=values.positive("SoilCp1"),
        cs=cs,
        cs1=values.positive("SoilCs1"),
        ap=cp if swells_as_compressed else values.positive("SoilAp"),
        asec=cs if swells_as_compressed else values.positive("SoilAsec"),
        horizontal_factor=values.number("SoilPermeabilityHorFactor"),
    )


def _read_preconsolidation_type(values: SoilValues) -> PreconsolidationType:
    code = values.number("SoilPreconKoppejanType")
    for kind in PreconsolidationType:
        if kind == code:
            return kind
    raise values.error("SoilPreconKoppejanType", f"SoilPreconKoppejanType {code:g} is unknown")
