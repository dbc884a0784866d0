"""Builds one random two-dimensional model in two editions at once and compares them.

A model is a `Pair` of two, one of each edition, that get the same calls. Wherever a call needs an
object of the geometry, the pair hands each edition its own.
"""

import copy
import pickle
import random
import re
from collections.abc import Callable
from functools import partial
from typing import Any

from sembra.core import Color
from sembra.external.dsettlement import CalculationModel, ConsolidationModel

from tests.geometry.editions_2d import (
    EDITIONS,
    MIXED_X,
    MIXED_Y,
    NAN,
    ODD_X,
    ODD_Y,
    PL_LINE_CODES,
    PLAIN_X,
    PLAIN_Y,
)
from tests.geometry.index_2d import finds_chains, finds_verticals


class Taste:
    """What one random model is made of."""

    def __init__(self, rng: random.Random) -> None:
        kind = rng.random()
        self.odd = kind > 0.7
        self.x = PLAIN_X + (MIXED_X if kind > 0.3 else [])
        self.y = PLAIN_Y + (MIXED_Y if kind > 0.3 else [])
        if self.odd:
            self.x = [*self.x, rng.choice(ODD_X)]
            self.y = self.y + rng.sample(ODD_Y, 2)
        self.interferes = rng.random() < 0.35
        self.looks = rng.random() < 0.3


def outcome(action: Callable[[], Any]) -> tuple[Any, BaseException | None]:
    try:
        return action(), None
    except Exception as error:
        return None, error


def described_error(error: BaseException | None) -> Any:
    if error is None:
        return None
    text = re.sub(r"<[\w.]+\.(\w+) object at 0x[0-9a-f]+>", r"<\1>", str(error))
    return type(error), text, error.__suppress_context__, type(error.__cause__)


class Description:
    """The state of a model with each object named by when it was first met."""

    def __init__(self, model: Any) -> None:
        self.numbers: dict[int, int] = {}
        self.keep: list[Any] = []
        state = vars(model)
        self.text = [
            (name, self.of(state[name]))
            for name in (
                "_points",
                "_boundaries",
                "_pl_lines",
                "_layers",
                "_verticals",
                "_phreatic_line",
                "_non_uniform_loads",
            )
            if name in state
        ]

    def of(self, thing: Any) -> Any:
        if isinstance(thing, list | tuple):
            return type(thing).__name__, [self.of(element) for element in thing]
        if isinstance(thing, dict):
            return [(key, self.of(value)) for key, value in thing.items()]
        if not hasattr(thing, "__dict__") or isinstance(thing, float | str):
            return type(thing), repr(thing)
        if id(thing) in self.numbers:
            return self.numbers[id(thing)]
        self.numbers[id(thing)] = len(self.numbers)
        self.keep.append(thing)
        fields = [(name, self.of(value)) for name, value in vars(thing).items()]
        return type(thing).__name__, fields


