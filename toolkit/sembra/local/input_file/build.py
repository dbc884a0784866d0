"""A model, built from what an input file says."""

from collections.abc import Iterable
from dataclasses import dataclass, field
from typing import TYPE_CHECKING, Any

from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    Metadata,
    Model1D,
    Model2D,
)

from sembra.core import Color
from sembra.errors import ModelError
from sembra.local.input_file.drains import read_drain
from sembra.local.input_file.layers import create_layers
from sembra.local.input_file.left_out import LeftOut, Reason
from sembra.local.input_file.loads import (
    create_non_uniform_loads,
    create_uniform_loads,
    loads_of_cross_sections,
    water_loads,
)
from sembra.local.input_file.points_of_loads import with_points_of_loads
from sembra.local.service.soil import LINES, Parameter
from sembra.local.sli.materials import StatedMaterial
from sembra.local.sli.whole_file import InputFile

if TYPE_CHECKING:
    from sembra.external.dsettlement import Vertical

LONGEST_TITLE = 50
"""How many characters of a title the metadata hold."""

KEYWORDS = {"pop_": "pop"}
"""Keywords of `create_material` that aren't called as the key of the document."""

WITHOUT_DEFAULT = ("gam_dry", "gam_wet")
"""What a material has to have."""


@dataclass
class Built:
    """A model, the vertical of its dissipation, and what was left out on the way."""

    model: Model1D | Model2D
    dissipation: "Vertical | None" = None
    left_out: list[LeftOut] = field(default_factory=list)


def build(file: InputFile) -> Built:
    """Build the model of a file.

    Raises:
        InputFileError: The file is malformed.
        ModelError: No model can have its geometry, drains or options.
    """
    built = _build_1d(file) if file.is_1d else _build_2d(file)
    model = built.model
    built.left_out += create_uniform_loads(model, file.other_loads)
    built.left_out += water_loads(file)
    built.left_out += _set_times(model, file)
    built.dissipation, left_out = _dissipation(model, file)
    built.left_out += left_out
    return built


def metadata_of(file: InputFile) -> Metadata:
    """Return the identification of a file, with titles as long as they may be."""
    first, second, third = (title[:LONGEST_TITLE] for title in file.titles)

    def header(label: str) -> str:
        return file.header.get(label, (0, ""))[1]

    return Metadata(
        header("FILENAME"), header("COMPANY"), header("CREATED BY"), first, second, third
    )


def _build_1d(file: InputFile) -> Built:
    verticals = file.verticals
    model = Model1D(
        *_models(file),
        vertical_drain=read_drain(file),
        verticals_z_coordinate=verticals[0].z if verticals else 0.0,
        **_options(file),
    )
    _create_materials(model, file.materials.values())
    column = file.column
    layers = [(layer.top, layer.material) for layer in column.layers]
    model.update_geometry(column.bottom, layers, phreatic_level=column.phreatic_level)
    built = Built(model)
    for vertical in verticals:
        if (vertical.x, vertical.z) != (0.0, verticals[0].z):
            built.left_out.append(_vertical(vertical.line, vertical.x, Reason.ONE_DIMENSION))
    built.left_out += loads_of_cross_sections(file)
    return built


def _build_2d(file: InputFile) -> Built:
    geometry = file.cross_section
    # The surface first: it is what most loads begin and end on.
    numbers = [geometry.layers[0].bottom, *(layer.top for layer in geometry.layers)][::-1]
    lines, loads = with_points_of_loads(
        [geometry.boundaries[number].points for number in numbers], file.non_uniform_loads
    )
    boundaries = dict(zip(numbers, lines, strict=True))
    bottom = boundaries[geometry.layers[0].bottom]
    verticals = file.verticals
    model = Model2D(
        *_models(file),
        list(bottom),
        limits=(bottom[0][0], bottom[-1][0]),
        profile_time=_whole(file.options.number("Time superelevation")),
        stress_distribution_loads=file.options.switch("Stress distribution loads", absent=False),
        vertical_drain=read_drain(file),
        verticals_z_coordinate=verticals[0].z if verticals else 0.0,
        **_options(file),
    )
    _create_materials(model, file.materials.values())
    built = Built(model, None, create_layers(model, geometry, boundaries))
    for vertical in verticals:
        if vertical.z != verticals[0].z:
            built.left_out.append(_vertical(vertical.line, vertical.x, Reason.NO_KEY))
            continue
        try:
            model.create_vertical(vertical.x)
        except ModelError as error:
            built.left_out.append(_vertical(vertical.line, vertical.x, Reason.REFUSED, str(error)))
    built.left_out += create_non_uniform_loads(model, loads)
    return built


