"""Every operation of the module, with the parameters that a class written in Python would have."""

from collections.abc import Callable
from typing import Any

import pytest
import sembra.external.dsettlement as dsettlement
from sembra.external.dsettlement import Model1D

OPTIONS_1D = (
    "self, calculation_model, consolidation_model, create_default_materials=True, *, "
    "natural_strain=False, water_unit_weight=9.81, verticals_discretization=100, "
    "verticals_z_coordinate=0.0, maintain_profile=False, "
    "profile_unit_weight_above_phreatic_level=10.0, "
    "profile_unit_weight_below_phreatic_level=10.0, end_of_settlement_calculation=10000, "
    "vertical_drain=None"
)
OPTIONS = (
    "self, calculation_model, consolidation_model, create_default_materials=True, *, "
    "natural_strain=False, reliability_analysis=False, fit_for_settlement_plate=False, "
    "horizontal_displacements=False, limits=(0.0, 100.0), water_unit_weight=9.81, "
    "verticals_discretization=100, verticals_z_coordinate=0.0, maintain_profile=False, "
    "profile_time=0, profile_unit_weight_above_phreatic_level=10.0, "
    "profile_unit_weight_below_phreatic_level=10.0, end_of_settlement_calculation=10000, "
    "stress_distribution_loads=False, vertical_drain=None"
)
OPTIONS_2D = (
    OPTIONS_1D.replace("consolidation_model, ", "consolidation_model, boundary_bottom, ")
    .replace("natural_strain=False, ", "natural_strain=False, limits=(0.0, 100.0), ")
    .replace("maintain_profile=False, ", "maintain_profile=False, profile_time=0, ")
    .replace("vertical_drain=None", "stress_distribution_loads=False, vertical_drain=None")
)
LOAD = "self, name, points, time=0, end_time=0, gamma_dry=10.0, gamma_wet=10.0, temporary=False"
LAYER = "material, pl_line_top, pl_line_bottom"
DRAIN = (
    "self, drain_type, range_from, range_to, bottom_position, center_to_center, width_diameter, "
    "thickness=None, position_drain=None, grid=None, start_of_drainage=None, "
    "phreatic_level_in_drain=None, schedule=None"
)
TITLES = "company='-', created_by='-', title_1='-', title_2='-', title_3='-'"