class Pair:
    """The same model in both editions, with the objects that the calls have given."""

    def __init__(self, rng: random.Random, taste: Taste, what: str) -> None:
        self.rng = rng
        self.taste = taste
        self.log = [what]
        self.models: list[Any] = []
        self.points: list[tuple[Any, Any]] = []
        self.pl_lines: list[tuple[Any, Any]] = []
        self.layers: list[tuple[Any, Any]] = []
        self.verticals: list[tuple[Any, Any]] = []
        self.held: dict[str, tuple[Any, Any]] = {}

    def both(self, what: str, action: Callable[[int], Any]) -> tuple[Any, Any] | None:
        """Does the same in both editions; None if both refuse."""
        self.log.append(what)
        answers = [outcome(partial(action, side)) for side in (0, 1)]
        errors = [described_error(error) for _, error in answers]
        assert errors[0] == errors[1], self.story()
        if self.taste.looks and self.rng.random() < 0.5:
            self.compare_state()
        return None if errors[0] else (answers[0][0], answers[1][0])

    def story(self) -> str:
        return "\n".join(self.log)

    def compare_state(self) -> None:
        if len(self.models) == 2:
            first, second = (Description(model).text for model in self.models)
            assert first == second, self.story()

    def attribute(self, name: str, side: int) -> Any:
        return getattr(self.models[side], name)

    def document(self, name: str, side: int) -> Any:
        return getattr(self.models[side], name)()

    def compare_documents(self) -> None:
        for name in ("_serialize", "_generate_input", "_serialize_curves", "_serialize_layers"):
            documents = self.both(name, partial(self.document, name))
            if documents is not None:
                assert repr(documents[0]) == repr(documents[1]), self.story()
        for name in ("_min_vertical_drains", "_max_vertical_drains"):
            levels = self.both(name, partial(self.attribute, name))
            assert levels is None or repr(levels[0]) == repr(levels[1]), self.story()

    # What an application does.

    def construct(self) -> bool:
        bottom: list[Any] = [(0.0, 0.0), (100.0, 0.0)]
        if self.rng.random() < 0.2:
            bottom = [(x, self.rng.choice(self.taste.y)) for x in (0, 100.0)]
        if self.rng.random() < 0.02:
            bottom = self.rng.choice([[], [(0.0,)], [(0.0, 1.0, 2.0)], [(0.0, 0.0), (99.0, 0.0)]])
        options: dict[str, Any] = {}
        if self.rng.random() < 0.05:
            options["limits"] = self.rng.choice([[0, 100], (0.0, NAN), (0.0, 100.0, 1.0), (0.0, 0)])
        made = self.both(
            f"Model2D({bottom}, {options})",
            lambda side: EDITIONS[side].Model2D(
                CalculationModel.NEN_KOPPEJAN,
                ConsolidationModel.TERZAGHI,
                bottom,
                False,
                **options,
            ),
        )
        if made is None:
            return False
        self.models = list(made)
        for model in self.models:
            model.create_material("Sand", 18.0, 20.0, color=Color(0, 0, 0))
        return True

    def create_point(self, x: Any, y: Any) -> tuple[Any, Any]:
        rng = self.rng
        if self.taste.odd and rng.random() < 0.08:
            name = rng.choice(["NamedPoint", "LoosePoint", "_Point"])
            pair = self.both(f"{name}({x}, {y})", lambda side: getattr(EDITIONS[side], name)(x, y))
            assert pair is not None
            if rng.random() < 0.5:
                for model, point in zip(self.models, pair, strict=True):
                    model._points.append(point)
            return pair
        pair = self.both(
            f"create_point({x!r}, {y!r})", lambda side: self.models[side].create_point(x, y)
        )
        assert pair is not None
        return pair

    def some_points(self) -> list[tuple[Any, Any]]:
        rng = self.rng
        inner = [rng.choice(self.taste.x) for _ in range(rng.choice([0, 0, 1, 1, 2, 3]))]
        if rng.random() < 0.8:
            inner.sort(key=lambda x: float(x) if isinstance(x, float | int) else 50.0)
        if rng.random() < 0.1:
            middle = rng.choice(self.taste.x)
            inner = [middle] * 4
        xs = [0.0, *inner, rng.choice([100, 100.0, 100.0])]
        if rng.random() < 0.04:
            xs = xs[1:]
        points = []
        for x in xs:
            y = rng.choice(self.taste.y)
            known = [p for p in self.points if p[0].x is x and p[0].y is y]
            if known and rng.random() < 0.3:
                points.append(rng.choice(known))
            else:
                points.append(self.create_point(x, y))
                self.points.append(points[-1])
        return points

    def create_pl_line(self) -> None:
        points = self.some_points()
        phreatic = self.rng.random() < 0.4
        made = self.both(
            f"create_pl_line({[p[0] for p in points]}, {phreatic})",
            lambda side: self.models[side].create_pl_line([p[side] for p in points], phreatic),
        )
        if made is not None:
            self.pl_lines.append(made)

    def pl_line(self) -> tuple[Any, Any]:
        if self.pl_lines and self.rng.random() < 0.6:
            return self.rng.choice(self.pl_lines)
        code = self.rng.choice(PL_LINE_CODES)
        return code, code

    def create_layer(self) -> None:
        points = self.some_points()
        top, bottom = self.pl_line(), self.pl_line()
        material = "Sand" if self.rng.random() < 0.95 else "Snow"
        made = self.both(
            f"create_layer({[p[0] for p in points]}, {material}, {top[0]}, {bottom[0]})",
            lambda side: self.models[side].create_layer(
                [p[side] for p in points], material, top[side], bottom[side]
            ),
        )
        if made is not None:
            self.layers.append(made)

    def create_vertical(self) -> None:
        x = self.rng.choice([*self.taste.x, 10.0, 100.5, -1, 33])
        made = self.both(
            f"create_vertical({x!r})", lambda side: self.models[side].create_vertical(x)
        )
        if made is not None:
            self.verticals.append(made)

    def create_non_uniform_load(self) -> None:
        rng = self.rng
        vertices = [(rng.choice(self.taste.x), rng.choice(self.taste.y)) for _ in range(3)]
        ends = [(p.x, p.y) for p, _ in self.points[-6:]]
        points: list[Any] = [*ends[:1], *vertices[: rng.randrange(3)], *ends[1:2]]
        if rng.random() < 0.1:
            points = rng.choice([[], [[0.0, 0.0]], [(0.0, 0.0), [50.0, 1.0], (100.0, 0.0)]])
        name = rng.choice(["a", "b", "c", "d" * 25, "e" * 26])
        time = rng.choice([0, 0, 0, -1, 5])
        self.both(
            f"create_non_uniform_load({name}, {points}, {time})",
            lambda side: self.models[side].create_non_uniform_load(name, list(points), time),
        )

    # What an application might do behind the operations.

    def copy_models(self) -> None:
        self.compare_state()
        if self.rng.random() < 0.5:
            self.log.append("deepcopy")
            self.models = [copy.deepcopy(model) for model in self.models]
        else:
            self.log.append("pickle")
            self.models = [pickle.loads(pickle.dumps(model)) for model in self.models]

    def interfere(self) -> None:
        """Changes a list or an object of the model directly."""
        rng = self.rng
        name = rng.choice(["_points", "_boundaries", "_boundaries", "_pl_lines", "_verticals"])
        action = rng.choice(
            ["reverse", "pop", "swap", "foreign", "rebind", "field", "curves", "hold"]
        )
        # Whoever has got hold of a list can change it without asking the model for it again.
        held = self.held.get(name) if rng.random() < 0.5 else None
        where = rng.random()
        x, y = rng.choice(self.taste.x), rng.choice(self.taste.y)
        subclass = rng.random() < 0.3

        def foreign(side: int) -> Any:
            classes = EDITIONS[side]
            if name == "_points":
                return (classes.LoosePoint if subclass else classes._Point)(x, y)
            if name == "_verticals":
                return (classes.NegativeVertical if subclass else classes._Vertical)(x)
            points = [classes._Point(0.0, y), classes._Point(100.0, y)]
            curve = (classes.LooseCurve if subclass else classes._Curve)(*points)
            if name == "_pl_lines":
                return classes._PlLine([curve])
            return (classes.MirroredBoundary if subclass else classes._Boundary)([curve])

        def act(side: int) -> None:
            items = getattr(self.models[side], name) if held is None else held[side]
            place = int(where * len(items))
            if action == "reverse":
                items.reverse()
            elif action == "pop" and items:
                items.pop(place)
            elif action == "swap" and items:
                items[place] = foreign(side)
            elif action == "foreign":
                items.insert(place, foreign(side))
            elif action == "rebind":
                setattr(self.models[side], name, list(items))
            elif action == "field" and name == "_verticals" and self.verticals:
                self.verticals[int(where * len(self.verticals))][side]._x = x
            elif action == "field" and self.points:
                self.points[int(where * len(self.points))][side]._y = y
            elif action == "curves" and self.layers:
                layer = self.layers[int(where * len(self.layers))][side]
                layer.boundary_top._curves.reverse()

        if action == "hold":
            self.log.append(f"hold {name}")
            first, second = (getattr(model, name) for model in self.models)
            self.held[name] = first, second
        else:
            what = "held" if held else "own"
            self.both(f"{action} {what} {name} at {where} with {x!r}, {y!r}, {subclass}", act)

    def step(self) -> None:
        roll = self.rng.random()
        if self.taste.interferes and self.rng.random() < 0.3:
            self.interfere() if roll < 0.9 else self.copy_models()
        elif roll < 0.38:
            self.create_layer()
        elif roll < 0.64:
            self.create_pl_line()
        elif roll < 0.87:
            self.create_vertical()
        else:
            self.create_non_uniform_load()


def is_indexed(model: Any) -> bool:
    """Whether boundaries or verticals of a native model are found without searching."""
    return finds_chains(model) or finds_verticals(model)


def compare_random_model(rng: random.Random, what: str) -> bool:
    """Builds one model in both editions and asserts that they are the same all the way.

    Returns whether the native one was indexed in the end.
    """
    pair = Pair(rng, Taste(rng), what)
    if not pair.construct():
        return False
    for _ in range(rng.randrange(3, 14)):
        pair.step()
    indexed = is_indexed(pair.models[0])
    pair.compare_state()
    pair.compare_documents()
    return indexed