def _models(file: InputFile) -> tuple[CalculationModel, ConsolidationModel]:
    calculation = file.model.one_of("Model", [member.value for member in CalculationModel])
    consolidation = file.model.one_of(
        "Calculation type", [member.value for member in ConsolidationModel]
    )
    return CalculationModel(calculation), ConsolidationModel(consolidation)


def _options(file: InputFile) -> dict[str, Any]:
    """Return the keywords that both kinds of model take."""
    options = file.options
    return {
        "create_default_materials": False,
        "natural_strain": file.model.switch("Strain type"),
        "water_unit_weight": file.water_unit_weight,
        "maintain_profile": options.switch("Maintain profile"),
        "profile_unit_weight_above_phreatic_level": options.number("Gamma dry superelevation"),
        "profile_unit_weight_below_phreatic_level": options.number("Gamma wet superelevation"),
        "end_of_settlement_calculation": _whole(options.number("End of consolidation [days]")),
    }


def _whole(days: float) -> int:
    """Return days as a model has them; what is lost is found when the files are compared."""
    return int(days)


def _create_materials(model: Model1D | Model2D, materials: Iterable[StatedMaterial]) -> None:
    for material in materials:
        parameters: dict[str, Any] = {
            KEYWORDS.get(line.key, line.key): _parameter(material, line)
            for line in LINES
            if isinstance(line, Parameter)
            and (line.label in material.entries or line.key in WITHOUT_DEFAULT)
        }
        color = parameters.pop("color", None)
        model.create_material(
            material.name,
            color=None if color is None else Color.from_deltares(color),
            **parameters,
        )


def _parameter(material: StatedMaterial, line: Parameter) -> float:
    return material.code(line.label) if line.layout == "d" else material.number(line.label)


def _set_times(model: Model1D | Model2D, file: InputFile) -> list[LeftOut]:
    """Take over the calculation times that a model can have."""
    end = file.options.number("End of consolidation [days]")
    kept: dict[int, None] = {}
    left_out = []
    for time in file.residual_times:
        if not time.days.is_integer():
            reason = Reason.WHOLE_DAYS
        elif not 0 <= time.days <= end or int(time.days) in kept:
            reason = Reason.REFUSED
        else:
            kept[int(time.days)] = None
            continue
        what = f"the time {time.days:g}"
        left_out.append(LeftOut("RESIDUAL TIMES", time.line, what, "", "", reason))
    model.set_calculation_times(*kept)
    return left_out


def _dissipation(
    model: Model1D | Model2D, file: InputFile
) -> "tuple[Vertical | None, list[LeftOut]]":
    """Return the vertical that the dissipation is wanted for."""
    options = file.options
    if not options.switch("Dissipation", absent=False):
        return None, []
    x = options.number("X co-ordinate dissipation")
    for vertical in model.verticals:
        if vertical.x == x:
            return vertical, []
    line = options.entry("Dissipation").line
    message = f"no vertical stands at x = {x:g} m"
    return None, [
        LeftOut("CALCULATION OPTIONS", line, "Dissipation", "1", "0", Reason.REFUSED, message)
    ]


def _vertical(line: int, x: float, reason: Reason, message: str = "") -> LeftOut:
    return LeftOut("VERTICALS", line, f"the vertical at x = {x:g} m", "", "", reason, message)
