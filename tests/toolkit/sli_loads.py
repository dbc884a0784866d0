"""Verticals and loads under polylines, read from an input file."""

from typing import NamedTuple

from tests.toolkit.sli import SliFile


class NonUniformLoad(NamedTuple):
    """A load under a polyline; the fields are called as the arguments that make one."""

    name: str
    points: list[tuple[float, float]]
    time: int
    end_time: int
    gamma_dry: float
    gamma_wet: float
    temporary: bool


def non_uniform_loads(file: SliFile) -> list[NonUniformLoad]:
    """Return the loads under polylines."""
    rest = iter(file.sections["NON-UNIFORM LOADS"][1:])
    loads = []
    for name in rest:
        time, dry, wet, temporary, end_time = next(rest).partition("=")[0].split()
        points = [_pair(next(rest)) for _ in range(int(next(rest).split()[0]))]
        loads.append(
            NonUniformLoad(
                name, points, int(time), int(end_time), float(dry), float(wet), temporary == "1"
            )
        )
    return loads


def verticals(file: SliFile) -> list[tuple[float, float]]:
    """Return x and z of each vertical."""
    return [_pair(line) for line in file.sections["VERTICALS"][1:]]


def _pair(line: str) -> tuple[float, float]:
    first, second = line.partition("=")[0].split()
    return float(first), float(second)
