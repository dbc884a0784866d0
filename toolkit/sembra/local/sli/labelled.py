"""Sections whose lines have a value and a label."""

from collections.abc import Iterable

from sembra.local.sli.entries import Entry, entries
from sembra.local.sli.input_file_error import InputFileError
from sembra.local.sli.sections import Section, parse_number


class Labelled:
    """A section whose lines read `value : label` or `value = label`."""

    def __init__(self, section: Section) -> None:
        self._section = section
        self._entries: dict[str, Entry] = {}
        for entry in entries(section):
            self._entries.setdefault(entry.label, entry)

    def entry(self, label: str) -> Entry:
        """Return the line of a label.

        Raises:
            InputFileError: There is none.
        """
        try:
            return self._entries[label]
        except KeyError:
            raise self._section.error(f'"{label}" is missing') from None

    def number(self, label: str) -> float:
        """Return the number in front of a label."""
        entry = self.entry(label)
        return parse_number(self._section, entry.line, label, entry.value)

    def code(self, label: str) -> int:
        """Return the whole number in front of a label."""
        value = self.number(label)
        if not value.is_integer():
            raise self.error(label, f"{label} should be a whole number and is {value:g}")
        return int(value)

    def one_of(self, label: str, known: Iterable[int]) -> int:
        """Return the code in front of a label, which is one of the known ones."""
        code = self.code(label)
        if code not in known:
            raise self.error(label, f"{label} {code} is unknown")
        return code

    def switch(self, label: str, *, absent: bool | None = None) -> bool:
        """Return the switch in front of a label; `absent` is its value where there is none."""
        if absent is not None and label not in self._entries:
            return absent
        value = self.number(label)
        if value not in (0, 1):
            raise self.error(label, f"{label} should be 0 or 1 and is {value:g}")
        return value == 1

    def error(self, label: str, problem: str) -> InputFileError:
        """Return an error at the line of a label."""
        return self._section.error(problem, self.entry(label).line)
