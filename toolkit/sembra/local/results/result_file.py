"""A reader of what real result files write."""

import re
from io import StringIO
from os import PathLike
from pathlib import Path
from typing import TYPE_CHECKING, Self

from sembra.external.dsettlement import OutputFileParser

from sembra.local.results import frames
from sembra.local.results.dissipation import LayerDissipation, read_dissipation
from sembra.local.sli.text import decode

if TYPE_CHECKING:
    from pandas import DataFrame

_END = r"(?>\r\n|\n|\r)"
_LINE = r"[^\r\n]*+"


def _lines(name: str, closing: str) -> str:
    """Return lines up to a tag on a line of its own, none included; the last line end is left out.

    Nothing in it is ever given back, so the search takes no longer than the block is.
    """
    tag = rf"\[{closing}\]"
    return rf"(?P<{name}>(?!{tag})(?:{_LINE}{_END}(?!{tag}))*+{_LINE}|)(?:{_END})?{tag}"


_HEADERS = rf"\[Column Indication\]{_END}{_lines('headers', 'End of Column Indication')}{_END}"


class ResultFile(OutputFileParser):
    """A result file (.sld) as D-Settlement and the local edition write it.

    It reads what `OutputFileParser` reads, and two blocks that the latter takes to the letter:

    - `stresses`, although a blank stands behind "Depth step count" in D-Settlement's files;
    - `residual_times` of a file without calculation times, whose block has no rows: an empty
      mapping.

    Beyond that it has the `dissipation` of the layers, and all results as data frames, for which
    pandas has to be installed (`pip install pandas`).
    """

    _STRESSES_PATTERN = re.compile(
        rf"\[Stresses\]{_END}{_HEADERS}\[Stress Data\]{_END}"
        rf"\s*[0-9]+\s+=\s+Depth step count[ \t]*{_END}"
        rf"{_lines('data', 'End of Stress Data')}{_END}\[End of Stresses\]"
    )
    _RESIDUAL_SETTLEMENTS_PATTERN = re.compile(
        rf"\[RESIDUAL SETTLEMENTS\]{_END}{_HEADERS}"
        rf"\[DATA COUNT\]{_END}{_lines('count', 'END OF DATA COUNT')}{_END}"
        rf"\[RESIDUAL SETTLEMENT DATA\]{_END}{_lines('data', 'END OF RESIDUAL SETTLEMENT DATA')}"
    )

    @classmethod
    def read(cls, path: str | PathLike[str]) -> Self:
        """Read a file from the disk.

        Args:
            path: The result file, in UTF-8 as the local worker writes it, or in the code page of
                the tool, cp1252, where a byte that has no character is shown by its number. Line
                ends stay as they are.

        Raises:
            OSError: The file can't be read.
            ParsingError: It has no [Results] block, as after a calculation that failed.
        """
        text = decode(Path(path).read_bytes())
        return cls(StringIO(text, newline=""))

    @property
    def dissipation(self) -> dict[int, LayerDissipation]:
        """How far the excess pore pressure has gone in each layer, by number from the lowest.

        Each has `time`, in days since a load comes, and `degree`, the degree of consolidation: 1
        when all has gone, and beyond where drains draw the pressure down by Darcy. Empty for
        a file without dissipation: ask for it by `generate_input_file(...,
        dissipation_calculation=...)`.

        Raises:
            ValueError: A row has something else than two numbers.
        """
        return read_dissipation(self.raw_results)

    # The data frames. Each raises ModuleNotFoundError where pandas is not installed, and what the
    # property raises that it is made of; a file without such results gives a frame without rows.

    def vertical_frame(self) -> "DataFrame":
        """Return the places of the verticals: `vertical` (number), `x` and `z` [m]."""
        return frames.verticals(self.vertical_results)

    def settlement_frame(self) -> "DataFrame":
        """Return the surface's settlement: `vertical`, `time` [days], `load_1` and onwards [m]."""
        return frames.settlements(self.vertical_results)

    def residual_frame(self) -> "DataFrame":
        """Return residual settlements: `vertical`, and the file's columns of `residual_times`."""
        return frames.residuals(self.residual_times)

    def stress_frame(self) -> "DataFrame":
        """Return the stresses at nodes: `vertical`, `depth` (level) [m], the file's own [kPa]."""
        return frames.stresses(self.vertical_results)

    def time_dependent_frame(self) -> "DataFrame":
        """Return what depends on time and depth.

        `vertical`, `time` [days], `depth` (level) [m], and the columns of `vertical_data` as in the
        file.
        """
        return frames.time_dependent(self.vertical_results)

    def element_frame(self) -> "DataFrame":
        """Return the elements between nodes, which only files of some soil models have.

        `vertical`, `top` and `bottom` (levels) [m], `leakage`, `drained` (1 or 0).
        """
        return frames.elements(self.vertical_results)

    def dissipation_frame(self) -> "DataFrame":
        """Return degrees of consolidation: `layer` (from the lowest), `time` [days], `degree`."""
        return frames.dissipation(self.dissipation)
