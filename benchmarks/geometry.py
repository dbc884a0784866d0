"""Building and serialising cross-sections: against plain Python, by size, and in memory.

python -m benchmarks.geometry              # prints the table and JSON of these figures alone
python -m benchmarks.geometry MODULE N     # prints the bytes per point and curve of a module
"""

from __future__ import annotations

import gc
import json
import random
import subprocess
import sys
import time
from collections.abc import Callable
from dataclasses import asdict, replace
from functools import partial
from importlib import import_module
from operator import attrgetter
from statistics import median
from typing import Any

from sembra.external.dsettlement import CalculationModel, ConsolidationModel, _Vertical

from benchmarks.peak_memory import resident
from benchmarks.plain import geometry as plain
from benchmarks.side_by_side import Row, compare

NATIVE = "sembra.external.dsettlement"
PLAIN = "benchmarks.plain.geometry"
CURVES_BESIDE_PLAIN = 2_000
CURVES = 100_000
IN_MEMORY = 200_000
LAYER_HEIGHT = 0.5


def new_model(module: str) -> Any:
    """Return a model without layers, with a phreatic line."""
    model = import_module(module).Model2D(
        CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI, [(0.0, 0.0), (100.0, 0.0)]
    )
    ends = [model.create_point(0.0, 1.0), model.create_point(100.0, 1.0)]
    model.create_pl_line(ends, is_phreatic=True)
    return model


def create_points(model: Any, curves: int, level: float) -> list[Any]:
    """Return the points of a boundary of so many curves, which goes up and down a little."""
    step = 100.0 / curves
    points = [model.create_point(step * i, level + (i % 7) * 0.01) for i in range(curves)]
    return [*points, model.create_point(100.0, level)]


def build(module: str, layers: int, curves: int) -> Any:
    """Return a model with so many layers, each with so many curves."""
    model = new_model(module)
    for layer in range(layers):
        points = create_points(model, curves, LAYER_HEIGHT * (layer + 1))
        model.create_layer(points, "Sand", 0, 0)
    return model


def build_and_serialize(module: str, layers: int, curves: int) -> Any:
    return build(module, layers, curves)._serialize()


def ascending(count: int) -> list[int]:
    return list(range(count))


def descending(count: int) -> list[int]:
    return ascending(count)[::-1]


def shuffled(count: int) -> list[int]:
    return random.Random(1).sample(range(count), count)


def create_verticals(order: Callable[[int], list[int]], count: int) -> Any:
    """Create so many verticals in that order, and serialise them."""
    model = new_model(NATIVE)
    for i in order(count):
        model.create_vertical(100.0 * i / count)
    return model._serialize_verticals()


def sort_verticals_once(order: Callable[[int], list[int]], count: int) -> object:
    """Make as many verticals without a model in that order, sort them once and serialise them.

    Objects that are walked in another order than they were made in cost more by the piece once they
    outgrow the nearer caches, whoever walks them.
    """
    verticals = [_Vertical(100.0 * i / count) for i in order(count)]
    verticals.sort(key=attrgetter("x"))
    return [vertical._serialize() for vertical in verticals]


def create_boundaries(order: Callable[[int], list[int]], count: int) -> Any:
    """Create so many boundaries in that order, and serialise the model."""
    model = new_model(NATIVE)
    for i in order(count):
        level = LAYER_HEIGHT * (i + 1)
        model._create_boundary([model.create_point(0.0, level), model.create_point(100.0, level)])
    return model._serialize()


def against_plain(layers: int, *, rounds: int) -> Row:
    """Return how many times longer plain Python takes for the same model."""
    curves = CURVES_BESIDE_PLAIN // layers
    # The native work is done several times over, so that it takes long enough to be timed.
    times = 5

    def native() -> None:
        for _ in range(times):
            build_and_serialize(NATIVE, layers, curves)

    def plain() -> None:
        build_and_serialize(PLAIN, layers, curves)

    once = compare("", plain, native, rounds=rounds)
    name = f"{layers} layers of {curves} curves: plain : native"
    return Row(name, once.ratio * times, at_least=100, note=f"{once.note} ({times} times)")


def seconds(work: Callable[[], object], times: int) -> float:
    gc.collect()
    start = time.process_time()
    for _ in range(times):
        work()
    return (time.process_time() - start) / times


