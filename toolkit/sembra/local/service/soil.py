"""The soil vocabulary: what a material's keys are called in the file, and how they are written."""

from dataclasses import dataclass
from functools import lru_cache
from operator import attrgetter
from typing import TYPE_CHECKING, Any

from pydantic import create_model

from sembra.local.service.numbers import exponent, fixed
from sembra.local.service.types import Number, OwnLine, Strict, Whole

KEPT = 500
"""How many materials' lines are kept: those of the default materials are the same in every file."""


@dataclass(frozen=True, slots=True)
class Parameter:
    """A line of the file that carries a key of the document.

    Args:
        label: What the line begins with.
        key: The key of the document.
        layout: "d" for a whole number, "2f" for fixed point with two decimals, "2e" for an
            exponent with two decimals in the mantissa.
    """

    label: str
    key: str
    layout: str

    @property
    def type(self) -> Any:
        """The kind of value that the key must have."""
        return Whole if self.layout == "d" else Number

    def write(self, value: float) -> str:
        """Return the line for a value."""
        decimals, kind = self.layout[:-1], self.layout[-1]
        if kind == "d":
            return f"{self.label}={value}"
        return f"{self.label}={(fixed if kind == 'f' else exponent)(value, int(decimals))}"


@dataclass(frozen=True, slots=True)
class Constant:
    """A line of the file that the document has no key for: D-Settlement's own default."""

    label: str
    text: str


