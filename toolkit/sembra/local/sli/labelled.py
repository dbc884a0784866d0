"""Sections whose lines have a value and a label."""

from collections.abc import Callable, Iterable, Iterator

from sembra.local.sli.entries import Entry, entries
from sembra.local.sli.input_file_error import InputFileError
from sembra.local.sli.sections import Section, parse_number


class Labelled:
    """A section whose lines have a label each.

    Args:
        section: The section.
        read: Reads its lines: `value : label` or `value = label`, unless it is said otherwise.
    """

    def __init__(
        self, section: Section, read: Callable[[Section], Iterator[Entry]] = entries
    ) -> None:
        self.section = section
        self.entries: dict[str, Entry] = {}
        """The lines by their labels."""
        for entry in read(section):
            self.entries.setdefault(entry.label, entry)

    def entry(self, label: str) -> Entry:
        """Return the line of a label.

        Raises:
            InputFileError: There is none.
        """
        try:
            return self.entries[label]
        except KeyError:
            raise self.section.error(f'"{label}" is missing') from None

    def number(self, label: str) -> float:
        """Return the number of a label."""
        entry = self.entry(label)
        return parse_number(self.section, entry.line, label, entry.value)

    def code(self, label: str) -> int:
        """Return the whole number of a label."""
        value = self.number(label)
        if not value.is_integer():
            raise self.error(label, f"{label} should be a whole number and is {value:g}")
        return int(value)

    def one_of[Code: int](self, label: str, known: Iterable[Code]) -> Code:
        """Return the code of a label, which is one of the known ones."""
        code = self.code(label)
        for one in known:
            if one == code:
                return one
        raise self.error(label, f"{label} {code} is unknown")

    def switch(self, label: str, *, absent: bool | None = None) -> bool:
        """Return the switch of a label; `absent` is its value where there is none."""
        if absent is not None and label not in self.entries:
            return absent
        value = self.number(label)
        if value not in (0, 1):
            raise self.error(label, f"{label} should be 0 or 1 and is {value:g}")
        return value == 1

    def error(self, label: str, problem: str) -> InputFileError:
        """Return an error at the line of a label."""
        return self.section.error(problem, self.entry(label).line)
