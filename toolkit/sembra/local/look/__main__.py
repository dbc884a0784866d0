"""Shows files in a browser: python -m sembra.local.look road.sli [road.sld]."""

import argparse
import sys
import tempfile
import webbrowser
from pathlib import Path

from sembra.errors import ParsingError

REFUSED = 1
"""Exit status where the local worker refuses the file."""


def main(arguments: list[str] | None = None) -> int:
    """Make the page, and open or write it.

    Args:
        arguments: What stands behind the command; None for what this process was called with.

    Returns:
        The exit status: 0, or 1 if the file was checked and the local worker refuses it.
    """
    parser = _parser()
    given = parser.parse_args(arguments)
    try:
        import matplotlib
    except ModuleNotFoundError:
        parser.error("the pictures need matplotlib: pip install matplotlib")
    matplotlib.use("agg")
    from sembra.local.look.page import read_page, render

    try:
        page = read_page(given.file, given.results, checked=given.check)
    except (OSError, ParsingError) as error:
        parser.error(str(error))
    if page.check:
        for line in (page.check.verdict, *page.check.remarks):
            sys.stdout.write(f"{line}\n")
    html = render(page)
    if given.output:
        try:
            given.output.write_text(html, "utf-8")
        except OSError as error:
            parser.error(str(error))
    else:
        webbrowser.open(_temporary(html, given.file.stem).as_uri())
    return REFUSED if page.check and page.check.refusal else 0


def _parser() -> argparse.ArgumentParser:
    parser = argparse.ArgumentParser(
        prog="python -m sembra.local.look",
        description="Show an input or result file of D-Settlement as one page in the browser.",
    )
    parser.add_argument("file", type=Path, help="an input file (.sli) or a result file (.sld)")
    parser.add_argument(
        "results", type=Path, nargs="?", help="the result file (.sld) of the input file"
    )
    parser.add_argument(
        "-o", "--output", type=Path, help="write the page to this file, and open nothing"
    )
    parser.add_argument(
        "--check", action="store_true", help="say what the local worker would refuse"
    )
    return parser


def _temporary(html: str, name: str) -> Path:
    """Write the page where it stays until the machine tidies up: the browser reads it later."""
    with tempfile.NamedTemporaryFile(
        "w", encoding="utf-8", prefix=f"{name}-", suffix=".html", delete=False
    ) as file:
        file.write(html)
    return Path(file.name)


if __name__ == "__main__":
    sys.exit(main())