# "{soil_parameters}" stands for the soil parameters with their defaults.
SIGNATURES = {
    "_Model.__init__": OPTIONS,
    "_Model.create_material": "self, name, gam_dry, gam_wet, color=None, *, {soil_parameters}",
    "_Model.create_uniform_load": "self, name, time, unit_weight, height, y_application",
    "_Model.set_calculation_times": "self, *time",
    "_Model._generate_input": "self, metadata=None, dissipation_calculation=None",
    "_Model.generate_input_file": (
        "self, metadata=None, *, dissipation_calculation=None, as_file=False"
    ),
    "_Model._validate": "self",
    "_Model._add_other_load": "self, name, load",
    "_Model._serialize": "self",
    "_Model._serialize_materials": "self",
    "_Model._serialize_verticals": "self",
    "_Model._serialize_non_uniform_loads": "self",
    "_Model._serialize_other_loads": "self",
    "Model1D.__init__": OPTIONS_1D,
    "Model1D.update_geometry": "self, bottom_level, layers, phreatic_level=None",
    "Model1D._serialize": "self",
    "_Geometry1D.__init__": "self, bottom_level, layers, phreatic_level=None",
    "_Geometry1D._serialize": "self",
    "_Vertical.__init__": "self, x",
    "_Vertical._serialize": "self",
    "_Material.__init__": "self, gam_dry, gam_wet, color=None, **kwargs",
    "_Material._serialize": "self, name",
    "_Load._serialize": "self, name",
    "_OtherLoad._serialize": "self, name",
    "_UniformLoad.__init__": "self, time, unit_weight, height, y_application",
    "_UniformLoad._serialize": "self, name",
    "DrainageSimpleMode.__init__": (
        "self, begin_time, end_time, underpressure, dewatering_head_or_pressure"
    ),
    "VerticalDrain.__init__": DRAIN,
    "VerticalDrain._serialize": "self",
    "Metadata.__init__": f"self, file_name='-', {TITLES}, write_date=False, write_time=False",
    "Metadata._serialize": "self",
    "DSettlementAnalysis.__init__": "self, input_file",
    "DSettlementAnalysis._handle_execution_error": "self, message",
    "DSettlementAnalysis._generate_job_content": "self",
    "DSettlementAnalysis.get_output_file": "self, extension='.sld', *, as_file=False",
    "DSettlementAnalysis.get_sld_file": "self, *, as_file=False",
    "OutputFileParser.__init__": "self, sld_file",
    "OutputFileParser._parse_results": "cls, sld_file",
    "OutputFileParser._parse_verticals": "cls, results",
    "OutputFileParser._parse_vertical": "cls, vertical",
    "OutputFileParser._parse_residual_settlements": "cls, results",
    "_NonUniformLoad.__init__": LOAD,
    "_NonUniformLoad._serialize": "self, name",
    "_Point.__init__": "self, x, y",
    "_Curve.__init__": "self, p1, p2",
    "_CurveList.__init__": "self, curves",
    "_CurveList.area_above_horizontal": "self, y=0.0",
    "_Layer.__init__": f"self, boundary_top, boundary_bottom, {LAYER}",
    "Model2D.__init__": OPTIONS_2D,
    "Model2D.__getstate__": "self",
    "Model2D.create_point": "self, x, y",
    "Model2D.create_pl_line": "self, points, is_phreatic=False",
    "Model2D.create_layer": f"self, boundary_top, {LAYER}",
    "Model2D.create_vertical": "self, x",
    "Model2D.create_non_uniform_load": LOAD,
    "Model2D._create_curves": "self, points",
    "Model2D._create_curve": "self, p1, p2",
    "Model2D._create_boundary": "self, points",
    "Model2D._validate": "self",
    "Model2D._serialize": "self",
    "Model2D._serialize_points": "self",
    "Model2D._serialize_curves": "self",
    "Model2D._serialize_boundaries": "self",
    "Model2D._serialize_pl_lines": "self",
    "Model2D._serialize_layers": "self",
}
# What Python itself looks for has the same parameters in all classes.
SPECIAL = {
    "__eq__": "self, other",
    "__hash__": "self",
    "__repr__": "self",
    "__setattr__": "self, name, value",
    "__delattr__": "self, name",
}


def operations() -> dict[str, Any]:
    """Every operation of the module by the path to it, properties and class methods included."""
    found = {}
    for owner, cls in vars(dsettlement).items():
        if not isinstance(cls, type) or cls.__module__ != dsettlement.__name__:
            continue
        for name, member in vars(cls).items():
            operation = getattr(member, "__func__", getattr(member, "fget", member))
            if type(operation) is type(Model1D.__init__):
                found[f"{owner}.{name}"] = operation
    return found


OPERATIONS = operations()


def parameters_of(path: str) -> str:
    """The parameters of an operation as text; those that are in no table are properties."""
    owner, name = path.split(".")
    if isinstance(vars(getattr(dsettlement, owner))[name], property):
        return "self"
    return SPECIAL[name] if name in SPECIAL else SIGNATURES[path]


def pytest_generate_tests(metafunc: pytest.Metafunc) -> None:
    """Run a test that asks for a `path` for every operation, and as `constructor` for some."""
    if "path" in metafunc.fixturenames:
        metafunc.parametrize("path", OPERATIONS)
    if "constructor" in metafunc.fixturenames:
        constructors = [path for path in SIGNATURES if path.endswith("__init__")]
        constructors.remove("_Model.__init__")
        metafunc.parametrize("constructor", [path.split(".")[0] for path in constructors])


@pytest.fixture
def operation(path: str) -> Any:
    """The operation as it stands on its class."""
    return OPERATIONS[path]


@pytest.fixture
def make_counterpart(soil_parameters: dict[str, Any]) -> Callable[[str], Any]:
    """Make a class of the same name, written in Python, with that one operation."""

    def make(path: str) -> Any:
        owner, name = path.split(".")
        soil = ", ".join(
            f"{parameter}={soil_parameters[parameter]!r}" for parameter in soil_parameters
        )
        parameters = parameters_of(path).format(soil_parameters=soil)
        namespace: dict[str, Any] = {}
        exec(f"class {owner}:\n def {name}({parameters}): pass", namespace)
        return namespace[owner]

    return make


@pytest.fixture
def counterpart(path: str, make_counterpart: Callable[[str], Any]) -> Any:
    """The same operation, written in Python."""
    return getattr(make_counterpart(path), path.split(".")[1])
