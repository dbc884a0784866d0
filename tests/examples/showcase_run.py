"""What a run of the showcase told and wrote."""

import re
from dataclasses import dataclass
from pathlib import Path

TITLES = {
    "one_dimensional": "One dimension: ",
    "two_dimensional": "Two dimensions: ",
    "choice_of_model": "The choice of the model: ",
    "parametric_study": "A parametric study: ",
}
"""How the title of each story begins, by the name of its files."""


@dataclass(frozen=True)
class Story:
    """One story of the showcase: what was printed for it, and the folder with its files."""

    name: str
    output: str
    folder: Path

    @property
    def steps(self) -> list[int]:
        """The numbers of the steps, as they were told."""
        return [int(number) for number in re.findall(r"^(\d+)\. \w", self.output, re.MULTILINE)]

    def rows(self, text: str, width: int) -> list[list[str]]:
        """The fields of the rows of a table, each of that many, in a part of the output."""
        fields = (line.split() for line in text.splitlines())
        return [row for row in fields if len(row) == width and row[0].isdigit()]

    def numbers(self, tag: str, vertical: int = 1) -> list[list[float]]:
        """The rows of numbers of the block of a vertical with that tag in the result file.

        A block that stands once for all verticals is the block of the first.
        """
        text = (self.folder / f"{self.name}.sld").read_text(encoding="utf-8")
        results = text.partition("[Results]")[2]
        block = results.split(f"[{tag}]")[vertical].partition("[E")[0]
        rows = [line.split() for line in block.splitlines() if line and "=" not in line]
        return [[float(field) for field in row] for row in rows]


@dataclass(frozen=True)
class Showcase:
    """A run of the showcase."""

    output: str
    folder: Path

    def story(self, name: str) -> Story:
        """The story whose files have that name, from behind its title to the next one."""
        told = self.output.partition(TITLES[name])[2]
        for title in TITLES.values():
            told = told.partition(title)[0]
        return Story(name, told, self.folder)
