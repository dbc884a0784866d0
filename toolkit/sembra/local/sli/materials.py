"""The section SOIL COLLECTION: materials with their parameters."""

from sembra.local.sli.entries import keyed_entries
from sembra.local.sli.labelled import Labelled
from sembra.local.sli.sections import Section


class StatedMaterial(Labelled):
    """A material, with its values by what the file calls them, such as "SoilGamDry".

    Raises:
        InputFileError: It has no name.
    """

    def __init__(self, section: Section) -> None:
        super().__init__(section, keyed_entries)
        self.name = section.cursor().name("the name of the material")


def read_materials(whole: Section) -> dict[str, StatedMaterial]:
    """Return the materials of a file by name.

    Raises:
        InputFileError: The section is malformed, or a name stands twice.
    """
    materials: dict[str, StatedMaterial] = {}
    for section in whole.section("SOIL COLLECTION").sections("SOIL"):
        material = StatedMaterial(section)
        if material.name in materials:
            raise section.error(f'the material "{material.name}" stands twice')
        materials[material.name] = material
    return materials
