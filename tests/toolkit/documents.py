"""Documents of models, made by hand."""

import re
from typing import Any

from sembra.local.sli.materials import StatedMaterial

IRREGULAR_KEYS = {
    "SoilDistdPc": "dist_pc",
    "SoilCorASecCp1": "cor_asec_cp1",
    "SoilPOP": "pop_",
}

STEMS = [
    "gam_dry",
    "gam_wet",
    "cv",
    "pc",
    "pri_comp_index",
    "sec_comp_index",
    "sec_comp_rate",
    "ocr",
    "permeability_ver",
    "pop",
    "permeability_hor_factor",
    "initial_void_ratio",
    "permeability_strain_modulus",
    "limit_stress",
    "cp",
    "cp1",
    "cs",
    "cs1",
    "ap",
    "asec",
    "car",
    "ca",
    "r_ratio",
    "c_ratio",
    "s_ratio",
    "cr_index",
    "cc_index",
    "csw_index",
]

CORRELATIONS = [
    "cor_cp_cp1",
    "cor_cs_cp1",
    "cor_cs1_cp1",
    "cor_ap_cp1",
    "cor_asec_cp1",
    "cor_cr_index_cc_index",
    "cor_r_ratio_c_ratio",
    "cor_ca_cc_index_or_c_ratio",
    "cor_pri_comp_index_sec_comp_index",
    "cor_sec_comp_rate_sec_comp_index",
]

Document = dict[str, Any]


def soil(name: str = "Clay", **values: Any) -> Document:
    """Return a material with all its 110 keys."""
    return (
        {"name": name, "color": 9764853, "gam_dry": 15.0, "gam_wet": 18.0}
        | {"initial_void_ratio": 0.0, "cohesion": 0.0, "phi": 0.0}
        | {"precon_isotache_type": 0, "precon_koppejan_type": 0, "use_equivalent_age": 0}
        | {"equivalent_age": 0.0, "pc": 0.0, "ocr": 1.0, "pop_": 0.0, "limit_stress": 1.0}
        | {"drained": 0, "ap_as_approximation_by_cp_cs": 0, "cv": 10.0, "permeability_ver": 0.05}
        | {"permeability_hor_factor": 1.0, "storage_type": 0, "permeability_strain_modulus": 1e15}
        | {"use_prob_defaults": 1}
        | {f"std_{stem}": 0.0 for stem in STEMS}
        | {f"dist_{stem}": 2 for stem in STEMS}
        | dict.fromkeys(CORRELATIONS, 0.0)
        | {"cp": 1.0, "cp1": 1.0, "cs": 1.0, "cs1": 1.0, "ap": 1.0, "asec": 1.0, "car": 0.0}
        | {"ca": 1.0, "comp_ratio": 1, "r_ratio": 1.0, "c_ratio": 1.0, "s_ratio": 0.0}
        | {"cr_index": 1.0, "cc_index": 1.0, "csw_index": 0.0, "pri_comp_index": 0.01}
        | {"sec_comp_index": 0.1, "sec_comp_rate": 0.005, "horizontal_behaviour_type": 2}
        | {"elasticity": 1000.0, "default_elasticity": 1}
        | values
    )


def drain(**values: Any) -> Document:
    """Return the drain of a model that has none."""
    return {
        "type": 0,
        "range_from": 0.0,
        "range_to": 100.0,
        "bottom_position": 0.0,
        "center_to_center": 1.0,
        "width_diameter": 0.1,
        "thickness": 0.003,
        "position_drain": 0.0,
        "grid": 0,
        "schedule_type": 0,
        "start_of_drainage": 0.0,
        "phreatic_level": 0.0,
        "begin_time": 0.0,
        "end_time": 0.0,
        "underpressure": 0.0,
        "dewatering_head_or_pressure": 0.0,
        "detailed_schedule": [(0.0, 40.0, 0.0)],
    } | values


def frame(**values: Any) -> Document:
    """Return the keys that every document has."""
    return {
        "calculation_model": 0,
        "consolidation_model": 1,
        "strain_type": "Linear",
        "maintain_profile": False,
        "profile_time": 0,
        "profile_unit_weight_above_phreatic_level": 10.0,
        "profile_unit_weight_below_phreatic_level": 10.0,
        "end_of_settlement_calculation": 10000,
        "verticals_discretization": 100,
        "verticals_z_coordinate": 0.0,
        "stress_distribution_loads": False,
        "has_vertical_drains": False,
        "soils": [soil()],
        "verticals": [{"x": 0.0}],
        "non_uniform_loads": [],
        "other_loads": [],
        "residual_times": [],
        "vertical_drain": drain(),
        "date": "01/01/1900",
        "time": "00:00:00",
        "file_name": "-",
        "company": "-",
        "created_by": "-",
        "title_1": "-",
        "title_2": "-",
        "title_3": "-",
        "dissipation_calculation": None,
    } | values


def document_1d(**values: Any) -> Document:
    """Return the document of a one-dimensional model."""
    geometry = {"layers": [(0.0, "Clay")], "bottom_level": -10.0, "phreatic_level": -1.0}
    return frame() | {"model_type": 0, "geometry": geometry} | values


def document_2d(**values: Any) -> Document:
    """Return the document of a two-dimensional model of one layer."""
    layer = {"material": "Clay", "boundary_top": 1, "boundary_bottom": 0, "pl_top": 1}
    return (
        frame()
        | {
            "model_type": 1,
            "points": [(0.0, 0.0, 0), (100.0, 0.0, 0), (0.0, 5.0, 0), (100.0, 5.0, 0)],
            "curves": [(1, 2), (3, 4)],
            "boundaries": [[1], [2]],
            "pl_lines": [[2]],
            "layers": [layer | {"pl_bottom": 1}],
            "phreatic_line": 1,
        }
        | values
    )


def soil_of(material: StatedMaterial) -> Document:
    """Return the material that an input file tells of."""
    values = {_key(label): line.value for label, line in material.entries.items()}
    known = soil(material.name)
    return known | {
        key: int(text) if re.fullmatch(r"-?\d+", text) else float(text)
        for key, text in values.items()
        if key in known
    }


def _key(label: str) -> str:
    """Return the key of a label, which is the label in another spelling but for some."""
    boundary = r"(?<=[a-z0-9])(?=[A-Z])|(?<=[A-Z])(?=[A-Z][a-z])"
    return IRREGULAR_KEYS.get(label) or re.sub(boundary, "_", label.removeprefix("Soil")).lower()
