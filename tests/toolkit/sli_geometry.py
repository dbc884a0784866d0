"""The geometry of a cross-section, read from an input file."""

import re
from dataclasses import dataclass
from itertools import pairwise
from typing import NamedTuple

from tests.toolkit.sli import SliFile

Point = tuple[float, float, float]
Polyline = list[tuple[float, float]]


class Layer(NamedTuple):
    """A layer, with the numbers of its pl-lines and boundaries."""

    material: str
    pl_top: int
    pl_bottom: int
    boundary_top: int
    boundary_bottom: int


@dataclass(frozen=True)
class Geometry:
    """The parts of the section GEOMETRY DATA, line by line, and what they mean."""

    parts: dict[str, list[str]]

    @classmethod
    def of(cls, file: SliFile) -> "Geometry":
        """Take the geometry of a file apart."""
        text = "\n".join(file.sections["GEOMETRY DATA"])
        parts = re.findall(r"^\[(?!END)(.*)]\n((?s:.*?))\n\[END OF \1]$", text, re.MULTILINE)
        assert len(parts) == text.count("[END OF ")
        return cls({name: body.split("\n") for name, body in parts})

    @property
    def points(self) -> list[Point]:
        """The points in the order of their numbers, which count from 1."""
        rows = [line.split() for line in self.parts["POINTS"][1:]]
        assert [int(row[0]) for row in rows] == list(range(1, len(rows) + 1))
        return [(float(x), float(y), float(z)) for _number, x, y, z in rows]

    @property
    def curves(self) -> list[list[int]]:
        """The numbers of each curve's points."""
        return self._chains("CURVES")

    @property
    def boundaries(self) -> list[list[int]]:
        """The numbers of each boundary's curves, the lowest boundary first."""
        return self._chains("BOUNDARIES")

    @property
    def pl_lines(self) -> list[list[int]]:
        """The numbers of each pl-line's curves."""
        return self._chains("PIEZO LINES")

    @property
    def phreatic_line(self) -> int:
        """The number of the phreatic pl-line."""
        return int(self.parts["PHREATIC LINE"][0].split()[0])

    @property
    def layers(self) -> list[Layer]:
        """The layers from bottom to top."""
        rows = self.parts["LAYERS"]
        return [
            Layer(rows[i + 1].strip(), *(int(row.split()[0]) for row in rows[i + 2 : i + 6]))
            for i in range(1, len(rows), 6)
        ]

    def polyline(self, chain: list[int]) -> Polyline:
        """Return the points [m] along the curves of a boundary or a pl-line."""
        numbers = [self.curves[curve - 1] for curve in chain]
        assert all(a[-1] == b[0] for a, b in pairwise(numbers))
        walk = [numbers[0][0], *(curve[-1] for curve in numbers)]
        return [self.points[number - 1][:2] for number in walk]

    def _chains(self, name: str) -> list[list[int]]:
        chains: list[list[int]] = []
        for line in self.parts[name][1:]:
            if line.endswith("umber"):
                chains.append([])
            elif "number of" not in line:
                chains[-1].extend(map(int, line.split()))
        return chains
