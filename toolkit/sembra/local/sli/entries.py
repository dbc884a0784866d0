"""Lines with a value and a label, in the forms that they have in an input file."""

import re
from collections.abc import Iterator
from dataclasses import dataclass

from sembra.local.sli.sections import Section

_BETWEEN = re.compile(r"\s[:=]\s")


@dataclass(frozen=True)
class Entry:
    """A line that says something.

    Args:
        line: Its number in the file.
        label: What it is about; empty where the line has its value alone.
        value: The value as it stands there.
        words: What the file itself says that the value means, such as "2D"; may be empty.
    """

    line: int
    label: str
    value: str
    words: str = ""

    @property
    def told(self) -> str:
        """The value with its meaning, as the file has it."""
        return f"{self.value} ({self.words})" if self.words else self.value


def entries(section: Section) -> Iterator[Entry]:
    """Return a section's lines that aren't blank: `value : label`, `label=value`, or a value."""
    for line in section.lines:
        text = line.text.strip()
        if between := _BETWEEN.search(text):
            label, _, words = text[between.end() :].partition("=")
            value = text[: between.start()].strip()
            yield Entry(line.number, label.strip(), value, words.strip())
        elif "=" in text:
            label, _, value = text.partition("=")
            yield Entry(line.number, label.strip(), value.strip())
        elif text:
            yield Entry(line.number, "", text)


def keyed_entries(section: Section) -> Iterator[Entry]:
    """Return a section's lines of the form `key=value`, blanks between or not."""
    for line in section.lines:
        key, separator, value = line.text.partition("=")
        if separator:
            yield Entry(line.number, key.strip(), value.strip())
