"""The section VERTICALS: where results are wanted."""

from dataclasses import dataclass

from sembra.local.sli.sections import Section


@dataclass(frozen=True)
class StatedVertical:
    """A vertical: its line of the file, and where it stands, x and z in metres."""

    line: int
    x: float
    z: float


def read_verticals(whole: Section) -> tuple[StatedVertical, ...]:
    """Return the verticals of the file, in its order.

    Raises:
        InputFileError: The section is malformed.
    """
    cursor = whole.section("VERTICALS").cursor()
    verticals = []
    for number in range(1, cursor.count("the number of verticals") + 1):
        x, z = cursor.numbers(f"X and Z of vertical {number}", 2)
        verticals.append(StatedVertical(cursor.line_number, x, z))
    return tuple(verticals)
