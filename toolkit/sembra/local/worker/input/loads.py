"""Embankments, from the non-uniform loads of a file."""

from sembra.local.sli.errors import InputFileError
from sembra.local.sli.non_uniform_loads import NonUniformLoad, read_non_uniform_loads
from sembra.local.sli.sections import Section
from sembra.local.worker.ground.polyline import Polyline
from sembra.local.worker.loads.non_uniform import Embankment


def read_embankments(whole: Section, end_of_calculation: float) -> tuple[Embankment, ...]:
    """The non-uniform loads of the file, in its order.

    Args:
        whole: the whole file.
        end_of_calculation: in days; a removal that comes later never happens.

    Raises:
        InputFileError: the section is malformed.
    """
    return tuple(_embankment(load, end_of_calculation) for load in read_non_uniform_loads(whole))


def _embankment(load: NonUniformLoad, end_of_calculation: float) -> Embankment:
    try:
        outline = Polyline(load.outline)
    except ValueError as error:
        raise InputFileError(
            "NON-UNIFORM LOADS", load.line, f'load "{load.name}": {error}'
        ) from None
    return Embankment(
        load.name,
        load.time,
        load.end_time if load.temporary and load.end_time < end_of_calculation else None,
        load.unit_weight_dry,
        load.unit_weight_wet,
        outline,
    )
