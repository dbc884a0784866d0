"""What reading an input file can fail with."""

from sembra.errors import ParsingError


class InputFileError(ParsingError):
    """An input file that can't be read, with the place where reading stopped.

    Args:
        section: name of the section, without brackets.
        line: line of the file, counted from 1.
        problem: what is wrong there, as a sentence without its full stop.
    """

    def __init__(self, section: str, line: int, problem: str) -> None:
        super().__init__(
            f"The input file is not readable in section [{section}], line {line}: {problem}."
        )
        self.section = section
        self.line = line
