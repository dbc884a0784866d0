"""What reading an input file can fail with."""

from sembra.errors import ParsingError

LONGEST = 400
"""Of a problem that quotes a longer line, its beginning and its end are told."""
END = 80


class InputFileError(ParsingError):
    """An input file that can't be read, with the place where reading stopped.

    Args:
        section: Name of the section, without brackets.
        line: Line of the file, counted from 1.
        problem: What is wrong there, as a sentence without its full stop.
    """

    def __init__(self, section: str, line: int, problem: str) -> None:
        super().__init__(
            f"The input file is not readable in section [{section}], line {line}: "
            f"{_readable(problem)}."
        )
        self.section = section
        self.line = line


def _readable(text: str) -> str:
    """Return a text in which all can be seen, whatever it quotes, and not too much of it."""
    shown = "".join(
        one if one.isprintable() else one.encode("unicode_escape").decode() for one in text
    )
    return shown if len(shown) <= LONGEST else f"{shown[: LONGEST - END]} … {shown[-END:]}"
