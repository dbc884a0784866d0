"""Sections and lines of an input file, with errors that name the place."""

import math
from collections.abc import Iterator
from dataclasses import dataclass

from sembra.local.sli.input_file_error import InputFileError

_END = "[END OF "


@dataclass(frozen=True)
class Line:
    """One line of the file, without its end; `number` counts from 1."""

    number: int
    text: str


@dataclass(frozen=True)
class Section:
    """The lines between `[name]` and `[END OF name]`; `number` is the line of the opening tag."""

    name: str
    number: int
    lines: tuple[Line, ...]

    @property
    def texts(self) -> list[str]:
        """The lines without their numbers."""
        return [line.text for line in self.lines]

    def section(self, name: str) -> "Section":
        """Return the first section of that name inside this one.

        Raises:
            InputFileError: There is none, or it isn't closed.
        """
        for section in self.sections(name):
            return section
        raise InputFileError(self.name, self.number, f"there is no section [{name}]")

    def sections(self, name: str) -> Iterator["Section"]:
        """Return all sections of that name inside this one, in file order."""
        opened: int | None = None
        for index, line in enumerate(self.lines):
            tag = line.text.strip()
            if opened is None and tag == f"[{name}]":
                opened = index
            elif opened is not None and tag == f"[END OF {name}]":
                yield Section(name, self.lines[opened].number, self.lines[opened + 1 : index])
                opened = None
        if opened is not None:
            raise InputFileError(name, self.lines[opened].number, "the section is not closed")

    def outermost(self) -> Iterator["Section"]:
        """Return the sections inside this one that are in no other, in file order.

        Raises:
            InputFileError: One isn't closed.
        """
        opened: int | None = None
        name = ""
        for index, line in enumerate(self.lines):
            tag = line.text.strip()
            if opened is None:
                if tag.startswith("[") and tag.endswith("]") and not tag.startswith(_END):
                    opened, name = index, tag[1:-1]
            elif tag == f"{_END}{name}]":
                yield Section(name, self.lines[opened].number, self.lines[opened + 1 : index])
                opened = None
        if opened is not None:
            raise InputFileError(name, self.lines[opened].number, "the section is not closed")

    def cursor(self) -> "Cursor":
        """Return a cursor at the first line."""
        return Cursor(self)

    def error(self, problem: str, line: int | None = None) -> InputFileError:
        """Return an error about this section, at its first line unless another one is given."""
        return InputFileError(self.name, self.number if line is None else line, problem)


class Cursor:
    """Reads a section line by line."""

    def __init__(self, section: Section) -> None:
        self._section = section
        self._index = 0

    @property
    def line_number(self) -> int:
        """Line of the file that was read last."""
        if self._index == 0:
            return self._section.number
        return self._section.lines[self._index - 1].number

    def name(self, what: str) -> str:
        """Return the next line without surrounding blanks, which may be empty.

        Args:
            what: Names the line in the error at the end of the section.
        """
        if self._index == len(self._section.lines):
            raise self.error(f"{what} is missing")
        self._index += 1
        return self._section.lines[self._index - 1].text.strip()

    def text(self, what: str) -> str:
        """Return the next line that isn't blank, without surrounding blanks."""
        while not (line := self.name(what)):
            pass
        return line

    def number(self, what: str) -> float:
        """Return the number that the next line starts with."""
        return self.numbers(what, 1)[0]

    def numbers(self, what: str, count: int) -> list[float]:
        """Return the `count` numbers that the next line starts with."""
        fields = self.text(what).split()
        if len(fields) < count:
            raise self.error(f"{what} should be {count} numbers")
        return [parse_number(self._section, self.line_number, what, f) for f in fields[:count]]

    def integer(self, what: str) -> int:
        """Return the whole number that the next line starts with."""
        value = self.number(what)
        if not value.is_integer():
            raise self.error(f"{what} should be a whole number and is {value:g}")
        return int(value)

    def integers(self, what: str, count: int) -> list[int]:
        """Return the next `count` whole numbers, over as many lines as they take."""
        values: list[int] = []
        while len(values) < count:
            for field in self.text(what).split()[: count - len(values)]:
                value = parse_number(self._section, self.line_number, what, field)
                if not value.is_integer():
                    raise self.error(f"{what} should be whole numbers and hold {value:g}")
                values.append(int(value))
        return values

    def count(self, what: str) -> int:
        """Return the whole number, not negative, that the next line starts with."""
        value = self.integer(what)
        if value < 0:
            raise self.error(f"{what} should not be negative and is {value}")
        return value

    def error(self, problem: str) -> InputFileError:
        """Return an error at the line that was read last."""
        return InputFileError(self._section.name, self.line_number, problem)


def parse_number(section: Section, line: int, what: str, field: str) -> float:
    """Return the finite number that a field holds.

    Raises:
        InputFileError: The field is no number, or not a finite one.
    """
    try:
        value = float(field)
    except ValueError:
        raise section.error(f'{what} should be a number and is "{field}"', line) from None
    if not math.isfinite(value):
        raise section.error(f"{what} should be a finite number and is {field}", line)
    return value


def split_lines(text: str) -> list[str]:
    """Return the lines of a text with CRLF, LF or CR as line ends, and with no other ones."""
    return text.replace("\r\n", "\n").replace("\r", "\n").split("\n")


def read_whole(text: str) -> "Section":
    """Return the whole text of a file as one section, named after the file."""
    lines = split_lines(text)
    return Section("INPUT FILE", 1, tuple(Line(i, line) for i, line in enumerate(lines, 1)))
