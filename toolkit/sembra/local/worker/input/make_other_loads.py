"""Uniform, trapeziform, circular and rectangular loads, from the other loads of a file."""

from collections.abc import Callable, Mapping

from sembra.local.sli.other_loads import (
    KindOfLoad,
    OtherLoad,
    UnknownLoad,
    find_unknown_loads,
    read_other_loads,
)
from sembra.local.sli.sections import Section
from sembra.local.worker.failures import NotCoveredError, Problems
from sembra.local.worker.input.make_embankments import check_time
from sembra.local.worker.input.make_options import make_spreading
from sembra.local.worker.loads.circular import CircularLoad
from sembra.local.worker.loads.load import Load
from sembra.local.worker.loads.rectangular import RectangularLoad
from sembra.local.worker.loads.trapeziform import TrapeziformLoad, Trapezium
from sembra.local.worker.loads.uniform import UniformLoad

_UNCOVERED = {4: "tank"}


def make_other_loads(whole: Section, problems: Problems) -> tuple[Load, ...]:
    """Return the loads of the section, in its order.

    Args:
        whole: The whole file.
        problems: Gathers what can't be calculated with.

    Raises:
        InputFileError: The section is malformed.
        NotCoveredError: There is a load of a kind that the worker doesn't calculate.
    """
    if unknown := find_unknown_loads(whole):
        raise NotCoveredError(*map(_gap, unknown))
    loads = []
    for load in read_other_loads(whole):
        with problems.collecting():
            check_time(load.name, load.time)
            loads.append(_MAKERS[load.kind](load, whole))
    return tuple(loads)


def _gap(load: UnknownLoad) -> str:
    return f'{_UNCOVERED.get(load.code, "other")} loads (load "{load.name}")'


def _trapeziform(load: OtherLoad, whole: Section) -> Load:
    unit_weight, height = load.weight
    spreading = make_spreading(whole)
    return TrapeziformLoad(
        load.name,
        load.time,
        unit_weight * height,
        Trapezium(*load.place),
        spreading.trapeziform_width,
        spreading.distribution,
    )


def _circular(load: OtherLoad, _whole: Section) -> Load:
    return CircularLoad(load.name, load.time, *load.weight, *load.place)


def _rectangular(load: OtherLoad, _whole: Section) -> Load:
    return RectangularLoad(load.name, load.time, *load.weight, *load.place)


def _uniform(load: OtherLoad, _whole: Section) -> Load:
    return UniformLoad(load.name, load.time, *load.weight, *load.place)


_MAKERS: Mapping[KindOfLoad, Callable[[OtherLoad, Section], Load]] = {
    KindOfLoad.TRAPEZIFORM: _trapeziform,
    KindOfLoad.CIRCULAR: _circular,
    KindOfLoad.RECTANGULAR: _rectangular,
    KindOfLoad.UNIFORM: _uniform,
}
