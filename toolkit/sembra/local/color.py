"""Colours for the visualisation of materials."""

import random
from dataclasses import dataclass
from typing import Self


@dataclass(frozen=True)
class Color:
    """A colour of three channels.

    D-Settlement writes a colour as one integer with red in the lowest byte:
    r + 256 g + 65536 b.

    Args:
        r: Red, from 0 to 255.
        g: Green, from 0 to 255.
        b: Blue, from 0 to 255.

    Raises:
        TypeError: A channel is not an integer.
        ValueError: A channel lies outside 0 to 255.
    """

    r: int
    g: int
    b: int

    def __post_init__(self) -> None:
        for name, channel in (("r", self.r), ("g", self.g), ("b", self.b)):
            if isinstance(channel, bool) or not isinstance(channel, int):
                raise TypeError(f"{name} must be an integer, not {type(channel).__name__}")
            if not 0 <= channel <= 255:
                raise ValueError(f"{name} must be between 0 and 255 ({channel})")

    @classmethod
    def random(cls) -> Self:
        """Return a colour by chance."""
        return cls.from_deltares(random.randrange(1 << 24))

    @classmethod
    def from_deltares(cls, code: int) -> Self:
        """Return the colour with the given integer code.

        Args:
            code: R + 256 g + 65536 b, from 0 to 16777215.

        Raises:
            TypeError: The code is not an integer.
            ValueError: The code lies outside its range.
        """
        if isinstance(code, bool) or not isinstance(code, int):
            raise TypeError(f"code must be an integer, not {type(code).__name__}")
        if not 0 <= code < 1 << 24:
            raise ValueError(f"code must be between 0 and 16777215 ({code})")
        return cls(code & 0xFF, code >> 8 & 0xFF, code >> 16)

    @property
    def deltares(self) -> int:
        """The integer code of the colour, in the form that `from_deltares` takes."""
        return self.r + 256 * self.g + 65536 * self.b
