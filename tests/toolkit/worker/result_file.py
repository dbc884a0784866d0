"""Reads result files the way applications do: by the twelve patterns of their reader."""

import re
from collections.abc import Iterator
from typing import Any

EOL = r"(?:\r\n|\n|\r)"
RESULTS = re.compile(rf"\[Results\]{EOL}(?P<results>.*?){EOL}\[End of Results\]", re.DOTALL)
VERTICAL = re.compile(rf"\[Vertical\]{EOL}(?P<results>.*?){EOL}\[End of Vertical\]", re.DOTALL)
FILE_NAME = re.compile(rf"FILENAME\s+: (?P<path>.*){EOL}")
COORDINATE = re.compile(r"(?P<coordinate>.*?)\s+=\s+ (?P<axes>[X|Z])\sco-ordinate")
PER_LOAD = re.compile(
    rf"\[Time-Settlement per Load\]{EOL}\s*(?P<time_step_count>\d+)\s+=\s+Time\sstep\scount\s*{EOL}"
    rf"\s*(?P<load_step_count>\d+)\s+=\s+Load\sstep\scount\s*{EOL}(?P<data>.*?){EOL}"
    r"\[End of Time-Settlement per Load\]",
    re.DOTALL,
)
DEPTHS = re.compile(
    rf"\[Depths\]{EOL}(?P<data>.*?){EOL}\[End of Depths\]{EOL}",
    re.DOTALL,
)
LEAKAGES = re.compile(rf"\[Leakages\]{EOL}(?P<data>.*?){EOL}\[End of Leakages\]{EOL}", re.DOTALL)
DRAINED = re.compile(
    rf"\[Drained Layers\]{EOL}(?P<data>.*?){EOL}\[End of Drained Layers\]{EOL}", re.DOTALL
)
HEADERS = rf"\[Column Indication\]{EOL}(?P<headers>.*?){EOL}\[End of Column Indication\]{EOL}"
STRESSES = re.compile(
    rf"\[Stresses\]{EOL}{HEADERS}\[Stress Data\]{EOL}\s*[0-9]+\s+=\s+Depth step count{EOL}"
    rf"(?P<data>.*?){EOL}\[End of Stress Data\]{EOL}\[End of Stresses\]",
    re.DOTALL,
)
TIME_DEPENDENT = re.compile(
    rf"\[Time-dependent Data\]{EOL}{HEADERS}(?P<data>.*?){EOL}\[End of Time dependent Data\]",
    re.DOTALL,
)
AT_TIME = re.compile(
    rf"\[Vertical Data at Time\]{EOL}\s*(?P<time>\d+\.\d+)\s+=\s+Time\sin\sdays{EOL}"
    rf"(?P<data>.*?){EOL}\[End of Vertical Data at Time\]",
    re.DOTALL,
)
RESIDUAL = re.compile(
    rf"\[RESIDUAL SETTLEMENTS\]{EOL}{HEADERS}\[DATA COUNT\]{EOL}.*?{EOL}\[END OF DATA COUNT\]{EOL}"
    rf"\[RESIDUAL SETTLEMENT DATA\]{EOL}(?P<data>.*?){EOL}\[END OF RESIDUAL SETTLEMENT DATA\]",
    re.DOTALL,
)

Columns = dict[str, list[float]]


def verticals(text: str) -> list[dict[str, Any]]:
    """Return the results of each vertical."""
    return [_vertical(match["results"]) for match in VERTICAL.finditer(_results(text))]


def residuals(text: str) -> dict[int, Columns]:
    """Return the residual settlements by the number of the vertical."""
    match = RESIDUAL.search(_results(text))
    assert match
    headers = match["headers"].splitlines()[1:]
    read: dict[int, Columns] = {}
    for row in match["data"].splitlines():
        number, *values = row.split()
        columns = read.setdefault(int(number), {header: [] for header in headers})
        for header, value in zip(headers, values, strict=True):
            columns[header].append(float(value))
    return read


def _results(text: str) -> str:
    match = RESULTS.search(text)
    assert match
    return match["results"]


def _vertical(text: str) -> dict[str, Any]:
    per_load = PER_LOAD.search(text)
    depths = DEPTHS.search(text)
    stresses = STRESSES.search(text)
    time_dependent = TIME_DEPENDENT.search(text)
    assert per_load
    assert depths
    assert stresses
    assert time_dependent
    headers = time_dependent["headers"].splitlines()
    return {
        "coordinates": {
            match["axes"].lower(): float(match["coordinate"]) for match in COORDINATE.finditer(text)
        },
        "counts": (int(per_load["time_step_count"]), int(per_load["load_step_count"])),
        "per_load": [list(row) for row in zip(*_rows(per_load["data"]), strict=True)],
        "depths": [float(line) for line in depths["data"].splitlines()[1:]],
        "stresses": _columns(stresses["headers"].splitlines(), stresses["data"]),
        "at_time": {
            float(match["time"]): _columns(headers, match["data"])
            for match in AT_TIME.finditer(time_dependent["data"])
        },
    }


def _columns(headers: list[str], data: str) -> Columns:
    columns = zip(*_rows(data), strict=True)
    return {header: list(values) for header, values in zip(headers, columns, strict=True)}


def _rows(data: str) -> Iterator[list[float]]:
    return ([float(field) for field in row.split()] for row in data.splitlines())
