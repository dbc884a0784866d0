"""The section WATER LOADS: other phreatic and piezometric levels from a time on.

A water load takes a line with its name, its time, the number of the phreatic line, the number of
layers, and for each of them, the lowest first, those of the lines at its top and bottom.
"""

from collections.abc import Mapping
from dataclasses import replace

from sembra.local.input_file.sections import Cursor, Section
from sembra.local.worker.errors import NotCoveredError
from sembra.local.worker.ground.cross_section import Geometry2D, LevelGround
from sembra.local.worker.ground.polyline import Polyline
from sembra.local.worker.input.geometry_2d import read_head, read_pl_line, read_pl_lines
from sembra.local.worker.input.ground import with_imaginary_surface
from sembra.local.worker.loads.water_load import WaterLoad, WaterStage, water_loads


def read_water_loads(
    whole: Section, ground: LevelGround | Geometry2D, water_unit_weight: float
) -> tuple[WaterLoad, ...]:
    """The water loads of the file, in the order of time.

    Raises:
        InputFileError: the section is malformed, or it refers to what doesn't exist.
        NotCoveredError: there are some in a one-dimensional file.
    """
    cursor = whole.section("WATER LOADS").cursor()
    count = cursor.count("the number of loads")
    if count and isinstance(ground, LevelGround):
        raise NotCoveredError("water loads on one-dimensional models")
    if not count or isinstance(ground, LevelGround):
        return ()
    pl_lines = read_pl_lines(whole)
    stages = []
    for number in range(1, count + 1):
        name = cursor.name(f"the name of water load {number}")
        time = cursor.number(f'the time of water load "{name}"')
        if time < 0:
            raise cursor.error(f'the time of water load "{name}" is {time:g}, which is negative')
        changed = with_imaginary_surface(
            whole, _read_lines(cursor, name, ground, pl_lines), water_unit_weight
        )
        stages.append(WaterStage(name, time, changed))
    return tuple(water_loads(ground, stages, water_unit_weight))


def _read_lines(
    cursor: Cursor, name: str, ground: Geometry2D, pl_lines: Mapping[int, Polyline]
) -> Geometry2D:
    """The ground with the phreatic line and the pl-lines of a water load."""
    phreatic_line = read_pl_line(cursor, pl_lines)
    if cursor.count("the number of layers") != len(ground.layers):
        raise cursor.error(f'the water load "{name}" is not for {len(ground.layers)} layers')
    layers = []
    for layer in reversed(ground.layers):
        top, bottom = cursor.integers(f'the pl-lines of water load "{name}"', 2)
        layers.append(
            replace(
                layer,
                head_top=read_head(cursor, top, pl_lines),
                head_bottom=read_head(cursor, bottom, pl_lines),
            )
        )
    return replace(ground, layers=tuple(reversed(layers)), phreatic_line=phreatic_line)
