"""Runs a random program on a two-dimensional model with objects that fight back, in both editions.

Coordinates, names and containers have special methods that, at some call, raise, change the model
underneath, or call back into it. The same program runs in either edition by itself, with objects of
its own; the two must leave the same trace: what each step answered or raised, when each trap went
off, and what the model was then.
"""

import gc
import random
from collections.abc import Callable, Iterator
from types import SimpleNamespace
from typing import Any

from sembra.core import Color
from sembra.external.dsettlement import CalculationModel, ConsolidationModel

from tests.geometry.editions_2d import EDITIONS
from tests.geometry.random_models_2d import Description, described_error, outcome

LISTS = ("_points", "_boundaries", "_pl_lines", "_verticals", "_layers")
X = (0.0, 25.0, 50.0, 50.0, 75.0, 100.0)
Y = (0.0, 1.0, 2.5, 5.0)
CALLS = 10  # a trap waits for one of so many calls of its method


class Trap:
    """Something that happens at one call of one special method of one object."""

    def __init__(self, world: "World", methods: tuple[str, ...]) -> None:
        self._world = world
        self._method = world.rng.choice(methods)
        self._calls = world.rng.randrange(CALLS)
        self._act = world.rng.choice(ACTS)
        self._roll = world.rng.random()

    def __call__(self, method: str) -> None:
        if method != self._method:
            return
        self._calls -= 1
        if self._calls == -1:
            self._world.spring(self._act, self._roll)


class HostileNumber(float):
    """A coordinate."""

    trap: Trap

    def __eq__(self, other: object) -> bool:
        self.trap("eq")
        return float.__eq__(self, other)

    def __ne__(self, other: object) -> bool:
        self.trap("ne")
        return float.__ne__(self, other)

    def __lt__(self, other: float) -> bool:
        self.trap("lt")
        return float.__lt__(self, other)

    def __gt__(self, other: float) -> bool:
        self.trap("gt")
        return float.__gt__(self, other)

    def __hash__(self) -> int:
        self.trap("hash")
        return float.__hash__(self)

    def __add__(self, other: float) -> float:
        self.trap("add")
        return float.__add__(self, other)

    def __sub__(self, other: float) -> float:
        self.trap("sub")
        return float.__sub__(self, other)

    def __repr__(self) -> str:
        return f"Hostile({float.__repr__(self)})"


class HostileName(str):
    """A name of a material or a load."""

    trap: Trap

    def __eq__(self, other: object) -> bool:
        self.trap("eq")
        return str.__eq__(self, other)

    def __hash__(self) -> int:
        self.trap("hash")
        return str.__hash__(self)

    def __len__(self) -> int:
        self.trap("len")
        return str.__len__(self)

    def __format__(self, how: str) -> str:
        self.trap("format")
        return str.__format__(self, how)

    def __str__(self) -> str:
        self.trap("format")
        return str.__str__(self)


class HostileList(list[Any]):
    """A list of points, of pairs, or of a model."""

    trap: Trap

    def __len__(self) -> int:
        self.trap("len")
        return list.__len__(self)

    def __getitem__(self, index: Any) -> Any:
        self.trap("getitem")
        return list.__getitem__(self, index)

    def __iter__(self) -> Iterator[Any]:
        for element in list.__iter__(self):
            self.trap("iter")
            yield element

    def append(self, element: Any) -> None:
        self.trap("append")
        list.append(self, element)


METHODS: dict[type, tuple[str, ...]] = {
    HostileNumber: ("eq", "eq", "ne", "lt", "gt", "hash", "add", "sub"),
    HostileName: ("eq", "hash", "len", "format"),
    HostileList: ("len", "getitem", "iter", "append"),
}


