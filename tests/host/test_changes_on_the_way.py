"""Containers that change while an operation goes through them are no danger.

Python refuses to go on through a mapping that has grown; going through what was there is as good.
"""

from collections.abc import Callable
from contextlib import suppress
from typing import Any
from unittest import mock

import pytest
from sembra.core import Color
from sembra.errors import ModelError
from sembra.external.dsettlement import (
    DrainType,
    Model1D,
    _Geometry1D,
    _Model,
    _OtherLoad,
    _Vertical,
)

Factory = Callable[..., Any]


class Acting(_OtherLoad):
    """A load that does something when it is written."""

    def __init__(self, act: Callable[[], Any]) -> None:
        self.act = act

    def _serialize(self, name: str) -> dict[str, Any]:
        self.act()
        return {"name": name}


class ActingVertical(_Vertical):
    """A vertical that does something when it is written."""

    act: Callable[[], Any]

    def _serialize(self) -> dict[str, Any]:
        self.act()
        return super()._serialize()


class ActingNumber(float):
    """A number that does something when it is compared."""

    act: Callable[[], Any]

    def compared(self, other: Any) -> bool:
        self.act()
        return True

    __ge__ = __le__ = __gt__ = __lt__ = compared


@pytest.mark.parametrize("table", ["_other_loads", "_non_uniform_loads"])
@pytest.mark.parametrize("operation", ["_serialize_other_loads", "_serialize_non_uniform_loads"])
def test_loads_that_add_or_remove_loads_are_no_danger(
    table: str, operation: str, new_model_1d: Factory
) -> None:
    model = new_model_1d()
    loads = getattr(model, table)

    def grow() -> None:
        loads[len(loads)] = Acting(lambda: None)

    for change in (grow, loads.clear):
        loads.clear()
        loads.update({name: Acting(change) for name in "abc"})
        with suppress(RuntimeError):
            assert len(getattr(model, operation)()) in (0, 3)
        assert all(type(load) is Acting for load in loads.values())


def test_a_table_of_default_materials_that_grows_is_no_danger(new_model_1d: Factory) -> None:
    class Growing(Model1D):
        _DEFAULT_MATERIALS = {"a": (1.0, 2.0, Color(0, 0, 0))}  # noqa: RUF012

        def create_material(self, name: str, *args: Any, **kwargs: Any) -> None:
            super().create_material(name, *args, **kwargs)
            self._DEFAULT_MATERIALS["b"] = (1.0, 2.0, Color(0, 0, 0))

    with suppress(RuntimeError):
        assert list(new_model_1d(Growing).materials) == ["a"]
    assert list(Growing._DEFAULT_MATERIALS) == ["a", "b"]


def test_a_vertical_that_adds_or_removes_verticals_is_followed(new_frame: Factory) -> None:
    model = new_frame()
    first = ActingVertical(1.0)
    model._verticals += [first, _Vertical(2.0)]
    first.act = lambda: model._verticals.append(_Vertical(3.0))
    assert [entry["x"] for entry in model._serialize_verticals()] == [1.0, 2.0, 3.0]
    first.act = model._verticals.clear
    assert [entry["x"] for entry in model._serialize_verticals()] == [1.0]


def test_a_material_that_adds_a_material_comes_too_late_for_it(new_frame: Factory) -> None:
    model = new_frame()

    class ActingColor:
        @property
        def deltares(self) -> int:
            if "b" not in model.materials:
                model.create_material("b", 1.0, 2.0)
            return 7

    model.create_material("a", 1.0, 2.0, ActingColor())
    assert [entry["name"] for entry in model._serialize_materials()] == ["a"]
    assert [entry["name"] for entry in model._serialize_materials()] == ["a", "b"]


def test_layers_that_vanish_while_materials_are_looked_up(new_model_1d: Factory) -> None:
    model = new_model_1d()
    layers: list[tuple[float, str]] = []

    class ActingName(str):
        def __hash__(self) -> int:
            layers.clear()
            return hash(str(self))

        def __eq__(self, other: object) -> bool:
            return str(self) == other

    layers += [(1.0, ActingName("Loam")), (0.0, "nothing")]
    with pytest.raises(ModelError, match=r"^Provide at least 1 layer$"):
        model.update_geometry(-1.0, layers)


def test_layers_that_vanish_while_levels_are_compared() -> None:
    layers: list[Any] = []
    level = ActingNumber(0.0)
    level.act = layers.clear
    layers += [(1.0, "a"), (level, "b"), (-1.0, "c")]
    with pytest.raises((IndexError, ModelError)):
        _Geometry1D(-10.0, layers)


def test_a_schedule_that_vanishes_while_it_is_tested(new_strip_drain: Factory) -> None:
    schedule: list[Any] = []
    time = ActingNumber(0.0)
    time.act = schedule.clear
    schedule += [(time, 0.0, 0.0), (-1.0, -1.0, 1e9)]
    assert new_strip_drain(schedule=schedule)._serialize()["detailed_schedule"] == []


def test_an_operation_may_be_replaced_while_it_runs(
    new_model_1d: Factory, new_strip_drain: Factory
) -> None:
    class Replacing(Model1D):
        @property
        def _min_vertical_drains(self) -> float:
            with mock.patch.object(_Model, "_validate"):
                self._validate()
            return -10.0

    model = new_model_1d(Replacing, vertical_drain=new_strip_drain())
    assert model._validate() is None


def test_a_model_that_loses_its_drain_while_it_is_checked(
    new_model_1d: Factory, new_strip_drain: Factory
) -> None:
    class Losing(Model1D):
        @property
        def _min_vertical_drains(self) -> float:
            vars(self).pop("_vertical_drain", None)
            return -10.0

    drain = new_strip_drain(drain_type=DrainType.COLUMN)
    model = new_model_1d(Losing, vertical_drain=drain)
    del drain
    with suppress(AttributeError):
        model._validate()
    assert "_vertical_drain" not in vars(model)


def test_a_model_that_is_refused_in_the_middle_of_its_document_can_go_on(
    new_model_1d: Factory,
) -> None:
    model = new_model_1d()
    model._add_other_load("a", Acting(lambda: 1 / 0))
    with pytest.raises(ZeroDivisionError, match=r"^division by zero$"):
        model._generate_input()
    model._other_loads.clear()
    assert model._generate_input()["other_loads"] == []
