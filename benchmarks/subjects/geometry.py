"""Building and serialising cross-sections: against plain Python, by size, and in memory.

python -m benchmarks.subjects.geometry  # prints these figures alone, as table and JSON
python -m benchmarks.subjects.geometry bytes MODULE N  # prints the bytes per point and curve
python -m benchmarks.subjects.geometry seconds WORK N  # prints how long a work of GROWING takes
"""

import gc
import json
import random
import subprocess
import sys
import time
from collections.abc import Callable
from dataclasses import asdict, dataclass, replace
from functools import partial
from importlib import import_module
from operator import attrgetter
from statistics import median
from typing import Any

from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    _Boundary,
    _Curve,
    _Layer,
    _Point,
    _Vertical,
)

from benchmarks.peak_memory import resident
from benchmarks.plain import chains
from benchmarks.side_by_side import Row, compare

NATIVE = "sembra.external.dsettlement"
PLAIN = "benchmarks.plain.geometry"
CURVES_BESIDE_PLAIN = 2_000
CURVES = 100_000
IN_MEMORY = 200_000
LAYER_HEIGHT = 0.5
LINEAR = 2.3
"""At most so many times the time for twice the size."""
COLLECTED = 2.6
"""The same with the garbage collector running, which passes through what there is more often."""


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


def make_layers_without_model(count: int) -> object:
    """Make as many layers of one curve without a model, and number what they are made of.

    What is made are the objects that a model would hold, and a document out of them, with a table
    for what stands in several places. All of it is walked as often as the document has lists.
    """
    points: list[Any] = []
    curves, boundaries, layers = [], [_Boundary([])], []
    for i in range(count):
        level = LAYER_HEIGHT * (i + 1)
        ends = _Point(0.0, level), _Point(100.0, level)
        points += ends
        curves.append(_Curve(*ends))
        boundaries.append(_Boundary(curves[-1:]))
        layers.append(_Layer(boundaries[-1], boundaries[-2], "Sand", 0, 0))
    place = attrgetter("x", "y")
    places = attrgetter("p1.x", "p1.y", "p2.x", "p2.y")
    of_point = {place(point): number for number, point in enumerate(points, 1)}
    of_curve = {places(curve): number for number, curve in enumerate(curves, 1)}
    of_boundary = {id(boundary): number for number, boundary in enumerate(boundaries)}
    return (
        [(point.x, point.y, 0) for point in points],
        [(of_point[place(curve.p1)], of_point[place(curve.p2)]) for curve in curves],
        [[of_curve[places(curve)] for curve in boundary.curves] for boundary in boundaries],
        [
            (of_boundary[id(layer.boundary_top)], of_boundary[id(layer.boundary_bottom)])
            for layer in layers
        ],
    )


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


def against_looked_at(layers: int, *, rounds: int) -> Row:
    """Return how many times longer a model takes that was looked at in the middle."""
    curves = CURVES_BESIDE_PLAIN // layers
    times = 5

    def build(looks: bool) -> None:
        for _ in range(times):
            model = new_model(NATIVE)
            for layer in range(layers):
                points = create_points(model, curves, LAYER_HEIGHT * (layer + 1))
                model.create_layer(points, "Sand", 0, 0)
                if looks and layer == layers // 2:
                    list(model._boundaries)
            model._serialize()

    name = f"{layers} layers of {curves} curves: looked at : not"
    return compare(name, partial(build, True), partial(build, False), rounds=rounds, at_most=10)


def list_objects(count: int) -> object:
    """Make as many plain objects as a chain has, which nobody calls anything but linear."""
    points = [chains._Point(float(i), 1.0) for i in range(count)]
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


def apart(*arguments: object) -> list[float]:
    """Return what this module prints with these arguments in a new process."""
    command = [sys.executable, "-m", "benchmarks.subjects.geometry", *map(str, arguments)]
    done = subprocess.run(command, check=True, capture_output=True, text=True)
    return [float(figure) for figure in done.stdout.split()]


def memory() -> list[Row]:
    """Return how much memory a point and a curve take, as parts of what they take in plain Python.

    Coordinates are counted with their points.
    """
    native, plain = apart("bytes", NATIVE, IN_MEMORY), apart("bytes", PLAIN, IN_MEMORY)
    return [
        Row(
            f"memory per {what}: native : plain",
            ours / theirs,
            note=f"{ours:.0f} B : {theirs:.0f} B",
        )
        for what, ours, theirs in zip(("point", "curve"), native, plain, strict=True)
    ]


