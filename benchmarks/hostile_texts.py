"""Result texts that make a backtracking reader slow, or ask for more memory than they are worth.

Each maker takes a size in characters and returns a text of about that size.
"""

from collections.abc import Callable

Maker = Callable[[int], str]


def _file(*parts: str, end: str = "\n") -> str:
    return end.join(("[Results]", *parts, "[End of Results]", ""))


def _fill(piece: str, size: int) -> str:
    return piece * max(1, size // len(piece))


def _vertical(content: str) -> str:
    return _file("[Vertical]", content, "[End of Vertical]")


def bare_cr(size: int) -> str:
    """Return a file in which every line ends with CR alone, so that no LF stops a free text."""
    block = "[Vertical]\r[Depths]\r3\r" + "  1.0\r" * 50 + "[End of Depths]\r[End of Vertical]\r"
    return "[Results]\r" + _fill(block, size) + "[End of Results]\r"


def bare_cr_without_results(size: int) -> str:
    """Return the same without a closing tag, with a file name in every line."""
    return "[Results]\r" + _fill("FILENAME : C:\\story\\run.sld\r", size)


def unclosed(tag: str, content: str = "\n") -> Maker:
    """Return openings of one block, over and over, none of which is ever closed."""

    def make(size: int) -> str:
        return _vertical(_fill(f"[{tag}]{content}", size))

    return make


def unclosed_verticals(size: int) -> str:
    """Return openings of verticals that are never closed."""
    return _file(_fill("[Vertical]\n1.0 =  X co-ordinate\n", size))


def unclosed_residuals(size: int) -> str:
    """Return residual blocks that lack their last closing tag."""
    block = (
        "[RESIDUAL SETTLEMENTS]\n[Column Indication]\nVertical\n[End of Column Indication]\n"
        "[DATA COUNT]\n1\n[END OF DATA COUNT]\n[RESIDUAL SETTLEMENT DATA]\n1 2\n"
    )
    return _file(_fill(block, size))


def unclosed_stresses(size: int) -> str:
    """Return stress blocks whose rows are closed and whose block is not."""
    block = (
        "[Stresses]\n[Column Indication]\nA\n[End of Column Indication]\n[Stress Data]\n"
        "1 = Depth step count\n1.0\n[End of Stress Data]\n"
    )
    return _vertical(_fill(block, size))


def empty_blocks(size: int) -> str:
    """Return blocks without anything between their tags."""
    tags = ("Depths", "Leakages", "Drained Layers", "Stresses", "Vertical Data at Time")
    block = "".join(f"[{tag}]\r\n[End of {tag}]\r\n" for tag in tags)
    return _vertical(_fill(block, size))


def empty_verticals(size: int) -> str:
    """Return verticals with one empty line each."""
    return _file(_fill("[Vertical]\n\n[End of Vertical]\n", size))


def empty_times(size: int) -> str:
    """Return times without rows."""
    block = "[Vertical Data at Time]\n1.0 = Time in days\n\n[End of Vertical Data at Time]\n"
    return _vertical(
        "[Time-dependent Data]\n[Column Indication]\nA\n[End of Column Indication]\n"
        + _fill(block, size)
        + "[End of Time dependent Data]"
    )


def one_line(piece: str) -> Maker:
    """Return one line without end, of one piece over and over."""

    def make(size: int) -> str:
        return _vertical(_fill(piece, size))

    return make


def white_space_behind_count(size: int) -> str:
    """Return white space behind a count line, with line ends all through it, and no closing tag."""
    return _vertical(
        "[Time-Settlement per Load]\n1 = Time step count\n1 = Load step count" + _fill("\n ", size)
    )


def many_headers_above_short_rows(size: int) -> str:
    """Return as many headers as rows, and one field in each row."""
    half = max(1, size // 4)
    return _vertical(
        "[Stresses]\n[Column Indication]\n"
        + "A\n" * half
        + "[End of Column Indication]\n[Stress Data]\n1 = Depth step count\n"
        + "1\n" * half
        + "[End of Stress Data]\n[End of Stresses]"
    )


def empty_times_of(headers: Callable[[int], str], times: Callable[[int], str]) -> Maker:
    """Return as many headers as times, and no rows under any of them."""

    def make(size: int) -> str:
        header_lines, blocks, number = [], [], 0
        while size > 0:
            header_lines.append(headers(number) + "\n")
            blocks.append(
                f"[Vertical Data at Time]\n{times(number)} = Time in days\n\n"
                "[End of Vertical Data at Time]\n"
            )
            size -= len(header_lines[-1]) + len(blocks[-1])
            number += 1
        return _vertical(
            "[Time-dependent Data]\n[Column Indication]\n"
            + "".join(header_lines)
            + "[End of Column Indication]\n"
            + "".join(blocks)
            + "[End of Time dependent Data]"
        )

    return make


def equal_headers_above_no_rows(size: int) -> str:
    """Return nothing but header lines, all of them empty."""
    return _vertical(
        "[Stresses]\n[Column Indication]\n"
        + "\n" * size
        + "[End of Column Indication]\n[Stress Data]\n1 = Depth step count\n\n"
        + "[End of Stress Data]\n[End of Stresses]"
    )


def long_row_above_short_rows(size: int) -> str:
    """Return a first row with as many fields as there are rows of one field."""
    half = max(1, size // 4)
    return _vertical(
        "[Time-Settlement per Load]\n1 = Time step count\n1 = Load step count\n"
        + "1 " * half
        + "\n"
        + "1\n" * half
        + "[End of Time-Settlement per Load]"
    )


def one_numeral(size: int) -> str:
    """Return a numeral that fills the text."""
    return _vertical("[Depths]\n1 = Depth count\n" + "1" * size + ".5\n[End of Depths]")


def residual_rows_of_many_verticals(size: int) -> str:
    """Return rows that go from vertical to vertical, none beside another of its own."""
    return _file(
        "[RESIDUAL SETTLEMENTS]\n[Column Indication]\nVertical\nTime\n[End of Column Indication]\n"
        "[DATA COUNT]\n1\n[END OF DATA COUNT]\n[RESIDUAL SETTLEMENT DATA]\n"
        + "\n".join(f"{row % 1000} 1.0" for row in range(max(1, size // 8)))
        + "\n[END OF RESIDUAL SETTLEMENT DATA]"
    )


MAKERS: dict[str, Maker] = {
    "bare CR": bare_cr,
    "bare CR, no results": bare_cr_without_results,
    "unclosed verticals": unclosed_verticals,
    "unclosed residuals": unclosed_residuals,
    "unclosed stresses": unclosed_stresses,
    "unclosed depths": unclosed("Depths"),
    "unclosed depths, CR LF": unclosed("Depths", "\r\n"),
    "unclosed times": unclosed("Vertical Data at Time", "\n1.0 = Time in days\n"),
    "unclosed tables": unclosed("Time-dependent Data", "\n[Column Indication]\n"),
    "unclosed columns": unclosed("Stresses", "\n[Column Indication]\n[End of Column Indication]\n"),
    "unclosed loads": unclosed(
        "Time-Settlement per Load", "\n1 = Time step count\n1 = Load step count\n"
    ),
    "empty blocks": empty_blocks,
    "empty verticals": empty_verticals,
    "empty times": empty_times,
    "one line of numbers": one_line("1.5 "),
    "one line of blanks": one_line(" "),
    "one line of equals signs": one_line("= "),
    "one line of brackets": one_line("["),
    "one line of axes": one_line(" =  X"),
    "white space behind a count": white_space_behind_count,
    "many headers, short rows": many_headers_above_short_rows,
    "equal headers, distinct times": empty_times_of(lambda _: "", lambda number: f"{number}.0"),
    "equal headers, equal times": empty_times_of(lambda _: "", lambda _: "1.0"),
    "distinct headers, equal times": empty_times_of(lambda number: f"{number:x}", lambda _: "1.0"),
    "equal headers, no rows": equal_headers_above_no_rows,
    "long row, short rows": long_row_above_short_rows,
    "one numeral": one_numeral,
    "residuals in turn": residual_rows_of_many_verticals,
}
