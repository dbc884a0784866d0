"""Embankments, from the non-uniform loads of a file."""

from sembra.local.sli.non_uniform_loads import NonUniformLoad, read_non_uniform_loads
from sembra.local.sli.sections import Section
from sembra.local.worker.failures import Problems, WorkerError
from sembra.local.worker.ground.polyline import Polyline
from sembra.local.worker.loads.non_uniform import Embankment

_INITIAL_TIME = -1


def check_time(name: str, time: float) -> None:
    """Refuse the time of a load that is negative and not that of initial loads.

    Raises:
        WorkerError: It is.
    """
    if time < 0 and time != _INITIAL_TIME:
        raise WorkerError(
            f'The load "{name}" comes at {time:g} days. That should be {_INITIAL_TIME}, for a load '
            "of the initial state, or not negative."
        )


def make_embankments(
    whole: Section, end_of_calculation: float, problems: Problems
) -> tuple[Embankment, ...]:
    """Return the non-uniform loads of the file, in its order.

    Args:
        whole: The whole file.
        end_of_calculation: In days; a removal that comes later never happens.
        problems: Gathers what can't be calculated with.

    Raises:
        InputFileError: The section is malformed.
    """
    embankments = []
    for load in read_non_uniform_loads(whole):
        with problems.collecting():
            check_time(load.name, load.time)
            embankments.append(_embankment(load, end_of_calculation))
    return tuple(embankments)


def _embankment(load: NonUniformLoad, end_of_calculation: float) -> Embankment:
    if load.temporary and load.end_time <= max(load.time, 0.0):
        raise WorkerError(
            f'The load "{load.name}" is removed at {load.end_time:g} days, and comes no earlier.'
        )
    try:
        outline = Polyline(load.outline)
    except ValueError as error:
        raise WorkerError(
            f'The outline of the load "{load.name}" can\'t be used: {error}.'
        ) from None
    return Embankment(
        load.name,
        load.time,
        load.end_time if load.temporary and load.end_time < end_of_calculation else None,
        load.unit_weight_dry,
        load.unit_weight_wet,
        outline,
    )
