"""Water loads, from those of a file."""

from dataclasses import replace

from sembra.local.sli.sections import Section
from sembra.local.sli.water_loads import count_water_loads, read_water_loads
from sembra.local.worker.failures import NotCoveredError, Problems
from sembra.local.worker.ground.cross_section import CrossSection, LevelGround
from sembra.local.worker.input.make_cross_section import make_pl_lines
from sembra.local.worker.input.make_ground import with_imaginary_surface
from sembra.local.worker.loads.water_load import WaterLoad, WaterStage, water_loads


def make_water_loads(
    whole: Section, ground: LevelGround | CrossSection, water_unit_weight: float, problems: Problems
) -> tuple[WaterLoad, ...]:
    """Return the water loads of the file, in the order of time.

    Args:
        whole: The whole file.
        ground: The ground with its initial water levels.
        water_unit_weight: In kN/m³.
        problems: Gathers what can't be calculated with.

    Raises:
        InputFileError: The section is malformed, or it refers to what doesn't exist.
        NotCoveredError: There are some in a one-dimensional file.
    """
    if not count_water_loads(whole):
        return ()
    if isinstance(ground, LevelGround):
        raise NotCoveredError("water loads on one-dimensional models")
    pl_lines = make_pl_lines(whole)
    stages = []
    for load in read_water_loads(whole, len(ground.layers), pl_lines):
        if load.time < 0:
            problems.add(
                f'The water load "{load.name}" comes at {load.time:g} days. That should not be '
                "negative."
            )
        layers = tuple(
            replace(
                layer, head_top=pl_lines.get(top, top), head_bottom=pl_lines.get(bottom, bottom)
            )
            for layer, (top, bottom) in zip(ground.layers, reversed(load.pl_lines), strict=True)
        )
        changed = replace(ground, layers=layers, phreatic_line=pl_lines[load.phreatic_line])
        stages.append(
            WaterStage(
                load.name, load.time, with_imaginary_surface(whole, changed, water_unit_weight)
            )
        )
    return tuple(water_loads(ground, stages, water_unit_weight))
