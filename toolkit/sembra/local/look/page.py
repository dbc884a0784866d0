"""The page: what stands on it, put into its template."""

from collections.abc import Callable, Iterable, Iterator, Sequence
from dataclasses import dataclass
from io import StringIO
from os import PathLike
from pathlib import Path

from jinja2 import Environment, PackageLoader, StrictUndefined

from sembra.errors import ModelError, ParsingError
from sembra.local.input_file import LeftOut, read_model
from sembra.local.look.check import Check, check
from sembra.local.look.drains import drains, schedule
from sembra.local.look.drawing import Drawing
from sembra.local.look.ground import layers
from sembra.local.look.line_breaks import breakable
from sembra.local.look.loads import loads
from sembra.local.look.options import Fact, identification, options
from sembra.local.look.page_pictures import picture_of_model, pictures_of_results
from sembra.local.look.settlements import settlements
from sembra.local.look.soils import soils
from sembra.local.look.table import Table
from sembra.local.results import ResultFile
from sembra.local.sli.input_file_error import InputFileError
from sembra.local.sli.text import decode
from sembra.local.sli.whole_file import InputFile

_WARNINGS = ("[Warnings]", "[End of Warnings]")
"""Tags of the block in which the local worker says what there is to know."""


@dataclass(frozen=True)
class Page:
    """What stands on the page.

    Args:
        name: The names of the files.
        titles: The titles of the calculation.
        identification: Who made the input, for whom and when.
        remarks: What couldn't be shown, and why; and the warnings of the calculation.
        check: What the worker makes of the file, if that was asked for.
        ground: The picture of the model, if one could be made.
        options: The options of the calculation.
        drains: What is said of the drains.
        tables: Soils, loads and the schedule of the drains.
        drawings: The pictures of results.
        settlements: The tables of results.
        left_out: What a model can't hold of the file.
    """

    name: str
    titles: Sequence[str]
    identification: Sequence[Fact]
    remarks: Sequence[str]
    check: Check | None
    ground: Drawing | None
    options: Sequence[Fact]
    drains: Sequence[Fact]
    tables: Sequence[Table]
    drawings: Sequence[Drawing]
    settlements: Sequence[Table]
    left_out: Sequence[LeftOut]


def make_page(
    path: str | PathLike[str],
    result_path: str | PathLike[str] | None = None,
    *,
    checked: bool = False,
) -> str:
    """Make a page of an input file, of a result file, or of both.

    A result file repeats its input, so that it will do alone.

    Args:
        path: An input file (.sli) or a result file (.sld), of D-Settlement or of the local worker.
        result_path: The result file of the input file, if there is one.
        checked: Whether the page says what the local worker makes of the input.

    Returns:
        The page: HTML that refers to nothing outside itself.

    Raises:
        OSError: A file can't be read.
        ParsingError: There is no input in the first file, or no results or no input in the second.
    """
    return render(read_page(path, result_path, checked=checked))


def read_page(
    path: str | PathLike[str],
    result_path: str | PathLike[str] | None = None,
    *,
    checked: bool = False,
) -> Page:
    """Read what `make_page` puts onto the page; arguments and exceptions are those of it."""
    paths = [Path(path), *([] if result_path is None else [Path(result_path)])]
    texts = [decode(one.read_bytes()) for one in paths]
    file, *repeated = map(_input, paths, texts)
    results = _results(paths[-1], texts[-1], required=result_path is not None)
    remarks = [*_warnings(results), *_of_another_input(file, repeated)]
    ground, left_out = _model(paths[0], remarks)
    return Page(
        name=" and ".join(one.name for one in paths),
        titles=_kept(lambda: [title for title in file.titles if title.strip(" -")], remarks),
        identification=list(identification(file)),
        remarks=remarks,
        check=check(texts[0]) if checked else None,
        ground=ground,
        options=_kept(lambda: options(file), remarks),
        drains=_kept(lambda: drains(file), remarks),
        tables=[
            *_kept(lambda: [layers(file)], remarks),
            *_kept(lambda: [soils(file)], remarks),
            *_kept(lambda: loads(file), remarks),
            *_kept(lambda: _present(schedule(file)), remarks),
        ],
        drawings=[*pictures_of_results(results)] if results else [],
        settlements=[*settlements(results)] if results else [],
        left_out=left_out,
    )


def render(page: Page) -> str:
    """Put a page into its template."""
    return _environment.get_template("page.html.j2").render(page=page)


def _input(path: Path, text: str) -> InputFile:
    try:
        return InputFile(text)
    except InputFileError as error:
        raise ParsingError(
            f"{path} is no input or result file of D-Settlement, or not a whole one: "
            "it has no complete section [INPUT DATA]."
        ) from error


def _results(path: Path, text: str, *, required: bool) -> ResultFile | None:
    try:
        return ResultFile(StringIO(text, newline=""))
    except ParsingError as error:
        if required:
            raise ParsingError(
                f"{path} has no results: it is no result file of D-Settlement, "
                "or that of a calculation that failed."
            ) from error
        return None


def _warnings(results: ResultFile | None) -> list[str]:
    """Return what the local worker warned of when it calculated."""
    lines = results.raw_results.splitlines() if results else []
    begin, end = _WARNINGS
    # The line behind the tag tells how many there are.
    return lines[lines.index(begin) + 2 : lines.index(end)] if begin in lines else []


def _of_another_input(file: InputFile, repeated: Sequence[InputFile]) -> Iterator[str]:
    """Say so if the results are of another input than the one shown."""
    if any(_words(one) != _words(file) for one in repeated):
        yield "The result file repeats another input than that of the input file."


def _words(file: InputFile) -> list[list[str]]:
    return [text.split() for text in file.data.texts if text.strip()]


def _model(path: Path, remarks: list[str]) -> tuple[Drawing | None, Sequence[LeftOut]]:
    """Return the picture of a file's model, and what the model can't hold."""
    try:
        read = read_model(path)
    except InputFileError as error:
        remarks.append(str(error))
        return None, ()
    except ModelError as error:
        remarks.append(f"There is no picture of the ground, since no model can be made: {error}.")
        return None, ()
    return picture_of_model(read.model), read.left_out


def _kept[T](parts: Callable[[], Iterable[T]], remarks: list[str]) -> list[T]:
    """Return what can be read; where a section is malformed, that is remarked once instead."""
    try:
        return list(parts())
    except InputFileError as error:
        if str(error) not in remarks:
            remarks.append(str(error))
        return []


def _present(table: Table | None) -> Iterator[Table]:
    if table:
        yield table


_environment = Environment(
    loader=PackageLoader("sembra.local.look"),
    undefined=StrictUndefined,
    autoescape=True,
    trim_blocks=True,
    lstrip_blocks=True,
)
_environment.filters["breakable"] = breakable
