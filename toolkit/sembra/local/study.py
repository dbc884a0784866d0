"""Many variants of a model, calculated side by side and written to a table as they come.

For example::

    from sembra.local.study import run_study

    rows = run_study(
        [1.0, 1.5, 2.0],                       # heights of sand [m]
        build=build_model,                     # from a height to a model
        columns=["final settlement [m]"],
        read=lambda results: [results.residual_times[1]["Settlement"][-1]],
        path="heights.csv",
    )

The jobs run on the engine that the settings name (`SEMBRA_EXECUTOR`, `SEMBRA_WORKERS`).
"""

import csv
import queue
import threading
from collections.abc import Callable, Collection, Generator, Iterable, Mapping, Sequence
from contextlib import closing
from dataclasses import fields, is_dataclass
from io import BytesIO
from numbers import Integral, Real
from os import PathLike
from pathlib import Path
from typing import Any, NamedTuple, Protocol

from sembra.external.dsettlement import DSettlementAnalysis, OutputFileParser

from sembra.local.jobs.callers import end_jobs_of
from sembra.local.jobs.engine import chosen_engine
from sembra.local.jobs.engine_error import loss_of_engine
from sembra.local.jobs.progress import show_count
from sembra.local.limits import seconds

type Value = float | int | str | None
"""What stands in a field of the table."""

NUMBER = "variant"
ERROR = "error"
"""The first and the last column of the table."""

THREADS_PER_WORKER = 2
"""While one model of a worker is calculated, the next is built."""

_LINE_END = b"\r\n"


class Model(Protocol):
    """A one- or two-dimensional model."""

    def generate_input_file(self) -> BytesIO:
        """Return the input file of the model."""


class Row[Variant](NamedTuple):
    """What a variant came to.

    Args:
        variant: The variant.
        values: One value per column, in the units of the columns; None if the variant failed.
        error: Why it failed, in one line; None if it didn't.
    """

    variant: Variant
    values: tuple[Value, ...] | None
    error: str | None


def run_study[Variant](
    variants: Iterable[Variant],
    build: Callable[[Variant], Model],
    columns: Sequence[str],
    read: Callable[[OutputFileParser], Sequence[Value]],
    path: str | PathLike[str],
    *,
    timeout: float = 60.0,
) -> list[Row[Variant]]:
    """Calculate many variants and write a row for each to a table.

    A row is written as soon as its variant has ended, so the rows stand in the order of their ends:
    sort them by their first column for that of the variants. The table is a CSV file in UTF-8 that
    spreadsheets open: the number of the variant from 1, what the variant is (the fields of a data
    class, a named tuple or a mapping, the text of anything else), the columns, and the error, empty
    if there is none. If the file is there already, it is what an interrupted study has left: the
    variants in it aren't calculated again, failed ones neither. Remove a row to have it calculated
    again. A variant that fails doesn't stop the others.

    On a terminal, one progress bar is shown on the standard error stream.

    Args:
        variants: The variants, any objects.
        build: Makes the model of a variant. Called from several threads at once, as is `read`.
        columns: The names of what `read` returns, with their units, such as "settlement [m]".
        read: Takes the values for the columns out of the results of a variant.
        path: The CSV file.
        timeout: Time that each calculation may take, in seconds; `math.inf` for no limit.

    Returns:
        A row per variant, in the order of the variants. The values of rows from the file are
        numbers where they look like numbers, None where they are empty, and texts otherwise.

    Raises:
        ValueError: Two columns have the same name, the file is that of another study, or the
            timeout isn't above 0.
        EngineError: The engine or the service that the settings name can't be used, or was lost:
            the study stops, as if it had been interrupted.
        OSError: The file can't be read or written.
        KeyboardInterrupt: The study was interrupted. The jobs that ran are ended; the rows stay in
            the file, and another call goes on from there.
    """
    # Found by the variants themselves, it would stand as the error of each in the table.
    limit = seconds(timeout, "timeout")
    study = _Study(list(variants), build, tuple(map(_text, columns)), read, limit)
    table = _Table(Path(path), study.header)
    done = study.known_rows(table)
    failed = sum(row.error is not None for row in done.values())
    threads = THREADS_PER_WORKER * chosen_engine().capacity()
    with (
        table,
        show_count(len(study.variants)) as count,
        closing(_calculate(study, done.keys(), threads)) as rows,
    ):
        count(len(done), failed)
        for number, row in rows:
            table.write([number, *study.described[number - 1], *study.fields_of(row)])
            done[number] = row
            failed += row.error is not None
            count(len(done), failed)
    return [done[number] for number in range(1, len(study.variants) + 1)]


