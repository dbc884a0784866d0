"""Puts the sections of an input file together."""

from collections.abc import Iterator, Sequence

from sembra.local.sli.labelled import Labelled
from sembra.local.sli.sections import Section, read_whole
from sembra.local.sli.verticals import read_verticals
from sembra.local.worker.consolidation.table import CONSOLIDATIONS
from sembra.local.worker.failures import Problems
from sembra.local.worker.ground.cross_section import CrossSection, LevelGround
from sembra.local.worker.input.coverage import find_gaps, left_away
from sembra.local.worker.input.make_drains import make_drains
from sembra.local.worker.input.make_embankments import make_embankments
from sembra.local.worker.input.make_ground import make_ground
from sembra.local.worker.input.make_options import (
    make_options,
    make_spreading,
    read_times,
)
from sembra.local.worker.input.make_other_loads import make_other_loads
from sembra.local.worker.input.make_water_loads import make_water_loads
from sembra.local.worker.input.remarks import fast_consolidation, late_loads, late_times, light_soil
from sembra.local.worker.input.soils import Materials
from sembra.local.worker.loads.load import Load
from sembra.local.worker.loads.non_uniform import Site, strip_loads
from sembra.local.worker.loads.strip_load import StripLoad
from sembra.local.worker.loads.superelevation import NAME, MaintainedProfile
from sembra.local.worker.loads.uniform import UniformLoad
from sembra.local.worker.options import Options
from sembra.local.worker.project import Project
from sembra.local.worker.soil_models.table import SOIL_MODELS


def read_project(text: str) -> Project:
    """Return the project that the text of an `.sli` file describes.

    Args:
        text: The file, with CRLF, LF or CR as line ends.

    Raises:
        InputFileError: The text is malformed; the message names section and line.
        WorkerError: The file asks for what the worker doesn't calculate, or for what can't be
            calculated; the message names all of it.
    """
    whole = read_whole(text).section("INPUT DATA")
    problems = Problems(find_gaps(whole))
    options = make_options(whole)
    model = Labelled(whole.section("MODEL"))
    consolidation = CONSOLIDATIONS[model.one_of("Calculation type", CONSOLIDATIONS)]
    soil_model = SOIL_MODELS[model.one_of("Model", SOIL_MODELS)]
    materials = Materials(whole, soil_model, problems)
    ground = make_ground(whole, materials, options.water_unit_weight)
    embankments: Sequence[StripLoad] = ()
    profile = None
    others: Sequence[Load] = ()
    water: Sequence[Load] = ()
    drains = None
    with problems.collecting():
        if stated := make_embankments(whole, options.end, problems):
            site = _read_site(whole, ground, options)
            embankments = strip_loads(stated, site)
            if options.superelevation and options.superelevation.time < options.end:
                profile = MaintainedProfile(options.superelevation, stated, site)
    with problems.collecting():
        others = make_other_loads(whole, problems)
    with problems.collecting():
        water = make_water_loads(whole, ground, options.water_unit_weight, problems)
    with problems.collecting():
        drains = make_drains(whole, problems)
    times: tuple[float, ...] = ()
    with problems.collecting():
        times = read_times(whole)
    columns = []
    for vertical in read_verticals(whole):
        with problems.collecting():
            columns.append(ground.column(vertical.x, vertical.z))
    problems.check()
    if not columns:
        raise whole.section("VERTICALS").error("there are no verticals")
    loads: Sequence[Load] = (*others, *embankments, *water)
    if options.submerging and not (others or embankments):
        # D-Settlement keeps a load of its own for submerging, so that water loads aren't alone.
        loads = (*loads, UniformLoad("Submerging", 0.0, 0.0, 0.0, 0.0))
    late = [load.name for load in loads if load.time >= options.end]
    if options.superelevation and options.superelevation.time >= options.end:
        late.append(NAME)
    return Project(
        soil_model=soil_model,
        consolidation=consolidation,
        columns=tuple(columns),
        loads=tuple(load for load in loads if load.time < options.end),
        options=options,
        residual_times=tuple(time for time in times if time <= options.end),
        load_areas=tuple(load.area for load in embankments),
        drains=drains,
        profile=profile,
        remarks=(
            *left_away(whole),
            *late_loads(late, options.end),
            *late_times(times, options.end),
            *fast_consolidation(columns, consolidation),
            *light_soil(columns, options.water_unit_weight),
            *_without_profile(options, embankments),
        ),
    )


def _read_site(whole: Section, ground: LevelGround | CrossSection, options: Options) -> Site:
    """Return what non-uniform loads stand on."""
    return Site(
        surface=ground.surface,
        phreatic_line=ground.phreatic_line,
        water_unit_weight=options.water_unit_weight,
        spreading=make_spreading(whole),
    )


def _without_profile(options: Options, embankments: Sequence[StripLoad]) -> Iterator[str]:
    """Return what the user should know about a profile to maintain where there is none."""
    if options.superelevation and not embankments:
        yield "There is no non-uniform load whose profile could be maintained."