def linearity(what: str, work: Callable[[int], object], at_most: float | None = 2.3) -> Row:
    """Return how much longer twice the size takes.

    Half the size is worked on twice against all of it once, in turn, so that both spans are as long
    and meet the same disturbances. Where there is a bound, the garbage collector rests meanwhile,
    as under `timeit`: how many of its passes go through everything between two sizes is a matter of
    its thresholds, for any program.
    """
    if at_most is not None:
        gc.disable()
    try:
        spans = [
            (seconds(lambda: work(CURVES), 1), seconds(lambda: work(CURVES // 2), 2))
            for _ in range(9)
        ]
    finally:
        gc.enable()
    longer, shorter = (median(span) * 1e3 for span in zip(*spans, strict=True))
    return Row(
        f"{what}: {CURVES} : {CURVES // 2}",
        median(all_of_it / half for all_of_it, half in spans),
        at_most=at_most,
        note=f"{longer:.0f} ms : {shorter:.0f} ms",
    )


def linearity_beside(
    what: str, work: Callable[[int], object], beside: str, least: Callable[[int], object]
) -> list[Row]:
    """Return the same for work that cannot grow less than other work does, and may a tenth more."""
    reference = linearity(beside, least)
    at_most = max(2.3, 1.1 * reference.ratio)
    return [linearity(what, work, at_most), replace(reference, at_most=None)]


def list_objects(count: int) -> object:
    """Make as many plain objects as a chain has, which nobody calls anything but linear."""
    points = [plain._Point(float(i), 1.0) for i in range(count)]
    table = {(point.x, point.y): point for point in points}
    return [(point.x, point.y, 0) for point in table.values()]


def bytes_each(module: str, count: int) -> tuple[float, float]:
    """Return the resident memory per point, and per curve with its place in the model.

    One layer holds all: what a point or a curve takes does not depend on where it is.
    """
    model = new_model(module)
    gc.collect()
    before = resident("VmRSS")
    points = create_points(model, count, 1.0)
    with_points = resident("VmRSS")
    model.create_layer(points, "Sand", 0, 0)
    with_curves = resident("VmRSS")
    return (with_points - before) / count, (with_curves - with_points) / count


def bytes_each_apart(module: str) -> tuple[float, float]:
    """Return the same, measured in a new process."""
    command = [sys.executable, "-m", "benchmarks.geometry", module, str(IN_MEMORY)]
    done = subprocess.run(command, check=True, capture_output=True, text=True)
    point, curve = done.stdout.split()
    return float(point), float(curve)


def memory() -> list[Row]:
    """Return how much memory a point and a curve take, as parts of what they take in plain Python.

    Coordinates are counted with their points.
    """
    native, plain = bytes_each_apart(NATIVE), bytes_each_apart(PLAIN)
    return [
        Row(
            f"memory per {what}: native : plain",
            ours / theirs,
            note=f"{ours:.0f} B : {theirs:.0f} B",
        )
        for what, ours, theirs in zip(("point", "curve"), native, plain, strict=True)
    ]


def rows() -> list[Row]:
    """Return all ratios."""
    return [
        against_plain(20, rounds=5),
        against_plain(1, rounds=5),
        against_plain(500, rounds=1),
        linearity("curves in 100 layers", lambda n: build_and_serialize(NATIVE, 100, n // 100)),
        linearity("curves in one layer", lambda n: build_and_serialize(NATIVE, 1, n)),
        linearity("layers of one curve", lambda n: build_and_serialize(NATIVE, n, 1)),
        *(
            linearity(f"verticals, {order.__name__}", partial(create_verticals, order))
            for order in (ascending, descending)
        ),
        *linearity_beside(
            "verticals, shuffled",
            partial(create_verticals, shuffled),
            "verticals without a model, sorted once",
            partial(sort_verticals_once, shuffled),
        ),
        *linearity_beside(
            "boundaries, descending",
            partial(create_boundaries, descending),
            "boundaries, ascending",
            partial(create_boundaries, ascending),
        ),
        linearity(
            "curves in 100 layers, with garbage collection",
            lambda n: build_and_serialize(NATIVE, 100, n // 100),
            at_most=None,
        ),
        linearity("objects in a list, with garbage collection", list_objects, at_most=None),
        *memory(),
    ]


def main(arguments: list[str]) -> None:
    if arguments:
        module, count = arguments
        print(*bytes_each(module, int(count)))
        return
    from benchmarks.__main__ import show

    report = rows()
    show(report)
    print(json.dumps([{**asdict(row), "holds": row.holds} for row in report], indent=1))


if __name__ == "__main__":
    main(sys.argv[1:])