LINES: tuple[Parameter | Constant, ...] = (
    Parameter("SoilColor", "color", "d"),
    Parameter("SoilGamDry", "gam_dry", "2f"),
    Parameter("SoilGamWet", "gam_wet", "2f"),
    Parameter("SoilInitialVoidRatio", "initial_void_ratio", "6f"),
    Parameter("SoilPreconIsotacheType", "precon_isotache_type", "d"),
    Parameter("SoilPreconKoppejanType", "precon_koppejan_type", "d"),
    Parameter("SoilUseEquivalentAge", "use_equivalent_age", "d"),
    Parameter("SoilEquivalentAge", "equivalent_age", "2e"),
    Parameter("SoilPc", "pc", "2e"),
    Parameter("SoilOCR", "ocr", "2f"),
    Parameter("SoilPOP", "pop_", "2f"),
    Parameter("SoilDrained", "drained", "d"),
    Parameter("SoilApAsApproximationByCpCs", "ap_as_approximation_by_cp_cs", "d"),
    Constant("SoilSecondarySwellingReduced", "0"),
    Constant("SoilSecondarySwellingFactor", "0.50"),
    Constant("SoilUnloadingStressRatio", "2.00"),
    Parameter("SoilCv", "cv", "2e"),
    Parameter("SoilPermeabilityVer", "permeability_ver", "3e"),
    Parameter("SoilPermeabilityHorFactor", "permeability_hor_factor", "3f"),
    Parameter("SoilStorageType", "storage_type", "d"),
    Parameter("SoilPermeabilityStrainModulus", "permeability_strain_modulus", "3e"),
    Parameter("SoilUseProbDefaults", "use_prob_defaults", "d"),
    Parameter("SoilStdGamDry", "std_gam_dry", "2f"),
    Parameter("SoilStdGamWet", "std_gam_wet", "2f"),
    Parameter("SoilStdCv", "std_cv", "2e"),
    Parameter("SoilStdPc", "std_pc", "2e"),
    Parameter("SoilStdPriCompIndex", "std_pri_comp_index", "3e"),
    Parameter("SoilStdSecCompIndex", "std_sec_comp_index", "3e"),
    Parameter("SoilStdSecCompRate", "std_sec_comp_rate", "3e"),
    Parameter("SoilStdOCR", "std_ocr", "2f"),
    Parameter("SoilStdPermeabilityVer", "std_permeability_ver", "3e"),
    Parameter("SoilStdPOP", "std_pop", "2f"),
    Parameter("SoilStdPermeabilityHorFactor", "std_permeability_hor_factor", "3f"),
    Parameter("SoilStdInitialVoidRatio", "std_initial_void_ratio", "6f"),
    Parameter("SoilStdPermeabilityStrainModulus", "std_permeability_strain_modulus", "3e"),
    Parameter("SoilStdLimitStress", "std_limit_stress", "2f"),
    Parameter("SoilStdCp", "std_cp", "2e"),
    Parameter("SoilStdCp1", "std_cp1", "2e"),
    Parameter("SoilStdCs", "std_cs", "2e"),
    Parameter("SoilStdCs1", "std_cs1", "2e"),
    Parameter("SoilStdAp", "std_ap", "2e"),
    Parameter("SoilStdAsec", "std_asec", "2e"),
    Parameter("SoilStdCar", "std_car", "7f"),
    Parameter("SoilStdCa", "std_ca", "7f"),
    Parameter("SoilStdRRatio", "std_r_ratio", "7f"),
    Parameter("SoilStdCRatio", "std_c_ratio", "7f"),
    Parameter("SoilStdSRatio", "std_s_ratio", "7f"),
    Parameter("SoilStdCrIndex", "std_cr_index", "7f"),
    Parameter("SoilStdCcIndex", "std_cc_index", "7f"),
    Parameter("SoilStdCswIndex", "std_csw_index", "7f"),
    Parameter("SoilDistGamDry", "dist_gam_dry", "d"),
    Parameter("SoilDistGamWet", "dist_gam_wet", "d"),
    Parameter("SoilDistCv", "dist_cv", "d"),
    Parameter("SoilDistdPc", "dist_pc", "d"),
    Parameter("SoilDistPriCompIndex", "dist_pri_comp_index", "d"),
    Parameter("SoilDistSecCompIndex", "dist_sec_comp_index", "d"),
    Parameter("SoilDistSecCompRate", "dist_sec_comp_rate", "d"),
    Parameter("SoilDistOCR", "dist_ocr", "d"),
    Parameter("SoilDistPermeabilityVer", "dist_permeability_ver", "d"),
    Parameter("SoilDistPOP", "dist_pop", "d"),
    Parameter("SoilDistPermeabilityHorFactor", "dist_permeability_hor_factor", "d"),
    Parameter("SoilDistInitialVoidRatio", "dist_initial_void_ratio", "d"),
    Parameter("SoilDistPermeabilityStrainModulus", "dist_permeability_strain_modulus", "d"),
    Parameter("SoilDistLimitStress", "dist_limit_stress", "d"),
    Parameter("SoilDistCp", "dist_cp", "d"),
    Parameter("SoilDistCp1", "dist_cp1", "d"),
    Parameter("SoilDistCs", "dist_cs", "d"),
    Parameter("SoilDistCs1", "dist_cs1", "d"),
    Parameter("SoilDistAp", "dist_ap", "d"),
    Parameter("SoilDistAsec", "dist_asec", "d"),
    Parameter("SoilDistCar", "dist_car", "d"),
    Parameter("SoilDistCa", "dist_ca", "d"),
    Parameter("SoilDistRRatio", "dist_r_ratio", "d"),
    Parameter("SoilDistCRatio", "dist_c_ratio", "d"),
    Parameter("SoilDistSRatio", "dist_s_ratio", "d"),
    Parameter("SoilDistCrIndex", "dist_cr_index", "d"),
    Parameter("SoilDistCcIndex", "dist_cc_index", "d"),
    Parameter("SoilDistCswIndex", "dist_csw_index", "d"),
    Parameter("SoilCorCpCp1", "cor_cp_cp1", "2f"),
    Parameter("SoilCorCsCp1", "cor_cs_cp1", "2f"),
    Parameter("SoilCorCs1Cp1", "cor_cs1_cp1", "2f"),
    Parameter("SoilCorApCp1", "cor_ap_cp1", "2f"),
    Parameter("SoilCorASecCp1", "cor_asec_cp1", "2f"),
    Parameter("SoilCorCrIndexCcIndex", "cor_cr_index_cc_index", "2f"),
    Parameter("SoilCorRRatioCRatio", "cor_r_ratio_c_ratio", "2f"),
    Parameter("SoilCorCaCcIndexOrCRatio", "cor_ca_cc_index_or_c_ratio", "2f"),
    Parameter("SoilCorPriCompIndexSecCompIndex", "cor_pri_comp_index_sec_comp_index", "2f"),
    Parameter("SoilCorSecCompRateSecCompIndex", "cor_sec_comp_rate_sec_comp_index", "2f"),
    Parameter("SoilCp", "cp", "2e"),
    Parameter("SoilCp1", "cp1", "2e"),
    Parameter("SoilCs", "cs", "2e"),
    Parameter("SoilCs1", "cs1", "2e"),
    Parameter("SoilAp", "ap", "2e"),
    Parameter("SoilAsec", "asec", "2e"),
    Parameter("SoilCar", "car", "7f"),
    Parameter("SoilCa", "ca", "7f"),
    Parameter("SoilCompRatio", "comp_ratio", "d"),
    Parameter("SoilRRatio", "r_ratio", "7f"),
    Parameter("SoilCRatio", "c_ratio", "7f"),
    Parameter("SoilSRatio", "s_ratio", "7f"),
    Parameter("SoilCrIndex", "cr_index", "7f"),
    Parameter("SoilCcIndex", "cc_index", "7f"),
    Parameter("SoilCswIndex", "csw_index", "7f"),
    Parameter("SoilPriCompIndex", "pri_comp_index", "3e"),
    Parameter("SoilSecCompIndex", "sec_comp_index", "3e"),
    Parameter("SoilSecCompRate", "sec_comp_rate", "3e"),
    Parameter("SoilHorizontalBehaviourType", "horizontal_behaviour_type", "d"),
    Parameter("SoilElasticity", "elasticity", "5e"),
    Parameter("SoilDefaultElasticity", "default_elasticity", "d"),
)
"""The lines of a material behind its name, in the order of the file."""

UNWRITTEN = ("cohesion", "phi", "limit_stress")
"""Keys of the document that this version of the file has no line for."""

_FIELDS: dict[str, Any] = {
    "name": (OwnLine, ...),
    **{line.key: (line.type, ...) for line in LINES if isinstance(line, Parameter)},
    **dict.fromkeys(UNWRITTEN, (Number, ...)),
}

if TYPE_CHECKING:

    class Soil(Strict):
        """One entry of the document's "soils": its name, and the keys of the lines."""

        name: str

else:
    Soil = create_model("Soil", __base__=Strict, **_FIELDS)


_parameters = attrgetter(*(line.key for line in LINES if isinstance(line, Parameter)))


def soil_text(soil: Soil) -> str:
    """Return the lines of a material, its name first."""
    return f"{soil.name}\n{_lines(_parameters(soil))}"


@lru_cache(KEPT)
def _lines(parameters: tuple[float, ...]) -> str:
    """Return the lines behind the name, for the values of the keys in their order."""
    values = iter(parameters)
    return "\n".join(
        f"{line.label}={line.text}" if isinstance(line, Constant) else line.write(next(values))
        for line in LINES
    )
