"""Attributes whose use is noticed are attributes like any other."""

from collections.abc import Callable
from typing import Any

import pytest
from sembra.external.dsettlement import Model2D, _Curve, _CurveList, _Point

Factory = Callable[..., Any]


class ActingKey:
    """A key that does something when it is compared with the name that it has the hash of."""

    act: Callable[[], Any] | None = None

    def __init__(self, name: str) -> None:
        self.name = name

    def __hash__(self) -> int:
        return hash(self.name)

    def __eq__(self, other: object) -> bool:
        if other == self.name and self.act is not None:
            act, self.act = self.act, None
            act()
        return False


def put_before(name: str, thing: Any, act: Callable[[], Any]) -> None:
    """Put a key into the attributes of a thing that is met in the search for the name."""
    attributes: dict[Any, Any] = vars(thing)
    before = dict(attributes)
    attributes.clear()
    key = ActingKey(name)
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
