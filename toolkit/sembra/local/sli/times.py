"""Times of loads."""

from sembra.local.sli.sections import Cursor

INITIAL = -1
"""Stands for the time of loads that are there before the calculation begins."""


def check_time(cursor: Cursor, name: str, time: float) -> None:
    """Refuse the time of a load that is negative and not that of initial loads.

    Raises:
        InputFileError: it is.
    """
    if time < 0 and time != INITIAL:
        raise cursor.error(f'the time of load "{name}" is {time:g}, which is neither -1 nor later')
