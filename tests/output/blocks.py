"""Blocks of a result text, for tests that look at one behaviour."""

from io import StringIO
from typing import Any

from sembra.external.dsettlement import OutputFileParser


def lines(*parts: str, end: str = "\n") -> str:
    """Join lines, without a line end behind the last."""
    return end.join(parts)


def results(*parts: str, end: str = "\n") -> str:
    """Make a file with a `[Results]` block around the lines."""
    return lines("[Results]", *parts, "[End of Results]", "", end=end)


def vertical(*parts: str, end: str = "\n") -> str:
    """Make a `[Vertical]` block around the lines."""
    return lines("[Vertical]", *parts, "[End of Vertical]", end=end)


def time_settlement(*rows: str, time_steps: str = "2", load_steps: str = "1") -> str:
    """Make a `[Time-Settlement per Load]` block."""
    return lines(
        "[Time-Settlement per Load]",
        f"     {time_steps}  =  Time step count ",
        f"     {load_steps}  =  Load step count ",
        *rows,
        "[End of Time-Settlement per Load]",
    )


def stresses(headers: tuple[str, ...], *rows: str, count: str = "  2  =  Depth step count") -> str:
    """Make a `[Stresses]` block."""
    return lines(
        "[Stresses]",
        "[Column Indication]",
        *headers,
        "[End of Column Indication]",
        "[Stress Data]",
        count,
        *rows,
        "[End of Stress Data]",
        "[End of Stresses]",
    )


def at_time(time: str, *rows: str) -> str:
    """Make a `[Vertical Data at Time]` block; `time` is all that stands before "days"."""
    return lines(
        "[Vertical Data at Time]",
        f"   {time}    =  Time in days",
        *rows,
        "[End of Vertical Data at Time]",
    )


def time_dependent(headers: tuple[str, ...], *blocks: str) -> str:
    """Make a `[Time-dependent Data]` block."""
    return lines(
        "[Time-dependent Data]",
        "[Column Indication]",
        *headers,
        "[End of Column Indication]",
        *blocks,
        "[End of Time dependent Data]",
    )


def residuals(headers: tuple[str, ...], *rows: str, count: str = "  3 Data count") -> str:
    """Make a `[RESIDUAL SETTLEMENTS]` block."""
    return lines(
        "[RESIDUAL SETTLEMENTS]",
        "[Column Indication]",
        *headers,
        "[End of Column Indication]",
        "[DATA COUNT]",
        count,
        "[END OF DATA COUNT]",
        "[RESIDUAL SETTLEMENT DATA]",
        *rows,
        "[END OF RESIDUAL SETTLEMENT DATA]",
    )


def parser_of(text: str) -> OutputFileParser:
    """Make a parser of a file, whose line ends stay as they are."""
    return OutputFileParser(StringIO(text, newline=""))


def read_vertical(*parts: str, end: str = "\n") -> dict[str, Any]:
    """Read the only vertical of a file, made of the lines."""
    text = vertical(*parts, end=end)
    return {**parser_of(results(text, end=end)).vertical_results[1]}


def read_residuals(text: str) -> dict[int, dict[str, list[float]]]:
    """Read the residual settlements of a file that holds the text."""
    return parser_of(results(text)).residual_times
