"""Rebuilding a sample through the public interface: what one and two dimensions share."""

from io import BytesIO
from typing import Any

from sembra.core import Color
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    Metadata,
    Model1D,
    Model2D,
)

from tests.toolkit.sli import SliFile, soil_parameters


def models(sample: SliFile) -> tuple[CalculationModel, ConsolidationModel]:
    """Return the first two arguments of a model."""
    return (
        CalculationModel(int(sample.option("MODEL", "Model"))),
        ConsolidationModel(int(sample.option("MODEL", "Calculation type"))),
    )


def options(sample: SliFile) -> dict[str, Any]:
    """Return the keyword arguments that both kinds of model take."""
    section = "CALCULATION OPTIONS"
    return {
        "create_default_materials": False,
        "natural_strain": sample.option("MODEL", "Strain type") == "1",
        "water_unit_weight": sample.number("WATER", "Unit Weight of Water"),
        "maintain_profile": sample.option(section, "Maintain profile") == "1",
        "profile_unit_weight_above_phreatic_level": sample.number(
            section, "Gamma dry superelevation"
        ),
        "profile_unit_weight_below_phreatic_level": sample.number(
            section, "Gamma wet superelevation"
        ),
        "end_of_settlement_calculation": int(sample.option(section, "End of consolidation [days]")),
    }


def create_materials(model: Model1D | Model2D, sample: SliFile) -> None:
    """Take over the materials."""
    for lines in sample.soils:
        name, parameters = soil_parameters(lines)
        color = Color.from_deltares(parameters.pop("color"))
        model.create_material(name, color=color, **parameters)


def create_uniform_loads(model: Model1D | Model2D, sample: SliFile) -> None:
    """Take over the uniform loads."""
    for load in sample.other_loads:
        model.create_uniform_load(*load)


def generate(model: Model1D | Model2D, sample: SliFile) -> SliFile:
    """Take over the calculation times, the identification and the vertical of the dissipation.

    Returns:
        The file that the service fills in for the model.
    """
    model.set_calculation_times(*sample.residual_times)
    section = "CALCULATION OPTIONS"
    if sample.option(section, "Dissipation") == "1":
        x = sample.number(section, "X co-ordinate dissipation")
        dissipation = next(vertical for vertical in model.verticals if vertical.x == x)
    else:
        dissipation = None
    file = model.generate_input_file(metadata(sample), dissipation_calculation=dissipation)
    assert isinstance(file, BytesIO)
    return SliFile(file.getvalue().decode())


def metadata(sample: SliFile) -> Metadata:
    """Take over the identification."""
    title_1, title_2, title_3 = sample.sections["RUN IDENTIFICATION"]
    return Metadata(
        file_name=sample.header_value("FILENAME"),
        company=sample.header_value("COMPANY"),
        created_by=sample.header_value("CREATED BY"),
        title_1=title_1,
        title_2=title_2,
        title_3=title_3,
    )
