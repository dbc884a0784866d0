"""The section WATER."""

from sembra.local.sli.sections import Section


def read_water_unit_weight(whole: Section) -> float:
    """Return the unit weight of water in kN/m³.

    Raises:
        InputFileError: The section is malformed, or the unit weight isn't greater than zero.
    """
    cursor = whole.section("WATER").cursor()
    value = cursor.number("the unit weight of water")
    if value <= 0:
        raise cursor.error("the unit weight of water should be greater than zero")
    return value
