"""The section NON-UNIFORM LOADS, and what the sections of loads have in common.

An embankment takes a line with its name, one with its time, unit weights, a
mark for a temporary load and the time of its removal, and its outline.
"""

from sembra.local.input_file.sections import Cursor, Section
from sembra.local.worker.ground.polyline import Polyline
from sembra.local.worker.loads.non_uniform import Embankment

_INITIAL_TIME = -1


def read_embankments(whole: Section, end_of_calculation: float) -> tuple[Embankment, ...]:
    """The non-uniform loads of the file, in its order.

    Args:
        whole: the whole file.
        end_of_calculation: in days; a removal that comes later never happens.

    Raises:
        InputFileError: the section is malformed.
    """
    cursor = whole.section("NON-UNIFORM LOADS").cursor()
    count = cursor.count("the number of loads")
    return tuple(
        _read_embankment(cursor, number, end_of_calculation) for number in range(1, count + 1)
    )


def _read_embankment(cursor: Cursor, number: int, end_of_calculation: float) -> Embankment:
    name = cursor.name(f"the name of load {number}")
    time, dry, wet, temporary, end = cursor.numbers(
        f"time, unit weights, temporary and end time of load {number}", 5
    )
    check_time(cursor, name, time)
    if temporary not in (0, 1):
        raise cursor.error(f'"temporary" of load "{name}" should be 0 or 1 and is {temporary:g}')
    if temporary and end <= max(time, 0.0):
        raise cursor.error(f'the load "{name}" is removed before it comes')
    points = []
    for _ in range(cursor.count("the number of co-ordinates")):
        x, y = cursor.numbers("X and Y of a load", 2)
        points.append((x, y))
    try:
        outline = Polyline(tuple(points))
    except ValueError as error:
        raise cursor.error(f'load "{name}": {error}') from None
    removal = end if temporary and end < end_of_calculation else None
    return Embankment(name, time, removal, dry, wet, outline)


def check_time(cursor: Cursor, name: str, time: float) -> None:
    """Refuse the time of a load that is negative and not that of initial loads.

    Raises:
        InputFileError: it is.
    """
    if time < 0 and time != _INITIAL_TIME:
        raise cursor.error(f'the time of load "{name}" is {time:g}, which is neither -1 nor later')