class World:
    """One edition, a model of it, and the trace of what happens."""

    def __init__(self, classes: SimpleNamespace, name: str) -> None:
        self.classes = classes
        self.rng = random.Random(name)
        self.trace: list[str] = []
        self.model: Any = None
        self.pl_lines: list[Any] = [0, 99]
        self.is_at_rest = False
        self.sprung = 0
        self.share = self.rng.choice((0.05, 0.15, 0.4))  # of coordinates that are hostile

    def hostile(self, cls: Any, value: Any, likely: float = 0.3) -> Any:
        """The value, or one like it that has a trap."""
        if self.rng.random() >= likely:
            return value
        made = cls(value)
        made.trap = Trap(self, METHODS[cls])
        return made

    def spring(self, act: Callable[["World", float], Any], roll: float) -> None:
        """Let a trap go off."""
        if self.is_at_rest or self.model is None:
            return
        self.sprung += 1
        self.note(f"trap {act.__name__}")
        act(self, roll)

    def note(self, what: Any) -> None:
        self.trace.append(repr(what))

    def do(self, what: str, act: Callable[[], Any]) -> Any:
        """Take a step of the program."""
        self.note(what)
        answer, error = outcome(act)
        self.note(described_error(error))
        self.is_at_rest = True
        if self.rng.random() < 0.5:
            self.note(Description(self.model).text)
        self.is_at_rest = False
        return answer

    def number(self, values: tuple[float, ...]) -> Any:
        return self.hostile(HostileNumber, self.rng.choice(values), self.share)

    def points(self) -> Any:
        inner = sorted(self.rng.choice(X) for _ in range(self.rng.choice((0, 1, 1, 2))))
        xs = [0.0, *inner, 100.0]
        points = [
            self.model.create_point(self.hostile(HostileNumber, x, self.share), self.number(Y))
            for x in xs
        ]
        return self.hostile(HostileList, points, 0.15)

    def pl_line(self) -> Any:
        return self.rng.choice(self.pl_lines)

    # The program's steps.

    def make(self) -> None:
        bottom = self.hostile(HostileList, [(0.0, 0.0), (100.0, 0.0)], 0.1)
        self.model = self.classes.Model2D(
            CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI, bottom, False
        )
        for name in ("Sand", "Clay"):
            self.model.create_material(
                self.hostile(HostileName, name, 0.1), 18.0, 20.0, color=Color(0, 0, 0)
            )
        for name in LISTS:
            if self.rng.random() < 0.05:
                setattr(self.model, name, self.hostile(HostileList, getattr(self.model, name), 1.0))

    def step(self) -> None:
        roll = self.rng.random()
        if roll < 0.3:
            points, top, bottom = self.points(), self.pl_line(), self.pl_line()
            name = self.hostile(HostileName, "Sand", 0.15)
            self.do("layer", lambda: self.model.create_layer(points, name, top, bottom))
        elif roll < 0.55:
            points, is_phreatic = self.points(), self.rng.random() < 0.5
            made = self.do("pl", lambda: self.model.create_pl_line(points, is_phreatic))
            if made is not None:
                self.pl_lines.append(made)
        elif roll < 0.75:
            x = self.number((*X, 10.0, 33.0, -1.0))
            self.do("vertical", lambda: self.model.create_vertical(x))
        elif roll < 0.9:
            pairs = self.hostile(
                HostileList,
                [(0.0, self.number(Y)), (50.0, 9.0), (100.0, self.rng.choice(Y))],
            )
            name = self.hostile(HostileName, self.rng.choice("abc"))
            self.do("load", lambda: self.model.create_non_uniform_load(name, pairs))
        else:
            self.do("serialise", lambda: self.note(repr(self.model._serialize())))


# What traps do.


def refuse(_world: World, roll: float) -> None:
    raise ZeroDivisionError(f"trap {roll:.2f}")


def list_of(world: World, roll: float) -> Any:
    return vars(world.model)[LISTS[int(roll * 97) % len(LISTS)]]


def pop(world: World, roll: float) -> None:
    items = list_of(world, roll)
    if items:
        items.pop(int(roll * list.__len__(items)))


def clear(world: World, roll: float) -> None:
    list_of(world, roll).clear()


def reverse(world: World, roll: float) -> None:
    list_of(world, roll).reverse()


def repeat(world: World, roll: float) -> None:
    list.extend(list_of(world, roll), list(list_of(world, roll))[:1])


def rebind(world: World, roll: float) -> None:
    name = LISTS[int(roll * 97) % len(LISTS)]
    setattr(world.model, name, list(vars(world.model)[name]))


def move_point(world: World, roll: float) -> None:
    points = vars(world.model)["_points"]
    if points:
        points[int(roll * list.__len__(points))]._y = roll


def call_back(world: World, roll: float) -> None:
    model = world.model
    if roll < 0.3:
        model.create_vertical(10 * roll)
    elif roll < 0.6:
        model.create_pl_line([model.create_point(0.0, roll), model.create_point(100.0, roll)])
    else:
        model._create_boundary([model.create_point(0.0, roll), model.create_point(100.0, roll)])


def serialise(world: World, _roll: float) -> None:
    world.note(repr(outcome(world.model._serialize)[0]))


def collect(world: World, _roll: float) -> None:
    gc.collect(0)


ACTS = (refuse, refuse, pop, clear, reverse, repeat, rebind, move_point, call_back, call_back,
        serialise, collect)  # fmt: skip


def run(classes: SimpleNamespace, name: str) -> World:
    """Run the program of a name in one edition."""
    world = World(classes, name)
    error = outcome(world.make)[1]
    world.note(described_error(error))
    if error is None:
        for _ in range(world.rng.randrange(3, 12)):
            # The program's own calls for points can be the ones that meet a trap.
            world.note(described_error(outcome(world.step)[1]))
    return world


def first_difference(ours: str, plain: str) -> str:
    """Where two entries of a trace begin to differ."""
    pairs = enumerate(zip(ours, plain, strict=False))
    same = next((place for place, (a, b) in pairs if a != b), min(len(ours), len(plain)))
    before, after = ours[max(0, same - 80) : same], slice(same, same + 80)
    return f"{before} >>> {ours[after]} <<< instead of >>> {plain[after]} <<<"


def compare_hostile_program(_rng: random.Random, name: str) -> bool:
    """Run the program of a name in both editions and assert that the traces are the same.

    Returns whether a trap went off.
    """
    worlds = [run(classes, name) for classes in EDITIONS]
    for number, (ours, plain) in enumerate(zip(*(world.trace for world in worlds), strict=False)):
        before = [entry[:100] for entry in worlds[1].trace[max(0, number - 6) : number]]
        assert ours == plain, f"{name}, after {before}: {first_difference(ours, plain)}"
    assert len(worlds[0].trace) == len(worlds[1].trace), name
    return worlds[0].sprung > 0
