"""All that an input file says."""

from collections.abc import Mapping
from functools import cached_property
from os import PathLike
from pathlib import Path
from typing import Self

from sembra.local.sli.geometry_1d import Geometry1D, read_geometry_1d
from sembra.local.sli.geometry_2d import Geometry2D, read_geometry_2d
from sembra.local.sli.labelled import Labelled
from sembra.local.sli.materials import StatedMaterial, read_materials
from sembra.local.sli.non_uniform_loads import NonUniformLoad, read_non_uniform_loads
from sembra.local.sli.other_loads import OtherLoad, read_other_loads
from sembra.local.sli.sections import Section, read_whole
from sembra.local.sli.text import decode
from sembra.local.sli.times import StatedTime, read_residual_times
from sembra.local.sli.vertical_drain import StatedSchedule, read_schedule
from sembra.local.sli.verticals import StatedVertical, read_verticals
from sembra.local.sli.water import read_water_unit_weight
from sembra.local.sli.water_loads import WaterLoad, count_water_loads, read_water_loads

_DATA = "INPUT DATA"
_HEADER = ("COMPANY", "DATE", "TIME", "FILENAME", "CREATED BY")
_TITLES = 3


class InputFile:
    """An input file (.sli), or the input that a result file (.sld) repeats.

    Each part is read when it is first asked for, and raises `InputFileError` if it is malformed.

    Args:
        text: The file, with CRLF, LF or CR as line ends.

    Raises:
        InputFileError: There is no input in the text.
    """

    def __init__(self, text: str) -> None:
        self._whole = read_whole(text)
        self.data: Section = self._whole.section(_DATA)
        """The section that all others stand in."""

    @classmethod
    def read(cls, path: str | PathLike[str]) -> Self:
        """Read a file from the disk.

        Args:
            path: An input file or a result file, in UTF-8 or in the code page of the tool, cp1252.

        Raises:
            OSError: The file can't be read.
            InputFileError: There is no input in it.
        """
        return cls(decode(Path(path).read_bytes()))

    @cached_property
    def header(self) -> Mapping[str, tuple[int, str]]:
        """The lines above all sections, such as "COMPANY": their numbers and what they say."""
        found = {}
        for line in self._whole.lines[: self.data.number - 1]:
            label, colon, value = line.text.partition(":")
            if colon and label.strip() in _HEADER:
                found[label.strip()] = (line.number, value.strip())
        return found

    @cached_property
    def titles(self) -> tuple[str, str, str]:
        """The three titles."""
        lines = self.data.section("RUN IDENTIFICATION").lines
        first, second, third = ([line.text for line in lines] + [""] * _TITLES)[:_TITLES]
        return first, second, third

    @cached_property
    def model(self) -> Labelled:
        """The section MODEL."""
        return Labelled(self.data.section("MODEL"))

    @cached_property
    def options(self) -> Labelled:
        """The section CALCULATION OPTIONS."""
        return Labelled(self.data.section("CALCULATION OPTIONS"))

    @cached_property
    def drain(self) -> Labelled:
        """The section VERTICAL DRAIN."""
        return Labelled(self.data.section("VERTICAL DRAIN"))

    @cached_property
    def schedule(self) -> StatedSchedule:
        """The schedule of the drains."""
        return read_schedule(self.data.section("VERTICAL DRAIN"))

    @property
    def is_1d(self) -> bool:
        """Whether the model has one dimension."""
        return not self.model.switch("Dimension")

    @property
    def has_drains(self) -> bool:
        """Whether the drains are switched on."""
        return self.model.switch("Vertical drains", absent=False)

    @cached_property
    def materials(self) -> Mapping[str, StatedMaterial]:
        """The materials by name, in the order of the file."""
        return read_materials(self.data)

    @cached_property
    def column(self) -> Geometry1D:
        """The geometry of a one-dimensional model."""
        return read_geometry_1d(self.data)

    @cached_property
    def cross_section(self) -> Geometry2D:
        """The geometry of a two-dimensional model."""
        return read_geometry_2d(self.data)

    @cached_property
    def verticals(self) -> tuple[StatedVertical, ...]:
        """Where results are wanted."""
        return read_verticals(self.data)

    @cached_property
    def water_unit_weight(self) -> float:
        """The unit weight of water in kN/m³."""
        return read_water_unit_weight(self.data)

    @cached_property
    def non_uniform_loads(self) -> tuple[NonUniformLoad, ...]:
        """The loads by the weight of soil below an outline."""
        return read_non_uniform_loads(self.data)

    @cached_property
    def other_loads(self) -> tuple[OtherLoad, ...]:
        """Uniform, trapeziform, circular and rectangular loads."""
        return read_other_loads(self.data)

    @cached_property
    def water_loads(self) -> tuple[WaterLoad, ...]:
        """Other water levels from a time on."""
        if not count_water_loads(self.data):
            return ()
        geometry = self.cross_section
        return read_water_loads(self.data, len(geometry.layers), geometry.pl_lines)

    @cached_property
    def residual_times(self) -> tuple[StatedTime, ...]:
        """The times for which residual settlements are wanted."""
        return read_residual_times(self.data)
