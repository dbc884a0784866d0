"""Attributes whose use is noticed are attributes like any other."""

from collections.abc import Callable
from typing import Any

import pytest
import sembra.external.dsettlement as module
from sembra.external.dsettlement import Model2D, _Boundary, _Curve, _CurveList, _Point, _Vertical

Factory = Callable[..., Any]


class ActingKey:
    """A key that does something when it is compared with the name that it has the hash of."""

    act: Callable[[], Any] | None = None

    def __init__(self, name: str, lookups: int) -> None:
        self.name = name
        self.lookups = lookups

    def __hash__(self) -> int:
        return hash(self.name)

    def __eq__(self, other: object) -> bool:
        if other == self.name and self.act is not None:
            self.lookups -= 1
            if self.lookups == 0:
                act, self.act = self.act, None
                act()
        return False


def put_before(name: str, thing: Any, act: Callable[[], Any], lookups: int = 1) -> None:
    """Put a key into the attributes of a thing that acts at one of the searches for the name."""
    attributes: dict[Any, Any] = vars(thing)
    before = dict(attributes)
    attributes.clear()
    key = ActingKey(name, lookups)
    attributes[key] = None
    attributes.update(before)
    key.act = act


@pytest.mark.parametrize("name", ["_boundaries", "_pl_lines", "_verticals"])
def test_a_model_may_lose_its_attributes_while_one_is_read(
    new_model_2d: Factory, name: str
) -> None:
    model = new_model_2d()
    length = len(getattr(model, name))
    put_before(name, model, lambda: setattr(model, "__dict__", {}))
    assert len(getattr(model, name)) == length
    assert not hasattr(model, name)


def test_a_chain_may_lose_its_curves_while_they_are_read(new_model_2d: Factory) -> None:
    chain = new_model_2d()._boundaries[0]
    put_before("_curves", chain, lambda: setattr(chain, "__dict__", {}))
    assert len(chain.curves) == 1
    assert vars(chain) == {}


@pytest.mark.parametrize("lookups", range(1, 8))
def test_a_model_may_get_another_list_while_it_is_drawn(
    new_model_2d: Factory, level: Factory, lookups: int
) -> None:
    model = new_model_2d()
    for y in (1.0, 2.0):
        model._create_boundary(level(model, y))
    points = level(model, 3.0)
    held = []

    def replace() -> None:
        held.append(model._boundaries)
        model._boundaries = list(held[0])

    put_before("_pl_lines", model, replace, lookups)
    boundary = model._create_boundary(points)
    assert boundary in model._boundaries
    assert [known.points[0].y for known in model._boundaries] == [0.0, 1.0, 2.0, 3.0]


@pytest.mark.parametrize("lookups", range(1, 8))
def test_attributes_may_be_held_while_a_model_is_drawn(
    new_model_2d: Factory, level: Factory, lookups: int
) -> None:
    model = new_model_2d()
    for y in (1.0, 2.0):
        model._create_boundary(level(model, y))
    points, others, again = level(model, 3.0), level(model, 7.0), level(model, 2.0)
    held: list[Any] = []
    put_before("_boundaries", model, lambda: held.append(vars(model)), lookups)
    model._create_boundary(points)
    for attributes in held:
        attributes["_boundaries"][2] = _Boundary([_Curve(*others)])
    held.clear()
    assert model._create_boundary(again) in model._boundaries


def test_a_model_may_get_another_list_while_a_vertical_is_entered(
    new_model_2d: Factory, monkeypatch: pytest.MonkeyPatch
) -> None:
    model = new_model_2d()
    for x in (1.0, 2.0):
        model.create_vertical(x)

    def replace() -> None:
        model._verticals = list(model._verticals)

    def make(x: float) -> _Vertical:
        vertical = _Vertical(x)
        put_before("_x", vertical, replace)
        return vertical

    monkeypatch.setattr(module, "_Vertical", make)
    vertical = model.create_vertical(3.0)
    assert model._verticals[-1] is vertical
    assert [known.x for known in model._verticals] == [1.0, 2.0, 3.0]


def test_verticals_may_come_while_they_are_read(new_model_2d: Factory) -> None:
    model = new_model_2d()
    for x in (5.0, 4.0):
        model.create_vertical(x)

    def create() -> None:
        for x in (3.0, 2.0):
            model.create_vertical(x)

    put_before("_verticals", model, create)
    verticals = model._verticals
    assert [known.x for known in verticals] == [2.0, 3.0, 4.0, 5.0]
    gone, verticals[0] = verticals[0], _Vertical(0.25)
    del verticals
    assert model.create_vertical(gone.x) is not gone


def test_a_model_may_lose_its_attributes_while_it_is_drawn(
    new_model_2d: Factory, points_of: Factory
) -> None:
    model = new_model_2d()
    points = points_of(model, (0.0, 5.0), (100.0, 5.0))
    put_before("_boundaries", model, lambda: setattr(model, "__dict__", {}))
    with pytest.raises(AttributeError, match=r"^'Model2D' object has no attribute '_"):
        model._create_boundary(points)


@pytest.mark.parametrize(
    ("cls", "name"),
    [(Model2D, "_boundaries"), (Model2D, "_verticals"), (_CurveList, "_curves")],
)
def test_no_class_takes_or_gives_the_attribute_of_objects(cls: type, name: str) -> None:
    descriptor = vars(cls)[name]

    class Other:
        pass

    setattr(Other, name, 1)
    for call in (descriptor.__get__, descriptor.__delete__):
        with pytest.raises(TypeError, match=r"^this attribute is one of objects, not of classes$"):
            call(Other)
    with pytest.raises(TypeError, match=r"^this attribute is one of objects, not of classes$"):
        descriptor.__set__(Other, 2)
    assert getattr(Other, name) == 1


def test_a_class_with_its_own_way_to_attributes_is_asked(
    new_model_2d: Factory, level: Factory
) -> None:
    class Reversed(Model2D):
        is_reversed = False

        def __getattribute__(self, name: str) -> Any:
            value = super().__getattribute__(name)
            if name in {"_boundaries", "_pl_lines"} and self.is_reversed:
                return value[::-1]
            return value

    model = new_model_2d(Reversed)
    for y in (1.0, 2.0):
        model._create_boundary(level(model, y))
        model.create_pl_line(level(model, y + 10))
    model.is_reversed = True
    assert [curve.p1.y for curve in model._curves] == [2.0, 1.0, 0.0, 12.0, 11.0]
    assert model._serialize_boundaries() == [[1], [2], [3]]
    assert model._serialize_pl_lines() == [[4], [5]]
    layer = model.create_layer(level(model, 9.0), "Sand", 0, 0)
    assert layer.boundary_bottom.points[0].y == 2.0


def test_a_derived_chain_says_how_its_curves_are_kept() -> None:
    log = []

    class Logging(_CurveList):
        def __setattr__(self, name: str, value: Any) -> None:
            log.append(f"set {name}")
            super().__setattr__(name, value)

        def __getattribute__(self, name: str) -> Any:
            if name == "_curves":
                log.append("get")
            return super().__getattribute__(name)

    chain = Logging([_Curve(_Point(0, 0), _Point(1, 1))])
    assert log == ["set _curves"]
    for operation in (
        lambda: chain.curves,
        lambda: chain.points,
        chain.area_above_horizontal,
        chain.__hash__,
        lambda: chain == chain,
    ):
        log.clear()
        operation()
        assert "get" in log