class _Study[Variant]:
    """What a study is about."""

    def __init__(
        self,
        variants: list[Variant],
        build: Callable[[Variant], Model],
        columns: tuple[str, ...],
        read: Callable[[OutputFileParser], Sequence[Value]],
        timeout: float,
    ) -> None:
        self.variants = variants
        self._build = build
        self._columns = columns
        self._read = read
        self._timeout = timeout
        described = [_describe(variant) for variant in variants]
        names = list(described[0]) if described else []
        if any(list(description) != names for description in described):
            raise ValueError("all variants must have the same fields")
        self.header = [NUMBER, *names, *columns, ERROR]
        if len(set(self.header)) != len(self.header):
            raise ValueError(f"two columns have the same name: {', '.join(self.header)}")
        self.described = [list(map(_text, description.values())) for description in described]

    def calculate(self, variant: Variant) -> Row[Variant]:
        """Return the row of a variant, whatever happens to it; raise the loss of the engine."""
        try:
            analysis = DSettlementAnalysis(self._build(variant).generate_input_file())
            analysis.execute(timeout=self._timeout)
            values = tuple(self._read(OutputFileParser(analysis.get_sld_file())))
            if len(values) != len(self._columns):
                raise ValueError(f"{len(values)} values for {len(self._columns)} columns")
        except Exception as error:
            if (loss := loss_of_engine(error)) is not None:
                raise loss from None
            return Row(variant, None, _explain(error))
        return Row(variant, values, None)

    def fields_of(self, row: Row[Variant]) -> list[str]:
        """Return what stands in the table behind what the variant is."""
        values = (None,) * len(self._columns) if row.values is None else row.values
        return [*map(_text, values), row.error or ""]

    def known_rows(self, table: "_Table") -> dict[int, Row[Variant]]:
        """Return the rows that are in the table already, by the number of their variants.

        Raises:
            ValueError: They are those of another study.
        """
        known = {}
        for line in table.lines:
            number = int(line[0]) if line[0].isdecimal() else 0
            described = line[1 : -1 - len(self._columns)]
            if not 1 <= number <= len(self.variants) or described != self.described[number - 1]:
                raise ValueError(f"{table.path} is the table of another study: see {line[0]!r}")
            values = tuple(map(_value, line[-1 - len(self._columns) : -1]))
            variant = self.variants[number - 1]
            known[number] = Row(variant, None if line[-1] else values, line[-1] or None)
        return known


class _Table:
    """A CSV file that is written row by row. Opened by `with`."""

    def __init__(self, path: Path, header: list[str]) -> None:
        self.path = path
        data = path.read_bytes() if path.exists() else b""
        # A row that was being written when the study was ended is none.
        self._length = data.rfind(_LINE_END) + len(_LINE_END) if _LINE_END in data else 0
        self._header = header
        lines = data[: self._length].decode("utf-8-sig").splitlines()
        found, *self.lines = list(csv.reader(lines)) or [header]
        if found != header or any(len(line) != len(header) for line in self.lines):
            raise ValueError(f"{path} is the table of another study: it has other columns")

    def __enter__(self) -> None:
        with self.path.open("ab") as file:
            file.truncate(self._length)
        encoding = "utf-8" if self._length else "utf-8-sig"
        self._file = self.path.open("a", encoding=encoding, newline="")
        self._writer = csv.writer(self._file)
        if not self._length:
            self.write(self._header)

    def __exit__(self, *_: object) -> None:
        self._file.close()

    def write(self, line: Sequence[object]) -> None:
        """Write a row, to the disk."""
        self._writer.writerow(line)
        self._file.flush()


def _calculate[Variant](
    study: _Study[Variant], done: Collection[int], threads: int
) -> Generator[tuple[int, Row[Variant]], None, None]:
    """Yield the rows that aren't done yet, as they come, with the numbers of their variants."""
    missing = [number for number in range(1, len(study.variants) + 1) if number not in done]
    numbers: queue.SimpleQueue[int] = queue.SimpleQueue()
    for number in missing:
        numbers.put(number)
    rows: queue.SimpleQueue[tuple[int, Row[Variant]] | BaseException] = queue.SimpleQueue()
    stopped = threading.Event()

    def work() -> None:
        while not stopped.is_set():
            try:
                number = numbers.get_nowait()
            except queue.Empty:
                return
            try:
                rows.put((number, study.calculate(study.variants[number - 1])))
            except BaseException as error:
                rows.put(error)

    workers = [
        threading.Thread(target=work, name="sembra-study", daemon=True)
        for _ in range(min(threads, len(missing)))
    ]
    try:
        for worker in workers:
            worker.start()
        for _ in missing:
            row = rows.get()
            if isinstance(row, BaseException):
                raise row
            yield row
    finally:
        stopped.set()
        while any(worker.is_alive() for worker in workers):
            end_jobs_of(workers)
            for worker in workers:
                worker.join(0.1)


def _describe(variant: object) -> dict[str, Any]:
    if is_dataclass(variant) and not isinstance(variant, type):
        return {field.name: getattr(variant, field.name) for field in fields(variant)}
    if isinstance(variant, tuple) and hasattr(variant, "_asdict"):
        return dict(variant._asdict())
    if isinstance(variant, Mapping):
        return {str(key): value for key, value in variant.items()}
    return {"value": variant}


def _text(value: object) -> str:
    """Return the text of a field: numbers to the last digit, everything in one line."""
    if value is None:
        return ""
    if isinstance(value, Real) and not isinstance(value, bool):
        return repr(int(value) if isinstance(value, Integral) else float(value))
    return " ".join(str(value).split())


def _value(text: str) -> Value:
    try:
        return float(text) if text else None
    except ValueError:
        return text


def _explain(error: BaseException) -> str:
    """Return the words of an error and of its causes, in one line."""
    words = f"{type(error).__name__}: {error}"
    while (error := error.__cause__) is not None:  # type: ignore[assignment]
        if str(error) not in words:
            words += f": {error}"
    return _text(words)
