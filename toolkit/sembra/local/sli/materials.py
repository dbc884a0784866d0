"""The section SOIL COLLECTION: materials with their parameters."""

from collections.abc import Iterable, Mapping
from dataclasses import dataclass

from sembra.local.sli.input_file_error import InputFileError
from sembra.local.sli.sections import Line, Section, parse_number


@dataclass(frozen=True)
class StatedMaterial:
    """A material.

    Args:
        section: Its section of the file.
        name: Its name.
        values: Its values by what the file calls them, such as "SoilGamDry".
    """

    section: Section
    name: str
    values: Mapping[str, Line]

    def number(self, key: str) -> float:
        """Return the value of a key, as a number.

        Raises:
            InputFileError: It is missing, or no finite number.
        """
        line = self.line(key)
        return parse_number(self.section, line.number, key, line.text)

    def flag(self, key: str) -> bool:
        """Return the value of a switch, 0 or 1."""
        value = self.number(key)
        if value not in (0, 1):
            raise self.error(key, f"{key} should be 0 or 1 and is {value:g}")
        return value == 1

    def code(self, key: str, known: Iterable[int]) -> int:
        """Return the value of a key that is one of some known codes."""
        value = self.number(key)
        for code in known:
            if code == value:
                return code
        raise self.error(key, f"{key} {value:g} is unknown")

    def error(self, key: str, problem: str) -> InputFileError:
        """Return an error at the line of a key."""
        return self.section.error(problem, self.line(key).number)

    def line(self, key: str) -> Line:
        """Return the value of a key, as a text with its line.

        Raises:
            InputFileError: It is missing.
        """
        try:
            return self.values[key]
        except KeyError:
            raise self.section.error(f"{key} is missing") from None


def read_materials(whole: Section) -> dict[str, StatedMaterial]:
    """Return the materials of a file by name.

    Raises:
        InputFileError: The section is malformed, or a name stands twice.
    """
    materials: dict[str, StatedMaterial] = {}
    for section in whole.section("SOIL COLLECTION").sections("SOIL"):
        name = section.cursor().name("the name of the material")
        if name in materials:
            raise section.error(f'the material "{name}" stands twice')
        materials[name] = StatedMaterial(section, name, section.values())
    return materials
