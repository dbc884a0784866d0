"""Puts the sections of an input file together."""

from collections.abc import Mapping, Sequence

from sembra.local.worker.consolidation.table import CONSOLIDATIONS
from sembra.local.worker.errors import NotCoveredError
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.cross_section import Geometry2D, LevelGround
from sembra.local.worker.ground.material import Material
from sembra.local.worker.input.coverage import Coverage
from sembra.local.worker.input.drains import read_drains
from sembra.local.worker.input.geometry_1d import read_column
from sembra.local.worker.input.geometry_2d import read_geometry
from sembra.local.worker.input.loads import count_loads, read_embankments
from sembra.local.worker.input.options import (
    Labelled,
    read_options,
    read_residual_times,
    read_spreading,
)
from sembra.local.worker.input.other_loads import read_other_loads
from sembra.local.worker.input.sections import Section, read_whole
from sembra.local.worker.input.soils import Materials
from sembra.local.worker.loads.load import Load
from sembra.local.worker.loads.non_uniform import Site, strip_loads
from sembra.local.worker.loads.strip_load import StripLoad
from sembra.local.worker.loads.superelevation import MaintainedProfile
from sembra.local.worker.options import Options
from sembra.local.worker.project import Project
from sembra.local.worker.soil_models.table import SOIL_MODELS


def read_project(text: str) -> Project:
    """Return the project that the text of an `.sli` file describes.

    Args:
        text: the file, with CRLF, LF or CR as line ends.

    Raises:
        InputFileError: the text is malformed; the message names section and line.
        NotCoveredError: the file asks for what the worker doesn't calculate; the message names all
            of it.
    """
    whole = read_whole(text).section("INPUT DATA")
    coverage = Coverage(whole)
    options = read_options(whole)
    model = Labelled(whole.section("MODEL"))
    soil_model = SOIL_MODELS[model.one_of("Model", SOIL_MODELS)]
    materials = Materials(whole, soil_model)
    ground = _read_ground(whole, materials)
    embankments: Sequence[StripLoad] = ()
    profile = None
    others: Sequence[Load] = ()
    drains = None
    with coverage.collecting():
        if stated := read_embankments(whole, options.end):
            site = _read_site(whole, ground, options)
            embankments = strip_loads(stated, site)
            if options.superelevation:
                profile = MaintainedProfile(options.superelevation, stated, site)
    with coverage.collecting():
        others = read_other_loads(whole)
    with coverage.collecting():
        drains = read_drains(whole)
    _collect_uncovered(whole, coverage)
    coverage.check()
    loads: tuple[Load, ...] = (*others, *embankments)
    for load in loads:
        if load.time >= options.end:
            raise whole.section("CALCULATION OPTIONS").error(
                f'the load "{load.name}" comes at {load.time:g} days, which is not before '
                f"the end of consolidation at {options.end:g} days"
            )
    columns: list[Column] = []
    cursor = whole.section("VERTICALS").cursor()
    for number in range(1, cursor.count("the number of verticals") + 1):
        x, z = cursor.numbers(f"X and Z of vertical {number}", 2)
        columns.append(ground.column(x, z))
    if not columns:
        raise cursor.error("there are no verticals")
    return Project(
        soil_model=soil_model,
        consolidation=CONSOLIDATIONS[model.one_of("Calculation type", CONSOLIDATIONS)],
        columns=tuple(columns),
        loads=loads,
        options=options,
        residual_times=read_residual_times(whole, options.end),
        load_areas=tuple(load.area for load in embankments),
        drains=drains,
        profile=profile,
        remarks=coverage.remarks,
    )


_NOT_YET = {
    "Imaginary surface": "an imaginary surface",
}


def _collect_uncovered(whole: Section, coverage: Coverage) -> None:
    options = Labelled(whole.section("CALCULATION OPTIONS"))
    for label, what in _NOT_YET.items():
        with coverage.collecting():
            if options.switch(label, absent=False):
                raise NotCoveredError(what)
    with coverage.collecting():
        if count_loads(whole, "WATER LOADS"):
            raise NotCoveredError("water loads")


def _read_ground(whole: Section, materials: Mapping[str, Material]) -> LevelGround | Geometry2D:
    if Labelled(whole.section("MODEL")).switch("Dimension"):
        return read_geometry(whole, materials)
    return LevelGround(read_column(whole, materials))


def _read_site(whole: Section, ground: LevelGround | Geometry2D, options: Options) -> Site:
    """Return what non-uniform loads stand on."""
    return Site(
        surface=ground.surface,
        phreatic_line=ground.phreatic_line,
        water_unit_weight=options.water_unit_weight,
        spreading=read_spreading(whole),
    )
