"""The table of soils."""

from collections.abc import Callable
from enum import IntEnum

from sembra.core import Color
from sembra.local.look.table import Column, Name, Table, number
from sembra.local.sli.materials import StatedMaterial
from sembra.local.sli.whole_file import InputFile

Cell = Callable[[StatedMaterial], str]


class Model(IntEnum):
    """The soil model, by its code in the file."""

    KOPPEJAN = 0
    BJERRUM = 1
    ISOTACHE = 2


_DARCY = 0
_BY_CV, _BY_STRAIN = 0, 2
_PRECONSOLIDATION = (
    ("OCR", "SoilOCR", ""),
    ("Pc", "SoilPc", " kPa"),
    ("POP", "SoilPOP", " kPa"),
)
"""How a material states its preconsolidation pressure, by the code for it."""

_KOPPEJAN = {
    "Cp": "SoilCp",
    "Cp'": "SoilCp1",
    "Cs": "SoilCs",
    "Cs'": "SoilCs1",
    "Ap": "SoilAp",
    "As": "SoilAsec",
}
_ISOTACHE = {"a": "SoilPriCompIndex", "b": "SoilSecCompIndex", "c": "SoilSecCompRate"}


def soils(file: InputFile) -> Table:
    """Return the materials of a file, with the parameters that its models read.

    Raises:
        InputFileError: A section is malformed.
    """
    columns = {
        Column("γ dry", "kN/m³"): _value("SoilGamDry"),
        Column("γ wet", "kN/m³"): _value("SoilGamWet"),
        Column("Drained", numbers=False): _drained,
        **_conductivity(file.model.code("Calculation type") == _DARCY),
        **_of_model(Model(file.model.one_of("Model", list(Model)))),
    }
    rows: list[list[Name | str]] = [
        [
            Name(name, Color.from_deltares(int(material.number("SoilColor")))),
            *(cell(material) for cell in columns.values()),
        ]
        for name, material in file.materials.items()
    ]
    return Table("Soils", [Column("Material", numbers=False), *columns], rows)


def _conductivity(darcy: bool) -> dict[Column, Cell]:
    if darcy:
        return {
            Column("Consolidation", numbers=False): _storage,
            Column("kh / kv"): _value("SoilPermeabilityHorFactor"),
        }
    return {Column("cv", "m²/s"): _value("SoilCv")}


def _of_model(model: Model) -> dict[Column, Cell]:
    kind = "Koppejan" if model is Model.KOPPEJAN else "Isotache"
    before: dict[Column, Cell] = {
        Column("Preconsolidation", numbers=False): _preconsolidation(f"SoilPrecon{kind}Type")
    }
    if model is Model.KOPPEJAN:
        return before | {Column(label): _value(key) for label, key in _KOPPEJAN.items()}
    if model is Model.ISOTACHE:
        return before | {Column(label): _value(key) for label, key in _ISOTACHE.items()}
    return before | {
        Column("Reloading", numbers=False): _ratio("RR", "SoilRRatio", "Cr", "SoilCrIndex"),
        Column("Compression", numbers=False): _ratio("CR", "SoilCRatio", "Cc", "SoilCcIndex"),
        Column("Cα"): _value("SoilCa"),
    }


def _value(key: str) -> Cell:
    return lambda material: number(material.number(key))


def _drained(material: StatedMaterial) -> str:
    return "yes" if material.switch("SoilDrained") else "no"


def _storage(material: StatedMaterial) -> str:
    kind = material.number("SoilStorageType")
    if kind == _BY_CV:
        return f"cv = {number(material.number('SoilCv'))} m²/s"
    permeability = f"k = {number(material.number('SoilPermeabilityVer'))} m/day"
    if kind != _BY_STRAIN:
        return permeability
    modulus = number(material.number("SoilPermeabilityStrainModulus"))
    return f"{permeability}, falls with strain (modulus {modulus})"


def _preconsolidation(key: str) -> Cell:
    def tell(material: StatedMaterial) -> str:
        code = material.one_of(key, range(len(_PRECONSOLIDATION)))
        label, value, unit = _PRECONSOLIDATION[code]
        return f"{label} {number(material.number(value))}{unit}"

    return tell


def _ratio(ratio: str, ratio_key: str, index: str, index_key: str) -> Cell:
    def tell(material: StatedMaterial) -> str:
        if material.switch("SoilCompRatio"):
            return f"{ratio} {number(material.number(ratio_key))}"
        void_ratio = number(material.number("SoilInitialVoidRatio"))
        return f"{index} {number(material.number(index_key))} (e₀ {void_ratio})"

    return tell
