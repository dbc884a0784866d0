"""Loads of a file, put into a model."""

from collections.abc import Iterable, Sequence

from sembra.external.dsettlement import Model1D, Model2D

from sembra.errors import ModelError
from sembra.local.input_file.left_out import LeftOut, Reason
from sembra.local.sli.non_uniform_loads import NonUniformLoad
from sembra.local.sli.other_loads import KindOfLoad, OtherLoad
from sembra.local.sli.whole_file import InputFile

_OTHER = "OTHER LOADS"
_NON_UNIFORM = "NON-UNIFORM LOADS"
_WATER = "WATER LOADS"


def create_uniform_loads(model: Model1D | Model2D, loads: Iterable[OtherLoad]) -> list[LeftOut]:
    """Put the uniform loads of a file into a model, and return what it doesn't take."""
    left_out = []
    for load in loads:
        kind = load.kind.name.lower()
        told = f'the {kind} load "{load.name}"'
        if load.kind is not KindOfLoad.UNIFORM:
            left_out.append(_left_out(_OTHER, load.line, told, Reason.KIND_OF_LOAD))
        elif not load.time.is_integer():
            left_out.append(_left_out(_OTHER, load.line, told, Reason.WHOLE_DAYS))
        else:
            try:
                model.create_uniform_load(load.name, int(load.time), *load.weight, *load.place)
            except ModelError as error:
                left_out.append(_left_out(_OTHER, load.line, told, Reason.REFUSED, str(error)))
    return left_out


def create_non_uniform_loads(model: Model2D, loads: Sequence[NonUniformLoad]) -> list[LeftOut]:
    """Put the non-uniform loads of a file into a model, and return what it doesn't take.

    Args:
        model: The model, with all its layers.
        loads: The loads, with points where later ones begin or end.
    """
    left_out = []
    for load in loads:
        told = f'the load "{load.name}"'
        if not (load.time.is_integer() and load.end_time.is_integer()):
            left_out.append(_left_out(_NON_UNIFORM, load.line, told, Reason.WHOLE_DAYS))
            continue
        end_time = load.end_time if load.temporary else max(load.time, load.end_time)
        try:
            model.create_non_uniform_load(
                load.name,
                list(load.outline),
                int(load.time),
                int(end_time),
                load.unit_weight_dry,
                load.unit_weight_wet,
                load.temporary,
            )
        except ModelError as error:
            left_out.append(_left_out(_NON_UNIFORM, load.line, told, Reason.REFUSED, str(error)))
            continue
        if end_time != load.end_time:
            left_out.append(
                LeftOut(
                    _NON_UNIFORM, load.line, f"the end time of {told}", f"{load.end_time:g}",
                    f"{end_time:g}", Reason.END_TIME,
                )
            )  # fmt: skip
    return left_out


def loads_of_cross_sections(file: InputFile) -> list[LeftOut]:
    """Return the loads of a one-dimensional file that only cross-sections have."""
    return [
        _left_out(_NON_UNIFORM, load.line, f'the load "{load.name}"', Reason.ONE_DIMENSION)
        for load in file.non_uniform_loads
    ]


def water_loads(file: InputFile) -> list[LeftOut]:
    """Return the water loads of a file, none of which a model can hold."""
    return [
        LeftOut(
            _WATER, load.line, f'the water load "{load.name}"', f"{load.time:g} days", "",
            Reason.NO_KEY,
        )
        for load in file.water_loads
    ]  # fmt: skip


def _left_out(section: str, line: int, what: str, reason: Reason, message: str = "") -> LeftOut:
    return LeftOut(section, line, what, "", "", reason, message)