@dataclass(frozen=True)
class Work:
    """Something that is done with so many objects.

    While it is timed the garbage collector rests, as under `timeit`, unless it is asked for: how
    many of its passes go through everything between two sizes is a matter of its thresholds, for
    any program.
    """

    do: Callable[[int], object]
    at_most: float | None = LINEAR
    is_collected: bool = False

    def seconds(self, count: int) -> float:
        """Return how long it takes, the first time left out."""
        times = []
        for _ in range(6):
            gc.enable() if self.is_collected else gc.disable()
            start = time.process_time()
            self.do(count)
            times.append(time.process_time() - start)
            gc.collect()
        return median(times[1:])


SHUFFLED = "verticals, shuffled"
SORTED_ONCE = "verticals without a model, shuffled, sorted once"
LAYERS = "layers of one curve"
LAYERS_WITHOUT_MODEL = "layers of one curve without a model"
FLOORS = {SHUFFLED: SORTED_ONCE, LAYERS: LAYERS_WITHOUT_MODEL}
"""What can't grow less than the same objects do without a model, and these."""
ABOVE_FLOOR = 1.15
"""At most so many times the growth of that, where this is more than `LINEAR`."""
GROWING = {
    "curves in 100 layers": Work(lambda n: build_and_serialize(NATIVE, 100, n // 100)),
    "curves in one layer": Work(lambda n: build_and_serialize(NATIVE, 1, n)),
    LAYERS: Work(lambda n: build_and_serialize(NATIVE, n, 1)),
    "boundaries, ascending": Work(partial(create_boundaries, ascending)),
    "boundaries, descending": Work(partial(create_boundaries, descending)),
    "verticals, ascending": Work(partial(create_verticals, ascending)),
    "verticals, descending": Work(partial(create_verticals, descending)),
    SHUFFLED: Work(partial(create_verticals, shuffled)),
    SORTED_ONCE: Work(partial(sort_verticals_once, shuffled), at_most=None),
    LAYERS_WITHOUT_MODEL: Work(make_layers_without_model, at_most=None),
    "curves in 100 layers, with garbage collection": Work(
        lambda n: build_and_serialize(NATIVE, 100, n // 100), COLLECTED, is_collected=True
    ),
    "objects in a list, with garbage collection": Work(
        list_objects, at_most=None, is_collected=True
    ),
}
"""What is done at two sizes, by its name in the table."""


def growth(name: str) -> Row:
    """Return how much longer twice the size takes.

    Each size has processes of its own: what the larger one leaves behind in the allocators would
    serve the smaller one, but not the other way round.
    """
    spans = [
        (apart("seconds", name, CURVES)[0], apart("seconds", name, CURVES // 2)[0])
        for _ in range(3)
    ]
    longer, shorter = (median(span) * 1e3 for span in zip(*spans, strict=True))
    return Row(
        f"{name}: {CURVES} : {CURVES // 2}",
        median(all_of_it / half for all_of_it, half in spans),
        at_most=GROWING[name].at_most,
        note=f"{longer:.0f} ms : {shorter:.0f} ms",
    )


def rows_of_growth() -> list[Row]:
    """Return the growth of each work.

    Objects that outgrow the caches cost more by the piece: those that are walked in another order
    than they were made in, and those of which a layer takes many. They can't grow less than the
    same objects do without a model, so their bound is taken from these.
    """
    rows = {name: growth(name) for name in GROWING}
    for name, floor in FLOORS.items():
        at_most = max(LINEAR, ABOVE_FLOOR * rows[floor].ratio)
        rows[name] = replace(rows[name], at_most=at_most)
    return list(rows.values())


def rows() -> list[Row]:
    """Return all ratios."""
    return [
        against_plain(20, rounds=5),
        against_plain(1, rounds=5),
        against_plain(500, rounds=1),
        against_looked_at(20, rounds=5),
        against_looked_at(1, rounds=5),
        against_looked_at(500, rounds=5),
        *rows_of_growth(),
        *memory(),
    ]


def main(arguments: list[str]) -> None:
    match arguments:
        case ["bytes", module, count]:
            print(*bytes_each(module, int(count)))
        case ["seconds", work, count]:
            print(GROWING[work].seconds(int(count)))
        case _:
            from benchmarks.__main__ import show

            report = rows()
            show(report)
            print(json.dumps([{**asdict(row), "holds": row.holds} for row in report], indent=1))


if __name__ == "__main__":
    main(sys.argv[1:])
